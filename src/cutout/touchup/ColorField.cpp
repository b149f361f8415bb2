#include "cutout/touchup/ColorField.h"

#include <algorithm>
#include <cmath>

namespace quillary::cutout {

namespace {

constexpr unsigned fullCell = 256; ///< 16 pixels that weigh 16 each: their sums just fit
static_assert(fullCell * 255 <= 0xffff);
constexpr float weightToTrust = 4; ///< with so many close by, nothing further away is asked
constexpr float negligible = 1 / 64.0F;

int halved(int length) {
    return (length + 1) / 2;
}

} // namespace

ColorField::ColorField(int width, int height) {
    const int columns = (width + cellSide - 1) / cellSide;
    const int rows = (height + cellSide - 1) / cellSide;
    m_levels.push_back({columns, rows, std::vector<Cell>(static_cast<std::size_t>(columns) * rows)});
}

void ColorField::settle() {
    while (m_levels.back().width > 1 || m_levels.back().height > 1) {
        const Level& fine = m_levels.back();
        Level coarse{halved(fine.width), halved(fine.height), {}};
        coarse.cells.reserve(static_cast<std::size_t>(coarse.width) * coarse.height);
        for (int y = 0; y < coarse.height; ++y)
            for (int x = 0; x < coarse.width; ++x) {
                std::array<unsigned, 4> sum{};
                for (int child = 0; child < 4; ++child) {
                    const int column = 2 * x + child % 2;
                    const int row = 2 * y + child / 2;
                    if (column >= fine.width || row >= fine.height) continue;
                    const Cell& cell = fine.cells[static_cast<std::size_t>(row) * fine.width + column];
                    sum[0] += cell.red;
                    sum[1] += cell.green;
                    sum[2] += cell.blue;
                    sum[3] += cell.count;
                }
                const unsigned excess = std::max(sum[3], fullCell);
                const auto reduced = [&](unsigned value) {
                    return static_cast<std::uint16_t>((value * fullCell + excess / 2) / excess);
                };
                coarse.cells.push_back({reduced(sum[0]), reduced(sum[1]), reduced(sum[2]), reduced(sum[3])});
            }
        m_levels.push_back(std::move(coarse));
    }
}

void ColorField::Mean::add(const Cell& cell, float weight) {
    sum[0] += weight * cell.red;
    sum[1] += weight * cell.green;
    sum[2] += weight * cell.blue;
    count += weight * cell.count;
}

/// Of the four cells whose centres surround a place, told in cells.
ColorField::Mean ColorField::meanAt(const Level& level, float x, float y) {
    const float left = std::floor(x - 0.5F);
    const float top = std::floor(y - 0.5F);
    Mean mean;
    for (int neighbour = 0; neighbour < 4; ++neighbour) {
        const float column = left + static_cast<float>(neighbour % 2);
        const float row = top + static_cast<float>(neighbour / 2);
        if (column < 0 || row < 0 || column >= static_cast<float>(level.width) ||
            row >= static_cast<float>(level.height))
            continue;
        const float nearness = (1 - std::abs(x - 0.5F - column)) * (1 - std::abs(y - 0.5F - row));
        mean.add(level.cells[static_cast<std::size_t>(row) * level.width + static_cast<std::size_t>(column)], nearness);
    }
    return mean;
}

std::optional<Color> ColorField::at(int x, int y) const {
    Color color{};
    float remaining = 1;
    float perCell = 1.0F / cellSide;
    for (const Level& level : m_levels) {
        const Mean mean =
            meanAt(level, (static_cast<float>(x) + 0.5F) * perCell, (static_cast<float>(y) + 0.5F) * perCell);
        perCell /= 2;
        if (mean.count <= 0) continue;
        const float share = remaining * std::min(1.0F, mean.count / weightToTrust);
        for (std::size_t channel = 0; channel < color.size(); ++channel)
            color[channel] += share * mean.sum[channel] / mean.count;
        remaining -= share;
        if (remaining < negligible) break;
    }
    if (remaining >= 1) return {};
    for (float& channel : color) channel /= 1 - remaining;
    return color;
}

} // namespace quillary::cutout
