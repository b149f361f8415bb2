#pragma once

#include "platform/SettingsStore.h"

#include <QHash>
#include <mutex>

namespace quillary::test {

/// A store in memory. Like a store in a file, it keeps what was put into it across the objects that read it.
class FakeSettingsStore : public platform::SettingsStore {
public:
    QVariant value(const QString& key) const override {
        const std::scoped_lock lock(m_mutex);
        return m_values.value(key);
    }
    void update(const QString& key, const std::function<QVariant(const QVariant&)>& change) override {
        const std::scoped_lock lock(m_mutex);
        const QVariant after = change(m_values.value(key));
        if (after.isValid())
            m_values.insert(key, after);
        else
            m_values.remove(key);
    }

private:
    mutable std::mutex m_mutex;
    QHash<QString, QVariant> m_values;
};

} // namespace quillary::test
