#pragma once

#include "platform/Bookmarks.h"

#include <algorithm>
#include <map>
#include <set>

namespace quillary::test {

/// Bookmarks as a system with a sandbox has them: data that is no path, which follows a folder that moved and may be
/// refused. Counts which folders are open.
class FakeBookmarks : public platform::Bookmarks {
public:
    std::optional<QByteArray> make(const std::filesystem::path& folder) override {
        if (!canMake) return {};
        const QByteArray data = "bookmark " + QByteArray::number(++m_made);
        m_folders[data] = {folder, false};
        return data;
    }
    std::optional<Resolved> resolve(const QByteArray& data) override {
        const auto found = m_folders.find(data);
        return found == m_folders.end() ? std::nullopt : std::optional(found->second);
    }
    bool startAccess(const std::filesystem::path& folder) override {
        if (refusesAccess) return false;
        open.insert(folder);
        return true;
    }
    void stopAccess(const std::filesystem::path& folder) override { open.erase(open.find(folder)); }

    bool isFenced() const override { return !fenced.empty(); }
    bool needsGrant(const std::filesystem::path& folder) const override {
        const auto below = [&](const std::filesystem::path& above) {
            return folder == above || folder.native().starts_with(above.native() + '/');
        };
        return std::ranges::any_of(fenced, below) && std::ranges::none_of(open, below);
    }

    /// The folder of every bookmark lies elsewhere now; those made before are stale.
    void folderMoved(const std::filesystem::path& folder) {
        for (auto& [data, resolved] : m_folders) resolved = {folder, true};
    }

    bool canMake = true;
    bool refusesAccess = false;
    std::multiset<std::filesystem::path> open;
    std::set<std::filesystem::path> fenced; ///< closed until they, or folders above them, are opened

private:
    int m_made = 0;
    std::map<QByteArray, Resolved> m_folders;
};

} // namespace quillary::test
