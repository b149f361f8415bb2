#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillary::cutout {

/// Red, green, blue, 0 … 255.
template <typename Number>
using ColorOf = std::array<Number, 3>;
using Color = ColorOf<float>;

/// The colour of chosen pixels as it runs over a picture: near them their own, further away that of a growing
/// neighbourhood, without jumps. Some 0.7 bytes a pixel of the picture.
///
/// First `add` in bands, then `settle` once, then `at`. Threads may add at the same time when no two of them touch the
/// same four rows.
class ColorField {
public:
    static constexpr int cellSide = 4; ///< pixels

    ColorField(int width, int height);

    /// A pixel that counts `weight` times, 1 to 16.
    void add(int x, int y, const ColorOf<int>& color, int weight) {
        Cell& cell = m_levels.front().cells[cellIndex(x, y)];
        cell.red += static_cast<std::uint16_t>(color[0] * weight);
        cell.green += static_cast<std::uint16_t>(color[1] * weight);
        cell.blue += static_cast<std::uint16_t>(color[2] * weight);
        cell.count += static_cast<std::uint16_t>(weight);
    }
    void settle();

    /// At the centre of a pixel; nothing when no pixel was added.
    std::optional<Color> at(int x, int y) const;

private:
    /// Sums of what at most 16 pixels weigh; larger sums of the coarser levels are reduced to that.
    struct Cell {
        std::uint16_t red = 0;
        std::uint16_t green = 0;
        std::uint16_t blue = 0;
        std::uint16_t count = 0;
    };
    struct Level {
        int width;
        int height;
        std::vector<Cell> cells;
    };
    /// Colours and pixels, weighted by nearness.
    struct Mean {
        Color sum{};
        float count = 0;

        void add(const Cell& cell, float weight);
    };

    std::size_t cellIndex(int x, int y) const {
        return static_cast<std::size_t>(y / cellSide) * static_cast<std::size_t>(m_levels.front().width) +
               static_cast<std::size_t>(x / cellSide);
    }
    static Mean meanAt(const Level& level, float x, float y);

    std::vector<Level> m_levels; ///< each has cells of twice the side of the one before
};

} // namespace quillary::cutout
