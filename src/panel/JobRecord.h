#pragma once

#include "library/LibraryCopy.h"
#include "panel/BatchSave.h"

#include <QByteArray>
#include <QString>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace quillary {

/// What has to be known of a piece of work on files to do the rest of it in another life of the program.
struct JobRecord {
    enum class Kind {
        batch,      ///< `files` onto the shelves, as `target` says
        blocks,     ///< the clips in `files` onto the Blocks shelf, into `collection`
        libraryCopy ///< the shelves of `selection` from `from` to the library
    };

    Kind kind = Kind::batch;
    std::filesystem::path root; ///< of the library that it is for
    std::vector<std::filesystem::path> files = {};
    BatchTarget target = {};
    std::optional<QString> collection = {};
    std::filesystem::path from = {};
    CopySelection selection = {};

    // The text that is kept of it: lines that can be added to, of which the last may be torn.

    QByteArray text() const;
    /// Takes the place of the files that were noted before.
    static QByteArray listed(const std::vector<std::filesystem::path>& files);
    /// The file at this place of the list need not be done again.
    static QByteArray done(std::size_t file);

    /// Without the files that are done. Absent for a text that tells of no work.
    static std::optional<JobRecord> of(std::string_view text);
};

} // namespace quillary
