#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace quillary {

/// How many pixels a vector gets. Shared with the rasteriser's process, so nothing but plain numbers.
struct RasterRule {
    enum class Kind {
        enlarge, ///< up to the long edge, never below its size in points
        fit      ///< the longer side has exactly the long edge, every side at least one pixel
    };
    struct Size {
        std::int64_t width;
        std::int64_t height;
        bool operator==(const Size&) const = default;
    };

    Kind kind;
    int longEdge;

    /// For a size in points. Sides are rounded half away from zero; absent when the size is not positive or a side is
    /// not representable. Sides may round to 0 when enlarging.
    std::optional<Size> operator()(double width, double height) const {
        if (!(width > 0) || !(height > 0)) return std::nullopt;
        double scale = longEdge / std::max(width, height);
        if (kind == Kind::enlarge) scale = std::max(scale, 1.0);
        const double least = kind == Kind::fit ? 1 : 0;
        const double pixelWidth = std::max(std::round(width * scale), least);
        const double pixelHeight = std::max(std::round(height * scale), least);
        constexpr double tooLarge = 0x1p63;
        if (!(pixelWidth < tooLarge) || !(pixelHeight < tooLarge)) return std::nullopt;
        return Size{static_cast<std::int64_t>(pixelWidth), static_cast<std::int64_t>(pixelHeight)};
    }
};

/// No picture has more pixels than this: a gigabyte at four bytes each.
inline constexpr std::int64_t largestPixelCount = std::int64_t(1) << 28;

/// Whether a picture of this size has pixels, and not too many of them.
constexpr bool isDrawable(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= largestPixelCount / height;
}

} // namespace quillary
