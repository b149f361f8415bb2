#pragma once

#include "imaging/reduced/Bytes.h"

#include <QByteArray>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillary::reduced {

/// What a PNG of the usual kind says of itself, and its compressed rows.
struct PngHeader {
    enum class Colour : std::uint8_t { grey = 0, rgb = 2, palette = 3, greyAlpha = 4, rgba = 6 };

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    Colour colour = Colour::rgb;
    int orientation = 1;
    QByteArray profile;
    std::array<std::uint32_t, 256> palette{}; ///< red, green, blue, alpha in the order of memory
    bool transparentPalette = false;
    std::vector<std::uint8_t> data; ///< a zlib stream

    std::size_t bytesPerPixel() const;
    bool hasAlpha() const;

    /// Absent for every other kind of PNG.
    static std::optional<PngHeader> read(Bytes file);
};

/// Inflates a zlib stream. Empty when it is damaged or does not hold exactly so many bytes, or, with `upTo`, more.
std::vector<std::uint8_t> inflated(Bytes stream, std::size_t size, bool upTo = false);

} // namespace quillary::reduced
