#include "cutout/matte/TileScan.h"

#include "base/Multiversion.h"

#include <algorithm>

namespace quillary::cutout {

QUILLARY_MULTIVERSION void widenRanges(const std::uint32_t* row, std::size_t width, std::uint32_t* least,
                                       std::uint32_t* largest) {
    for (std::size_t x = 0; x < width; ++x) {
        least[x] = std::min(least[x], row[x]);
        largest[x] = std::max(largest[x], row[x]);
    }
}

QUILLARY_MULTIVERSION void takeAlphas(const std::uint32_t* pixels, std::size_t count, std::uint8_t* alphas) {
    for (std::size_t i = 0; i < count; ++i) alphas[i] = static_cast<std::uint8_t>(pixels[i] >> 24);
}

} // namespace quillary::cutout
