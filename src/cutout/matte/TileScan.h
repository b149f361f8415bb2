#pragma once

#include <cstddef>
#include <cstdint>

namespace quillary::cutout {

/// The least and the largest of the pixels that were seen in each column, compared as numbers. The alpha is a pixel's
/// highest byte, so these have the least and the largest alpha.
void widenRanges(const std::uint32_t* row, std::size_t width, std::uint32_t* least, std::uint32_t* largest);

/// The alphas of pixels.
void takeAlphas(const std::uint32_t* pixels, std::size_t count, std::uint8_t* alphas);

} // namespace quillary::cutout
