#pragma once

#include "library/StorageError.h"
#include "values/LibraryItem.h"

#include <QStringList>
#include <expected>
#include <filesystem>

namespace quillary {

class Storage;

/// The icon sets that come with the program: every folder below `folder` is a set, its files the set's icons.
class BuiltInLibrary {
public:
    explicit BuiltInLibrary(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Where an installed or freshly built program finds its sets; empty path when there are none.
    static std::filesystem::path installedFolder();

    QStringList sets() const;
    /// By set, then by name with numbers compared by value. `collection` is the set's name.
    LibraryItems items() const;

    /// A vector icon as a PNG file in ".rasterized" under the library root, made anew when it is missing or older than
    /// the icon; a bitmap icon is its own file. It is named after the icon alone: no two sets may share a name.
    std::expected<std::filesystem::path, StorageError> rasterizedPNG(const LibraryItem& item, Storage& storage,
                                                                     int longEdge) const;

private:
    std::filesystem::path m_folder;
};

} // namespace quillary
