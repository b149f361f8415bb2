#include "cli/Shelf.h"

#include "library/ShelfIndex.h"
#include "platform/PendingFile.h"

#include <array>

namespace quillary::cli {

namespace {

using namespace std::string_view_literals;
constexpr std::array blockExtensions{"fcpxml"sv};

} // namespace

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
    ShelfIndex index(*root / (folder ? Storage::relativeFolder(*folder) : Storage::blocksFolder()),
                     folder ? Storage::extensions(*folder) : std::span<const std::string_view>(blockExtensions), false);
    index.refresh();
    ShelfCollections found;
    found.folders = index.collectionFolders();
    for (const LibraryItem& item : *index.items()) found.files.push_back(item.collection);
    return found;
}

bool createCollection(const QString& path, QStringView word, Storage& storage) {
    if (const auto folder = folderNamed(word)) return storage.createCollection(path, *folder);
    const auto root = storage.root();
    return root && platform::createFolders(Storage::appending(path, *root / Storage::blocksFolder())).has_value();
}

} // namespace quillary::cli
