#include "cli/Shelf.h"

#include "blocks/ArrangementStore.h"
#include "library/ShelfIndex.h"

namespace quillary::cli {

std::optional<Storage::Folder> folderNamed(QStringView word) {
    if (word == u"images") return Storage::Folder::images;
    if (word == u"videos") return Storage::Folder::videos;
    if (word == u"audio") return Storage::Folder::audio;
    if (word == u"recent") return Storage::Folder::recent;
    return {};
}

ShelfCollections collectionsOf(QStringView word, Storage& storage) {
    const auto root = storage.root();
    if (!root) return {};
    const auto folder = folderNamed(word);
    ShelfIndex index(
        *root / (folder ? Storage::relativeFolder(*folder) : Storage::blocksFolder()),
        folder ? Storage::extensions(*folder) : std::span<const std::string_view>(Storage::blockExtensions), false);
    index.refresh();
    ShelfCollections found;
    found.folders = folder ? index.collectionFolders() : ArrangementStore(storage).collections();
    for (const LibraryItem& item : *index.items()) found.files.push_back(item.collection);
    return found;
}

bool createCollection(const QString& path, QStringView word, Storage& storage) {
    if (const auto folder = folderNamed(word)) return storage.createCollection(path, *folder);
    return ArrangementStore(storage).createCollection(path);
}

} // namespace quillary::cli
