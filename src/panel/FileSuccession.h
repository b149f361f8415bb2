#pragma once

#include "platform/FileIdentity.h"

#include <mutex>
#include <unordered_map>

namespace quillary {

/// Which file stands for which, where the panel itself put another one in its place: a picture that was turned, a file
/// that came back after its removal. Any thread.
class FileSuccession {
public:
    void replaced(const platform::FileIdentity& before, const platform::FileIdentity& after) {
        const std::scoped_lock lock(m_mutex);
        if (before != after) m_next.insert_or_assign(before, after);
        m_next.erase(after);
    }
    /// The file that stands for this one now.
    platform::FileIdentity now(platform::FileIdentity file) const {
        const std::scoped_lock lock(m_mutex);
        for (auto next = m_next.find(file); next != m_next.end(); next = m_next.find(file)) file = next->second;
        return file;
    }

private:
    mutable std::mutex m_mutex;
    std::unordered_map<platform::FileIdentity, platform::FileIdentity> m_next; ///< without circles
};

} // namespace quillary
