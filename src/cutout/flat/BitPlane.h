#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace quillary::cutout {

/// One bit a pixel, rows of 64-bit words, the lowest bit leftmost. A border of zero bits surrounds the picture, so that
/// every word of it has four neighbours: `index ± 1` and `index ± stride()`.
class BitPlane {
public:
    BitPlane(int width, int height)
        : m_words((static_cast<std::size_t>(width) + 63) / 64)
        // A row whose last word has a spare bit ends in a zero bit anyway.
        , m_stride(m_words + (width % 64 == 0 ? 1 : 0))
        , m_first(m_stride + 1)
        , m_bits(m_stride * (static_cast<std::size_t>(height) + 2) + 2, 0) {}

    std::size_t wordsPerRow() const { return m_words; }
    std::size_t stride() const { return m_stride; }
    /// Where a row begins.
    std::size_t index(int row) const { return m_first + static_cast<std::size_t>(row) * m_stride; }

    std::uint64_t operator[](std::size_t index) const { return m_bits[index]; }
    std::uint64_t& operator[](std::size_t index) { return m_bits[index]; }
    BitPlane& operator|=(const BitPlane& sameSize) {
        std::ranges::transform(m_bits, sameSize.m_bits, m_bits.begin(), std::bit_or());
        return *this;
    }
    std::uint64_t* data() { return m_bits.data(); }

private:
    std::size_t m_words;
    std::size_t m_stride;
    std::size_t m_first;
    std::vector<std::uint64_t> m_bits;
};

} // namespace quillary::cutout
