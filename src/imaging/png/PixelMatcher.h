#pragma once

#include "imaging/png/DeflateWriter.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillary::png {

/// Finds repetitions in filtered rows. It looks at whole pixels only, which suits pictures and is several times faster
/// than looking at every byte: the pixel before, the row above, and pixels seen lately.
class PixelMatcher {
public:
    PixelMatcher();

    /// Writes `rows` rows of 1 + `width` × `bytesPerPixel` (3 or 4) bytes as literals and matches. The writer has begun
    /// at `data` and is not ended.
    void write(const std::uint8_t* data, std::size_t rows, std::size_t width, std::size_t bytesPerPixel,
               DeflateWriter& writer);

private:
    template <std::size_t Pixel>
    void write(const std::uint8_t* data, std::size_t rows, std::size_t rowBytes, DeflateWriter& writer);

    std::vector<std::uint32_t> m_heads;    ///< where a group of pixels was seen last
    std::vector<std::uint32_t> m_singles;  ///< where one pixel was seen last
    std::vector<std::uint16_t> m_previous; ///< from a group to the one before with the same hash, 0 for none
};

/// Writes bytes as literals and runs of zeros, for rows in which nothing else repeats.
void writeRuns(const std::uint8_t* data, std::size_t size, DeflateWriter& writer);

} // namespace quillary::png
