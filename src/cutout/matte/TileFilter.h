#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quillary::cutout {

/// Erodes and softens the alpha of one tile of a picture.
class TileFilter {
public:
    static constexpr int side = 64;  ///< of a tile
    static constexpr int margin = 8; ///< how far beyond the tile its pixels reach: 5 of erosion, 3 of blur
    static constexpr int rows = side + 2 * margin;
    static constexpr int stride = 128;
    static constexpr int firstColumn = 16; ///< of the tile itself, in the buffer of alphas

    /// Radii in pixels, 0 < radius ≤ 5.
    explicit TileFilter(double radius);

    /// Where to put the alphas before `run`: of row y and column x of the tile, both from -margin to side + margin.
    std::uint8_t* alphas(int y, int x) {
        return &m_alphas[static_cast<std::size_t>((y + margin) * stride + firstColumn + x)];
    }

    void run();

    /// The refined matte of row y of the tile, `side` values.
    const std::uint8_t* matte(int y) const { return &m_matte[static_cast<std::size_t>(y * side)]; }

    /// Multiplies all channels of each pixel by its matte.
    static void multiply(std::uint32_t* out, const std::uint32_t* in, const std::uint8_t* matte, int count);

private:
    static constexpr int taps = 7;
    static constexpr int largest = 5;

    using Plane = std::array<std::uint8_t, static_cast<std::size_t>(rows* stride)>;

    void findRowMinima();
    void erode(int radius, int row, std::uint8_t* out) const;

    int m_lower;      ///< the whole radius below
    float m_fraction; ///< how far towards the next
    std::array<float, taps> m_weights;
    Plane m_alphas{};
    std::array<Plane, largest> m_minima{}; ///< [h - 1]: over h pixels to both sides
    std::array<float, static_cast<std::size_t>(rows* side)> m_softRows{};
    std::array<std::uint8_t, static_cast<std::size_t>(side* side)> m_matte{};
};

} // namespace quillary::cutout
