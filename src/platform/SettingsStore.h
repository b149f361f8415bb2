#pragma once

#include <QString>
#include <QVariant>
#include <filesystem>
#include <functional>
#include <memory>

namespace quillary::platform {

/// The per-user key-value store. Every read sees what another process stored a moment ago. Main thread or worker alike:
/// implementations lock.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// Invalid when the key is not set. Stores that keep text give text: readers convert.
    virtual QVariant value(const QString& key) const = 0;
    /// Reads, changes and writes one key in one step, also against other processes. An invalid result removes the key.
    virtual void update(const QString& key, const std::function<QVariant(const QVariant&)>& change) = 0;

    /// The file that keeps the settings, for whoever watches it; empty where there is none.
    virtual std::filesystem::path file() const { return {}; }

    void setValue(const QString& key, const QVariant& value) {
        update(key, [&](const QVariant&) { return value; });
    }
    void remove(const QString& key) { setValue(key, {}); }
};

/// The user's own store. What cannot be written (a read-only home) is kept for this run only.
std::unique_ptr<SettingsStore> userSettings();
/// A store in a file of its own.
std::unique_ptr<SettingsStore> settingsIn(const std::filesystem::path& file);

} // namespace quillary::platform
