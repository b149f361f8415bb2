#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/Bookmarks.h"
#include "platform/OpenFolder.h"
#include "platform/SettingsStore.h"

#include <QVariantList>
#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// Where a link leads, followed as far as that can be seen; none when it leads nowhere.
std::optional<fs::path> targetOf(const fs::path& alias) {
    std::error_code failed;
    const fs::path told = fs::read_symlink(alias, failed);
    if (failed) return {};
    const fs::path target = fs::weakly_canonical(alias.parent_path() / told, failed);
    return failed ? (alias.parent_path() / told).lexically_normal() : target;
}

/// Calls for every link below a folder, links not followed; hidden entries are passed over.
template <typename Visit>
void forEachLink(const fs::path& folder, const std::stop_token& stop, Visit visit) {
    for (const fs::path& entry : platform::visibleEntries(folder)) {
        if (stop.stop_requested()) return;
        std::error_code gone;
        const auto status = fs::symlink_status(entry, gone);
        if (fs::is_symlink(status))
            visit(entry);
        else if (fs::is_directory(status))
            forEachLink(entry, stop, visit);
    }
}

} // namespace

void Storage::openExtraScopes() {
    const std::scoped_lock lock(m_mutex);
    for (const QVariant& stored : m_settings.value(SettingsKey::extraScopeBookmarks).toList()) {
        const auto resolved = m_bookmarks.resolve(stored.toByteArray());
        if (!resolved || m_extraScopes.contains(resolved->path)) continue;
        if (m_bookmarks.startAccess(resolved->path)) m_extraScopes.insert(resolved->path);
    }
}

void Storage::grantAccess(const fs::path& folder) {
    const fs::path wanted = standardized(folder);
    if (const auto bookmark = m_bookmarks.make(wanted)) {
        m_settings.update(SettingsKey::extraScopeBookmarks, [&](const QVariant& stored) -> QVariant {
            QVariantList all = stored.toList();
            const bool known = std::ranges::any_of(all, [&](const QVariant& one) {
                const auto resolved = m_bookmarks.resolve(one.toByteArray());
                return resolved && standardized(resolved->path) == wanted;
            });
            if (!known) all.append(*bookmark);
            return all;
        });
    }
    openExtraScopes();
}

std::optional<fs::path> Storage::resolvedDirectory(const fs::path& alias) const {
    const auto target = targetOf(alias);
    if (!target || m_bookmarks.needsGrant(*target) || !platform::OpenFolder::open(*target)) return {};
    return target;
}

Storage::BlockedAliases Storage::blockedAliases(std::stop_token stop) {
    BlockedAliases blocked;
    if (!m_bookmarks.isFenced()) return blocked;
    const auto root = this->root();
    if (!root) return blocked;
    for (const fs::path& folder : layout())
        forEachLink(*root / folder, stop, [&](const fs::path& alias) {
            const auto target = targetOf(alias);
            if (!target || !m_bookmarks.needsGrant(*target)) return;
            if (blocked.count++ > 0) return;
            blocked.alias = alias;
            blocked.target = *target;
        });
    return blocked;
}

} // namespace quillary
