#pragma once

#include "base/NumberedName.h"
#include "library/Storage.h"
#include "values/LibraryItem.h"

#include <QString>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillary {

/// How blocks are called on disk.

inline constexpr std::string_view blockExtension = Storage::blockExtensions.front();

/// A block's name as the stem of its file: "/" and control characters become "-", and so does a leading dot, since
/// hidden files show on no shelf. "Block" when nothing is left.
std::string blockStem(const QString& name);

inline NumberedName blockNames(const std::string& stem) {
    return {stem, std::string(blockExtension)};
}

/// The collection path of a block that lies in the library at `root`; none at the top of the shelf.
std::optional<QString> collectionOfBlock(const std::filesystem::path& block, const std::filesystem::path& root);

/// The block files of the library at `root`, newest first, unread.
LibraryItems blocksBelow(const std::filesystem::path& root);

/// Where the poster of a block lies, whether there is one or not.
std::filesystem::path posterPath(const std::filesystem::path& block);
/// The content modification date of the poster; none without one.
std::optional<FileDate> posterStampOf(const std::filesystem::path& block);

} // namespace quillary
