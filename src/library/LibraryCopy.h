#pragma once

#include "base/BatchProgress.h"

#include <QString>
#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

namespace quillary {

/// The shelves that are copied when the library moves.
struct CopySelection {
    bool images = true;
    bool videos = true;
    bool audio = true;
    bool blocks = true;
    bool recent = true;
};

struct CopyResult {
    int copied = 0;
    int skipped = 0; ///< something of that name was there
    int failed = 0;
    /// The files, below the root, and why each could not be copied.
    std::vector<std::pair<std::filesystem::path, QString>> failures = {};

    /// The one line shown to the user, such as "Copied 3 files, skipped 1 already there".
    QString summary() const;
    /// The same with the first of the failures and its reason.
    QString summaryWithReason() const;

    bool operator==(const CopyResult&) const = default;
};

/// Names, as paths below a library root, the media in "Final Cut Elements" that the blocks there refer to.
using MediaOfBlocks = std::function<std::vector<std::filesystem::path>(const std::filesystem::path& root)>;

} // namespace quillary
