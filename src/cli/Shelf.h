#pragma once

#include "library/Storage.h"

#include <QStringList>
#include <QStringView>
#include <optional>
#include <vector>

namespace quillary::cli {

/// What a shelf's collections are, by the shelf's word on the command line: "images", "videos", "audio" or "blocks".
struct ShelfCollections {
    QStringList folders;                       ///< every collection folder, ascending, empty ones too
    std::vector<std::optional<QString>> files; ///< the collection of each of the shelf's files
};

/// The shelf of a word; none for "blocks", which is no destination of single files.
std::optional<Storage::Folder> folderNamed(QStringView word);

ShelfCollections collectionsOf(QStringView word, Storage& storage);
/// False when the folder cannot be made.
bool createCollection(const QString& path, QStringView word, Storage& storage);

} // namespace quillary::cli
