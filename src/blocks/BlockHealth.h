#pragma once

#include <QString>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace quillary {

/// How the media of one block are.
struct BlockHealth {
    enum class State {
        present,
        missing,
        moved,      ///< not where the block looks for it, but found in the library by its mark
        duplicate,  ///< where the block looks for it, and once more in the library
        incomplete, ///< where the block looks for it, but only a part of it
    };
    struct Media {
        QString name; ///< of the file that the block names
        State state = State::present;
        std::filesystem::path path =
            {}; ///< where it is; of a missing one where it was, empty when the block names none

        bool operator==(const Media&) const = default;
    };

    std::filesystem::path block;
    QString version;          ///< of the document, such as "1.13"
    std::vector<Media> media; ///< in document order
    std::uintmax_t bytes = 0; ///< of all media that are there, each file once

    qsizetype count(State state) const { return std::ranges::count(media, state, &Media::state); }

    bool operator==(const BlockHealth&) const = default;
};

} // namespace quillary
