#pragma once

#include <array>
#include <cstdint>

namespace quillary::cutout {

/// A pixel of premultiplied RGBA8888 as a number on a machine whose lowest byte comes first: red is in the lowest byte.
using Pixel = std::uint32_t;

/// The colour of a flat background, and how far pixels are from it.
///
/// Distances are kept squared and unscaled: s = (r-R)² + (g-G)² + (b-B)², each channel in 0 … 1, evaluated in exactly
/// this order in double precision. The distance proper is √s ÷ 1.7320508. Root and division never decrease, so one
/// comparison of s with the largest admissible s decides as the comparison of the distances would.
class BackgroundColor {
public:
    /// Channels 0 … 1.
    BackgroundColor(double red, double green, double blue);

    double squared(Pixel pixel) const {
        return m_red[pixel & 0xff] + m_green[pixel >> 8 & 0xff] + m_blue[pixel >> 16 & 0xff];
    }
    bool isNear(Pixel pixel) const { return squared(pixel) <= m_nearLimit; }

    /// Whether a pixel beside the removed region is close enough for a soft rim.
    bool isInRim(Pixel pixel) const { return squared(pixel) < m_rimLimit; }
    /// The alpha of such a pixel by its distance.
    std::uint8_t rimAlpha(Pixel pixel) const;

    /// The largest squared distance that counts as background.
    double nearLimit() const { return m_nearLimit; }

    /// Red, green, blue, 0 … 255.
    const std::array<float, 3>& inBytes() const { return m_inBytes; }

private:
    std::array<double, 256> m_red;
    std::array<double, 256> m_green;
    std::array<double, 256> m_blue;
    std::array<float, 3> m_inBytes;
    double m_nearLimit;
    double m_rimLimit; ///< the least squared distance that gets no soft rim
};

} // namespace quillary::cutout
