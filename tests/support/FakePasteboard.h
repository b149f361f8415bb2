#pragma once

#include "platform/Pasteboard.h"

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

namespace quillary::test {

/// A pasteboard in memory that offers its types in the order in which they were put on it.
class FakePasteboard : public platform::Pasteboard {
public:
    using Entry = std::pair<QString, QByteArray>;

    FakePasteboard() = default;
    FakePasteboard(std::initializer_list<Entry> entries) : m_entries(entries) {}

    void put(const QString& type, const QByteArray& data) { m_entries.emplace_back(type, data); }

    QStringList types() override {
        QStringList types;
        for (const Entry& entry : m_entries) types.append(entry.first);
        return types;
    }
    std::optional<QByteArray> data(const QString& type) override {
        const auto found = std::ranges::find(m_entries, type, &Entry::first);
        if (found == m_entries.end()) return std::nullopt;
        return found->second;
    }

private:
    std::vector<Entry> m_entries;
};

} // namespace quillary::test
