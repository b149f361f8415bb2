#pragma once

#include "values/FileLocation.h"

#include <QString>
#include <chrono>
#include <optional>
#include <vector>

namespace quillary {

using FileDate = std::chrono::sys_time<std::chrono::nanoseconds>;

/// The date of a file that has none: older than every real one.
inline constexpr FileDate distantPast = FileDate::min();

/// One file of a shelf.
struct LibraryItem {
    FileLocation url;                         ///< absolute; a path for whoever asks for one
    FileDate modified = distantPast;          ///< content modification date
    std::optional<QString> collection = {};   ///< collection path; none for a file directly in the shelf folder
    std::optional<QString> sourceFormat = {}; ///< what the picture was made from, such as "svg"
    bool isBuiltIn = false;

    bool operator==(const LibraryItem&) const = default;
};

using LibraryItems = std::vector<LibraryItem>;

} // namespace quillary
