#pragma once

#include "base/BatchProgress.h"
#include "library/Storage.h"

#include <QString>
#include <QStringList>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace quillary {

/// Where a batch goes.
struct BatchTarget {
    // The collection that each shelf's files go to.
    std::optional<QString> images = {};
    std::optional<QString> videos = {};
    std::optional<QString> audio = {};
    std::optional<QString> blocks = {};

    bool keepFolders = false;                 ///< folders become collections below those, named as they are
    std::optional<Storage::Folder> only = {}; ///< files of other kinds are passed over silently

    /// Without a shelf, that of the blocks.
    const std::optional<QString>& collection(std::optional<Storage::Folder> shelf) const;
    /// The same below it: that of a file from this folder of the batch; empty for one that came by itself.
    std::optional<QString> collection(std::optional<Storage::Folder> shelf, const QString& folder) const;
};

struct BatchResult {
    struct Failure {
        std::filesystem::path file;
        QString message;     ///< a sentence that names the file
        QString reason = {}; ///< of one that could not be stored, in the system's words; empty for one not read
    };
    struct Saved {
        std::filesystem::path file; ///< where it is now
        std::optional<Storage::Folder> shelf; ///< none for a block
        QString folder;                       ///< of the batch that it came from, as a collection path; empty when it came by itself
    };

    int images = 0;
    int videos = 0;
    int sounds = 0;
    int blocks = 0;
    std::vector<Saved> saved;
    std::vector<std::filesystem::path> duplicates; ///< the given files that are in the library already
    std::vector<Failure> failures;
    std::vector<Failure> refused;                ///< files of no kind that the library keeps
    std::vector<std::filesystem::path> givenUp; ///< not reached before the stop request
    QStringList refiling = {};                  ///< why saved files could not be moved to other collections

    /// The one line shown to the user, such as "Saved 1 · 1 video to Videos".
    QString summary() const;
    /// Why files are missing from it, and which kinds were refused; empty when all went well.
    QString explanation() const;
    /// Whether anything that was given is not in the library now.
    bool isProblem() const {
        return !failures.empty() || !refused.empty() || !givenUp.empty() || !refiling.isEmpty();
    }
    /// What is to be told of it where there is no room for more; empty when all went well.
    QString problem() const;
    bool nothingToSave() const { return saved.empty() && duplicates.empty(); }
    bool cameFromFolders() const;
};

/// The regular files among `urls` and, at any depth, in the folders among them, in the given order, folders by name.
/// Hidden files and links to folders inside a folder are passed over; what cannot be read stays in the list and fails
/// later.
std::vector<std::filesystem::path> filesIn(const std::vector<std::filesystem::path>& urls,
                                           const std::stop_token& stop = {});

/// Who follows a batch hears of it on the thread that saves. Any of these may be left out.
struct BatchObserver {
    /// The files that will be saved, in order.
    std::function<void(const std::vector<std::filesystem::path>&)> listed = {};
    /// The file at this place of the list is dealt with, well or badly.
    std::function<void(std::size_t)> done = {};
    /// How far the copy of a large file is.
    platform::PendingFile::Progress copying = {};
};

/// Files every one of `urls` onto the shelf of its kind: pictures are read and written as PNG, videos and sounds copied
/// byte for byte, FCPXML documents stored as blocks with their media. One that fails does not stop the others. A stop request ends the batch within the current file.
BatchResult performSave(const std::vector<std::filesystem::path>& urls, Storage& storage, const BatchTarget& target,
                        int longEdge, BatchProgress& progress, const std::stop_token& stop = {},
                        const BatchObserver& observer = {});

/// What a batch saved, to be filed again: into collections named after the folders that it came from, and back.
struct BatchFolders {
    BatchTarget target;
    std::vector<BatchResult::Saved> saved;
    std::vector<std::filesystem::path> made = {}; ///< folders that are there for this alone, outer ones first

    /// Moves the files to where they would lie with `keepFolders` as given; they follow in `saved`. One that cannot be
    /// moved, such as one that went meanwhile, stays as it is; the reasons are returned, each once. Folders that were
    /// made on the way there and are empty on the way back go again.
    QStringList file(Storage& storage, bool keepFolders);
};

} // namespace quillary
