#pragma once

#include <cstdint>

namespace quillary {

/// How many recognised files stand under each shelf folder.
struct ShelfCounts {
    std::int64_t images = 0;
    std::int64_t videos = 0;
    std::int64_t audio = 0;
    std::int64_t blocks = 0;
    std::int64_t recent = 0;

    bool operator==(const ShelfCounts&) const = default;
};

} // namespace quillary
