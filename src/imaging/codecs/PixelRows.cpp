#include "imaging/codecs/PixelRows.h"

#include <cstring>

namespace quillary::codecs {

namespace {

template <int Bands>
void spread(const std::uint8_t* from, std::uint8_t* to, std::size_t width) {
    for (std::size_t x = 0; x < width; ++x) {
        const std::uint8_t* in = from + x * Bands;
        std::uint8_t* out = to + x * 4;
        out[0] = in[0];
        out[1] = in[Bands < 3 ? 0 : 1];
        out[2] = in[Bands < 3 ? 0 : 2];
        out[3] = Bands % 2 == 0 ? in[Bands - 1] : 255;
    }
}

} // namespace

void spreadRow(const std::uint8_t* from, int bands, std::uint8_t* to, std::size_t width) {
    switch (bands) {
    case 1:
        return spread<1>(from, to, width);
    case 2:
        return spread<2>(from, to, width);
    case 3:
        return spread<3>(from, to, width);
    default:
        std::memcpy(to, from, width * 4);
    }
}

} // namespace quillary::codecs
