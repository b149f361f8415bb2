#include "base/Text.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/Bookmarks.h"
#include "platform/Desktop.h"
#include "platform/OpenFolder.h"
#include "platform/SettingsStore.h"

#include <algorithm>
#include <array>

namespace quillary {

namespace fs = std::filesystem;

namespace {

const fs::path rootName = "Quillary";

fs::path withRootName(const fs::path& folder) {
    return folder.filename() == rootName ? folder : folder / rootName;
}

bool isThere(const fs::path& path) {
    std::error_code failed;
    return fs::exists(path, failed);
}

void ensureLayout(const fs::path& root) {
    for (const fs::path& folder : Storage::layout()) {
        // A folder that cannot be made is told by the first operation that needs it.
        if (platform::createFolders(root / folder)) platform::removeAbandonedFiles(root / folder);
    }
}

/// Under its own name or not at all: what is in the way stays, and so does the entry.
void moveInto(const fs::path& folder, const fs::path& entry) {
    (void)platform::moveTo(entry, folder / entry.filename());
}

/// Earlier layouts kept images directly in "Library" and blocks directly below the root.
void migrateLayoutIfNeeded(const fs::path& root) {
    ensureLayout(root);
    const std::array<fs::path, 4> shelves{"Images", "Videos", "Audio", "Blocks"};
    for (const fs::path& entry : platform::visibleEntries(root / "Library"))
        if (std::ranges::find(shelves, entry.filename()) == shelves.end())
            moveInto(root / Storage::relativeFolder(Storage::Folder::images), entry);
    const fs::path oldBlocks = root / "Blocks";
    for (const fs::path& entry : platform::visibleEntries(oldBlocks)) moveInto(root / Storage::blocksFolder(), entry);
    std::error_code notEmpty;
    if (fs::is_directory(fs::symlink_status(oldBlocks, notEmpty))) fs::remove(oldBlocks, notEmpty);
}

} // namespace

Storage::Storage(platform::SettingsStore& settings, platform::Bookmarks& bookmarks, const platform::Desktop& desktop,
                 std::optional<fs::path> rootForThisRun)
    : m_settings(settings)
    , m_bookmarks(bookmarks)
    , m_desktop(desktop)
    , m_rootForThisRun(rootForThisRun ? std::optional(withRootName(standardized(*rootForThisRun))) : std::nullopt) {}

fs::path Storage::standardized(const fs::path& folder) {
    std::error_code failed;
    fs::path path = fs::absolute(folder, failed).lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

fs::path Storage::defaultRoot() const {
    const fs::path movies = m_desktop.moviesFolder();
    std::error_code failed;
    fs::path resolved = fs::weakly_canonical(movies, failed);
    return (failed ? movies : resolved) / rootName;
}

Storage::Opened Storage::openRootForThisRun() {
    if (!m_migrated.contains(*m_rootForThisRun) && !platform::createFolders(*m_rootForThisRun))
        return std::unexpected(StorageError::noRoot());
    if (!platform::OpenFolder::open(*m_rootForThisRun)) return std::unexpected(StorageError::noRoot());
    return m_rootForThisRun;
}

Storage::Opened Storage::openCustomRoot() {
    if (m_rootForThisRun) return openRootForThisRun();
    // A drive may be unplugged while its folder is open.
    if (m_openedFolder && !isThere(*m_openedFolder)) closeCustomRoot();
    if (m_openedFolder) return withRootName(*m_openedFolder);

    const QByteArray bookmark = m_settings.value(SettingsKey::rootFolderBookmark).toByteArray();
    if (bookmark.isEmpty()) return std::nullopt;
    const auto resolved = m_bookmarks.resolve(bookmark);
    if (!resolved) return std::unexpected(StorageError::noRoot());
    if (resolved->stale) {
        if (const auto fresh = m_bookmarks.make(resolved->path))
            m_settings.setValue(SettingsKey::rootFolderBookmark, *fresh);
    }
    if (!isThere(resolved->path) || !m_bookmarks.startAccess(resolved->path))
        return std::unexpected(StorageError::noRoot());
    m_openedFolder = resolved->path;
    const fs::path root = withRootName(resolved->path);
    if (const auto made = platform::createFolders(root); !made) {
        closeCustomRoot();
        return std::unexpected(StorageError::platform(made.error().description()));
    }
    return root;
}

void Storage::closeCustomRoot() {
    if (m_openedFolder) m_bookmarks.stopAccess(*m_openedFolder);
    m_openedFolder.reset();
}

void Storage::layOutOnce(const fs::path& root) {
    if (m_migrated.insert(root).second) migrateLayoutIfNeeded(root);
}

std::expected<std::optional<fs::path>, StorageError> Storage::customRoot() {
    const std::scoped_lock lock(m_mutex);
    return openCustomRoot();
}

std::expected<fs::path, StorageError> Storage::root() {
    const std::scoped_lock lock(m_mutex);
    const auto custom = openCustomRoot();
    if (!custom && m_rootForThisRun) return std::unexpected(custom.error());
    const bool chosen = custom && *custom;
    m_chosenFolderUnavailable = !chosen && !m_settings.value(SettingsKey::rootFolderBookmark).toByteArray().isEmpty();
    const fs::path root = chosen ? **custom : defaultRoot();
    layOutOnce(root);
    return root;
}

std::expected<void, StorageError> Storage::tryRoot(const fs::path& folder) {
    const fs::path root = withRootName(standardized(folder));
    if (!platform::createFolders(root / relativeFolder(Folder::images)) || !platform::OpenFolder::open(root))
        return std::unexpected(StorageError::noRoot());
    return {};
}

void Storage::setCustomRoot(const fs::path& folder) {
    {
        const std::scoped_lock lock(m_mutex);
        const auto bookmark = m_bookmarks.make(folder);
        closeCustomRoot();
        if (bookmark) m_settings.setValue(SettingsKey::rootFolderBookmark, *bookmark);
        m_chosenFolderUnavailable = false;
    }
    (void)root();
}

void Storage::clearCustomRoot() {
    const std::scoped_lock lock(m_mutex);
    m_settings.remove(SettingsKey::rootFolderBookmark);
    closeCustomRoot();
    m_chosenFolderUnavailable = false;
}

bool Storage::chosenFolderUnavailable() const {
    const std::scoped_lock lock(m_mutex);
    return m_chosenFolderUnavailable;
}

} // namespace quillary
