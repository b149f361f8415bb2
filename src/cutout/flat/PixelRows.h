#pragma once

#include "cutout/flat/BackgroundColor.h"

#include <cstddef>
#include <cstdint>

namespace quillary::cutout {

/// How the pixels of a picture differ from premultiplied RGBA8888.
struct PixelLayout {
    bool straight = false; ///< colours are not multiplied by the alpha
    bool swapped = false;  ///< blue comes first, red third
    bool opaque = false;   ///< the alpha is to be ignored

    bool isWorking() const { return !straight && !swapped && !opaque; }
};

/// In place.
void toWorking(Pixel* row, std::size_t width, PixelLayout layout);

/// One bit for each of `width` pixels: set where the pixel, taken to the working layout, is near the background. The
/// spare bits of the last word are zero.
void findNear(const Pixel* row, std::size_t width, PixelLayout layout, const BackgroundColor& background,
              std::uint64_t* bits);

/// Pixels 0 … `count`, at most 64, lose their alpha where a bit is set, and their colours too when asked.
void clearPixels(Pixel* pixels, std::size_t count, std::uint64_t bits, bool colorsToo);

} // namespace quillary::cutout
