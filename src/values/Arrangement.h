#pragma once

#include "values/LibraryItem.h"

#include <QString>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillary {

/// One stored block: a compound clip kept with its media. Identified by its file.
struct Arrangement {
    struct Layer {
        enum class Kind { title, graphic, clip, other };

        QString name;
        int lane = 0; ///< 0 is the primary storyline, positive lanes lie above it, negative ones below
        Kind kind = Kind::other;

        bool operator==(const Layer&) const = default;
    };

    struct Summary {
        std::vector<Layer> layers; ///< in document order
        double seconds = 0;
        bool usesGlidemark = false;

        bool operator==(const Summary&) const = default;
    };

    std::filesystem::path url;
    QString name; ///< file name without its extension
    FileDate modified = distantPast;
    std::optional<QString> collection = {};
    Summary summary = {};
    std::optional<FileDate> posterStamp = {}; ///< content modification date of the poster; none without one

    /// The PNG beside the block; none when there is no poster.
    std::optional<std::filesystem::path> posterURL() const {
        if (!posterStamp) return {};
        return std::filesystem::path(url).replace_extension("png");
    }

    bool operator==(const Arrangement&) const = default;
};

} // namespace quillary
