#pragma once

#include "base/BatchProgress.h"
#include "library/Storage.h"

#include <QString>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <vector>

namespace quillary {

/// The collection that each shelf's files go to.
struct BatchTarget {
    std::optional<QString> images = {};
    std::optional<QString> videos = {};
    std::optional<QString> audio = {};
};

struct BatchResult {
    struct Failure {
        std::filesystem::path file;
        QString message;
    };

    int images = 0;
    int videos = 0;
    int sounds = 0;
    std::vector<std::filesystem::path> saved;
    std::vector<std::filesystem::path> duplicates; ///< the given files that are in the library already
    std::vector<Failure> failures;
    std::vector<std::filesystem::path> ignored; ///< files of no kind that the library keeps

    /// The one line shown to the user, such as "Saved 1 · 1 video to Videos".
    QString summary() const;
};

/// The regular files among `urls` and, at any depth, in the folders among them, in the given order, folders by name.
/// Hidden files and links to folders inside a folder are passed over; what cannot be read stays in the list and fails
/// later.
std::vector<std::filesystem::path> filesIn(const std::vector<std::filesystem::path>& urls,
                                           const std::stop_token& stop = {});

/// Files every one of `urls` onto the shelf of its kind: pictures are read and written as PNG, videos and sounds copied
/// byte for byte. One that fails does not stop the others. A stop request ends the batch after the current file.
BatchResult performSave(const std::vector<std::filesystem::path>& urls, Storage& storage, const BatchTarget& target,
                        int longEdge, BatchProgress& progress, const std::stop_token& stop = {});

} // namespace quillary
