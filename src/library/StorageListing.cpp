#include "base/Text.h"
#include "library/AppSettings.h"
#include "library/ShelfIndex.h"
#include "library/Storage.h"
#include "platform/OpenFolder.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

ShelfIndex listed(const fs::path& folder, std::span<const std::string_view> extensions,
                  ShelfIndex::Reach reach = ShelfIndex::Reach::everything) {
    ShelfIndex index(folder, extensions, false, reach);
    index.refresh();
    return index;
}

} // namespace

LibraryItems Storage::items(Folder folder) {
    const auto root = this->root();
    if (!root) return {};
    return *listed(*root / relativeFolder(folder), extensions(folder)).items();
}

LibraryItems Storage::recentItems() {
    const auto root = this->root();
    if (!root) return {};
    return *listed(*root / relativeFolder(Folder::recent), extensions(Folder::recent), ShelfIndex::Reach::topFolderOnly)
                .items();
}

QStringList Storage::collectionFolders(Folder folder) {
    const auto root = this->root();
    if (!root) return {};
    return listed(*root / relativeFolder(folder), {}).collectionFolders();
}

QStringList Storage::collections(const LibraryItems& items) {
    QSet<QString> distinct;
    for (const LibraryItem& item : items)
        if (item.collection) distinct.insert(*item.collection);
    QStringList found(distinct.begin(), distinct.end());
    found.sort();
    return found;
}

ShelfCounts Storage::shelfCounts() {
    const auto root = this->root();
    return root ? shelfCounts(*root) : ShelfCounts();
}

ShelfCounts Storage::shelfCounts(const fs::path& root) {
    const auto count = [&](const fs::path& folder, std::span<const std::string_view> wanted) {
        return ShelfIndex::countFiles(root / folder, wanted);
    };
    return {
        .images = count(relativeFolder(Folder::images), extensions(Folder::images)),
        .videos = count(relativeFolder(Folder::videos), extensions(Folder::videos)),
        .audio = count(relativeFolder(Folder::audio), extensions(Folder::audio)),
        .blocks = count(blocksFolder(), blockExtensions),
        .recent = count(relativeFolder(Folder::recent), extensions(Folder::recent)),
    };
}

int Storage::pruneRecent(int limit, const fs::path& justWritten) {
    if (limit < 1) return 0;
    const auto root = this->root();
    if (!root) return 0;
    const auto folder = platform::OpenFolder::open(*root / relativeFolder(Folder::recent));
    if (!folder) return 0;
    platform::OpenFolder::Entries entries;
    folder->read(entries);
    const std::size_t kept = static_cast<std::size_t>(limit);
    if (entries.list.size() <= kept) return 0;

    std::vector<std::pair<FileDate, const char*>> dated;
    for (const auto& entry : entries.list) {
        const char* name = entries.name(entry);
        if (entry.kind != platform::OpenFolder::Kind::file || lowercaseExtension(name) != "png") continue;
        const auto status = folder->status(name);
        const bool fresh = justWritten == fs::path(folder->path()) / name;
        dated.emplace_back(fresh ? FileDate::max() : status ? status->modified : distantPast, name);
    }
    std::ranges::stable_sort(dated, {}, [](const auto& entry) { return entry.first; });
    int deleted = 0;
    for (std::size_t i = 0; i + kept < dated.size(); ++i) {
        std::error_code ignored;
        if (fs::remove(fs::path(folder->path()) / dated[i].second, ignored)) ++deleted;
    }
    return deleted;
}

} // namespace quillary
