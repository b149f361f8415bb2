#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillary::png {

enum class Filter : std::uint8_t { none, sub, up, average, paeth };

/// Filters rows of one picture, from top to bottom or from any row on.
class RowFilter {
public:
    /// `rowBytes` are `bytesPerPixel` (3 or 4) times the width.
    RowFilter(std::size_t rowBytes, std::size_t bytesPerPixel);

    /// Writes the filter's number and the filtered row, 1 + rowBytes in all. `above` is the row before as it was, null
    /// for the first of the picture.
    void apply(Filter filter, const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out) const;
    /// The same with the filter that leaves the smallest sum of differences.
    void applyBest(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out);

private:
    std::size_t m_rowBytes;
    std::size_t m_bytesPerPixel;
    std::vector<std::uint8_t> m_empty; ///< the row above the first
    std::vector<std::uint8_t> m_trial;
};

} // namespace quillary::png
