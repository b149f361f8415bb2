#include "cutout/matte/TileFilter.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <cmath>

namespace quillary::cutout {

namespace {

constexpr double blurPerErosion = 0.15;
constexpr int reach = 3; ///< of the blur; four standard deviations of the largest

/// Columns that are worked on: the tile, what the blur needs beside it, rounded up to whole vectors.
constexpr int firstWorked = TileFilter::firstColumn - TileFilter::margin;
constexpr int worked = 96;

QUILLARY_MULTIVERSION void minimumOfTwo(const std::uint8_t* base, const std::uint8_t* a, const std::uint8_t* b,
                                        std::uint8_t* out, int count) {
    for (int i = 0; i < count; ++i) out[i] = std::min(base[i], std::min(a[i], b[i]));
}

QUILLARY_MULTIVERSION void softenAlong(const std::uint8_t* lower, const std::uint8_t* upper, float fraction,
                                       const float* weights, float* out) {
    std::array<float, TileFilter::side + 2 * reach> eroded;
    for (std::size_t i = 0; i < eroded.size(); ++i) {
        const auto low = static_cast<float>(static_cast<int>(lower[i]));
        eroded[i] = low + fraction * (static_cast<float>(static_cast<int>(upper[i])) - low);
    }
    for (std::size_t x = 0; x < TileFilter::side; ++x) {
        float sum = 0;
        for (std::size_t i = 0; i < 2 * reach + 1; ++i) sum += weights[i] * eroded[x + i];
        out[x] = sum;
    }
}

QUILLARY_MULTIVERSION void softenAcross(const float* rows, const float* weights, std::uint8_t* out) {
    for (int x = 0; x < TileFilter::side; ++x) {
        float sum = 0.5F;
        for (int i = 0; i < 2 * reach + 1; ++i) sum += weights[i] * rows[x + i * TileFilter::side];
        out[x] = static_cast<std::uint8_t>(static_cast<int>(sum));
    }
}

} // namespace

TileFilter::TileFilter(double radius)
    : m_lower(std::min(static_cast<int>(radius), largest)), m_fraction(static_cast<float>(radius - m_lower)) {
    const double deviation = blurPerErosion * radius;
    std::array<double, taps> bell;
    double sum = 0;
    for (int i = 0; i < taps; ++i)
        sum += bell[static_cast<std::size_t>(i)] = std::exp(-(i - reach) * (i - reach) / (2 * deviation * deviation));
    for (std::size_t i = 0; i < taps; ++i) m_weights[i] = static_cast<float>(bell[i] / sum);
}

void TileFilter::findRowMinima() {
    const int widest = m_lower + (m_fraction > 0 ? 1 : 0);
    for (int y = 0; y < rows; ++y) {
        const std::size_t first = static_cast<std::size_t>(y * stride + firstWorked);
        const std::uint8_t* row = &m_alphas[first];
        const std::uint8_t* before = row;
        for (int h = 1; h <= widest; ++h) {
            std::uint8_t* out = &m_minima[static_cast<std::size_t>(h - 1)][first];
            minimumOfTwo(before, row - h, row + h, out, worked);
            before = out;
        }
    }
}

void TileFilter::erode(int radius, int row, std::uint8_t* out) const {
    const auto minima = [&](int half, int y) {
        const Plane& plane = half == 0 ? m_alphas : m_minima[static_cast<std::size_t>(half - 1)];
        return &plane[static_cast<std::size_t>(y * stride + firstWorked)];
    };
    std::copy_n(minima(radius, row), worked, out);
    for (int dy = 1; dy <= radius; ++dy) {
        const int half = static_cast<int>(std::sqrt(radius * radius - dy * dy));
        minimumOfTwo(out, minima(half, row - dy), minima(half, row + dy), out, worked);
    }
}

void TileFilter::run() {
    findRowMinima();
    std::array<std::uint8_t, worked> lower;
    std::array<std::uint8_t, worked> upper;
    constexpr int firstTap = firstColumn - reach - firstWorked;
    for (int y = margin - reach; y < margin + side + reach; ++y) {
        erode(m_lower, y, lower.data());
        if (m_fraction > 0) erode(m_lower + 1, y, upper.data());
        const std::uint8_t* second = m_fraction > 0 ? upper.data() : lower.data();
        softenAlong(lower.data() + firstTap, second + firstTap, m_fraction, m_weights.data(),
                    &m_softRows[static_cast<std::size_t>(y * side)]);
    }
    for (int y = 0; y < side; ++y)
        softenAcross(&m_softRows[static_cast<std::size_t>((y + margin - reach) * side)], m_weights.data(),
                     &m_matte[static_cast<std::size_t>(y * side)]);
}

QUILLARY_MULTIVERSION void TileFilter::multiply(std::uint32_t* out, const std::uint32_t* in, const std::uint8_t* matte,
                                                int count) {
    // Two channels at a time, c · m ÷ 255 rounded.
    constexpr std::uint32_t pair = 0xff00ff;
    for (int i = 0; i < count; ++i) {
        const std::uint32_t m = matte[i];
        const std::uint32_t even = (in[i] & pair) * m + 0x800080;
        const std::uint32_t odd = (in[i] >> 8 & pair) * m + 0x800080;
        out[i] = ((even + (even >> 8 & pair)) >> 8 & pair) | ((odd + (odd >> 8 & pair)) & ~pair);
    }
}

} // namespace quillary::cutout
