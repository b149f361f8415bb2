#pragma once

#include "imaging/png/DeflateWriter.h"
#include "imaging/png/PixelMatcher.h"
#include "imaging/png/RowFilter.h"

#include <QImage>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillary::png {

/// Compresses bands of rows of one picture. Every thread has one of its own and uses it for many bands.
class BandEncoder {
public:
    /// `image` has one of the formats that `isDirect` tells, and stays as it is.
    explicit BandEncoder(const QImage& image);

    /// Whether rows of this format can be read without converting the picture.
    static bool isDirect(QImage::Format format);
    /// 4 with alpha, 3 without.
    static std::size_t bytesPerPixel(const QImage& image) { return image.hasAlphaChannel() ? 4 : 3; }

    /// A piece of the picture's deflate stream, valid until the next call.
    const BitWriter& encode(int firstRow, int rows, bool last);
    /// Over the filtered rows of the last band.
    std::uint32_t checksum() const;
    std::size_t filteredSize() const { return m_filtered.size(); }

private:
    /// How a band is made small.
    struct Method {
        enum class Filters { none, up, best } filters;
        bool matches; ///< else only runs
    };

    Method bestMethod(int firstRow, int rows);
    void filterRows(int firstRow, int rows, Method::Filters filters);
    void writeRows(int rows, bool matches);
    /// The row's samples in the order of the file.
    const std::uint8_t* samples(int row, std::vector<std::uint8_t>& storage) const;

    const QImage& m_image;
    std::size_t m_bytesPerPixel;
    std::size_t m_rowBytes;
    RowFilter m_filter;
    PixelMatcher m_matcher;
    DeflateWriter m_writer;
    std::vector<std::uint8_t> m_current;
    std::vector<std::uint8_t> m_above;
    std::vector<std::uint8_t> m_filtered;
};

} // namespace quillary::png
