#include "cutout/flat/PixelRows.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace quillary::cutout {

namespace {

static_assert(std::endian::native == std::endian::little);

constexpr std::size_t blockSize = 64;

/// In single precision and byte units a squared distance near the limit is wrong by at most 0.012.
constexpr float unsureBand = 0.0625F;

[[gnu::always_inline]] inline Pixel premultiplied(Pixel pixel) {
    const Pixel alpha = pixel >> 24;
    Pixel outer = (pixel & 0xff00ff) * alpha;
    outer = (outer + (outer >> 8 & 0xff00ff) + 0x800080) >> 8 & 0xff00ff;
    Pixel green = (pixel >> 8 & 0xff) * alpha;
    green = (green + (green >> 8 & 0xff) + 0x80) & 0xff00;
    return outer | green | alpha << 24;
}

[[gnu::always_inline]] inline void convert(Pixel* pixels, std::size_t count, PixelLayout layout) {
    if (layout.swapped)
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = (pixels[i] & 0xff00ff00) | (pixels[i] & 0xff) << 16 | (pixels[i] >> 16 & 0xff);
    if (layout.opaque)
        for (std::size_t i = 0; i < count; ++i) pixels[i] |= 0xff000000;
    else if (layout.straight)
        for (std::size_t i = 0; i < count; ++i) pixels[i] = premultiplied(pixels[i]);
}

/// Of eight bytes that are 0 or 1, one bit each.
[[gnu::always_inline]] inline std::uint64_t gathered(std::uint64_t bytes) {
    return (bytes * 0x0102040810204080) >> 56;
}

[[gnu::always_inline]] inline bool isOpaque(const Pixel* block) {
    Pixel all = ~Pixel(0);
    for (std::size_t i = 0; i < blockSize; ++i) all &= block[i];
    return all >> 24 == 0xff;
}

struct Limits {
    float red;
    float green;
    float blue;
    float surelyNear;
    float surelyFar;
};

[[gnu::always_inline]] inline std::uint64_t nearBits(const Pixel* block, const Limits& limits,
                                                     const BackgroundColor& background) {
    std::array<std::uint8_t, blockSize> verdicts; // 2 near, 1 unsure, 0 far
    for (std::size_t i = 0; i < blockSize; ++i) {
        const float red = static_cast<float>(static_cast<int>(block[i] & 0xff)) - limits.red;
        const float green = static_cast<float>(static_cast<int>(block[i] >> 8 & 0xff)) - limits.green;
        const float blue = static_cast<float>(static_cast<int>(block[i] >> 16 & 0xff)) - limits.blue;
        const float squared = red * red + green * green + blue * blue;
        verdicts[i] = static_cast<std::uint8_t>((squared <= limits.surelyNear) + (squared <= limits.surelyFar));
    }
    std::uint64_t bits = 0;
    std::uint64_t unsure = 0;
    constexpr std::uint64_t ones = 0x0101010101010101;
    for (std::size_t i = 0; i < 8; ++i) {
        std::uint64_t eight;
        std::memcpy(&eight, &verdicts[i * 8], sizeof eight);
        unsure |= eight & ones;
        bits |= gathered(eight >> 1 & ones) << i * 8;
    }
    if (unsure != 0)
        for (std::size_t i = 0; i < blockSize; ++i)
            if (verdicts[i] == 1 && background.isNear(block[i])) bits |= std::uint64_t(1) << i;
    return bits;
}

} // namespace

QUILLARY_MULTIVERSION void findNear(const Pixel* row, std::size_t width, PixelLayout layout,
                                    const BackgroundColor& background, std::uint64_t* bits) {
    const auto& color = background.inBytes();
    const auto limit = static_cast<float>(background.nearLimit() * 255 * 255);
    const Limits limits{color[0], color[1], color[2], limit - unsureBand, limit + unsureBand};
    std::array<Pixel, blockSize> copy;
    for (std::size_t x = 0; x < width; x += blockSize) {
        const std::size_t count = std::min(blockSize, width - x);
        const Pixel* block = row + x;
        if (count < blockSize || layout.swapped || (layout.straight && !isOpaque(block))) {
            std::copy_n(row + x, count, copy.begin());
            std::fill(copy.begin() + count, copy.end(), Pixel(0));
            convert(copy.data(), blockSize, layout);
            block = copy.data();
        }
        std::uint64_t word = nearBits(block, limits, background);
        if (count < blockSize) word &= (std::uint64_t(1) << count) - 1;
        bits[x / blockSize] = word;
    }
}

QUILLARY_MULTIVERSION void toWorking(Pixel* row, std::size_t width, PixelLayout layout) {
    convert(row, width, layout);
}

QUILLARY_MULTIVERSION void clearPixels(Pixel* pixels, std::size_t count, std::uint64_t bits, bool colorsToo) {
    const Pixel cleared = colorsToo ? ~Pixel(0) : Pixel(0xff000000);
    if (count == blockSize && ~bits == 0) {
        for (std::size_t i = 0; i < blockSize; ++i) pixels[i] &= ~cleared;
        return;
    }
    for (std::size_t half = 0; half < count; half += 32) {
        const auto word = static_cast<std::uint32_t>(bits >> half);
        const std::size_t end = std::min<std::size_t>(32, count - half);
        for (std::uint32_t i = 0; i < end; ++i) pixels[half + i] &= ~(cleared & -(word >> i & 1U));
    }
}

} // namespace quillary::cutout
