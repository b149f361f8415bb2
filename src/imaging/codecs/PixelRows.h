#pragma once

#include <cstddef>
#include <cstdint>

namespace quillary::codecs {

/// Spreads a row of grey, grey and alpha, RGB or RGBA samples (1 to 4 bands) to four bytes a pixel.
void spreadRow(const std::uint8_t* from, int bands, std::uint8_t* to, std::size_t width);

} // namespace quillary::codecs
