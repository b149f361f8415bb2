#include "imaging/reduced/PngHeader.h"
#include "imaging/reduced/ReducedPicture.h"
#include "imaging/reduced/RowUnfilter.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace quillary::reduced {

namespace {

constexpr std::uint64_t mostSamples = 48 << 20;

/// Sums squares of pixels, row by row, into premultiplied means.
class SquareMeans {
public:
    SquareMeans(const PngHeader& header, std::uint32_t side)
        : m_header(header)
        , m_side(side)
        , m_image(static_cast<int>((header.width + side - 1) / side),
                  static_cast<int>((header.height + side - 1) / side),
                  header.hasAlpha() ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBX8888)
        , m_sums(static_cast<std::size_t>(m_image.width()) * 4) {}

    void add(const std::uint8_t* row) {
        switch (m_header.colour) {
        case PngHeader::Colour::grey:
            addOpaque<1>(row);
            break;
        case PngHeader::Colour::rgb:
            addOpaque<3>(row);
            break;
        case PngHeader::Colour::greyAlpha:
            addEach(row, 2, [](const std::uint8_t* p) { return Sample{p[0], p[0], p[0], p[1]}; });
            break;
        case PngHeader::Colour::rgba:
            addEach(row, 4, [](const std::uint8_t* p) { return Sample{p[0], p[1], p[2], p[3]}; });
            break;
        case PngHeader::Colour::palette:
            addEach(row, 1, [&](const std::uint8_t* p) {
                std::array<std::uint8_t, 4> c;
                std::memcpy(c.data(), &m_header.palette[*p], c.size());
                return Sample{c[0], c[1], c[2], c[3]};
            });
            break;
        }
        if (++m_rows == m_side) finishRow();
    }

    QImage finish() {
        if (m_rows > 0) finishRow();
        return m_image;
    }

private:
    struct Sample {
        std::uint32_t red, green, blue, alpha;
    };

    /// Calls with the first pixel, the number of pixels and the sums of each square.
    template <typename Visit>
    void squares(Visit visit) {
        std::uint32_t* sums = m_sums.data();
        for (std::uint32_t x = 0; x < m_header.width; x += m_side, sums += 4)
            visit(x, std::min(m_side, m_header.width - x), sums);
    }

    template <std::size_t Channels>
    void addOpaque(const std::uint8_t* row) {
        squares([&](std::uint32_t x, std::uint32_t count, std::uint32_t* sums) {
            const std::uint8_t* pixel = row + std::size_t(x) * Channels;
            std::uint32_t channel[Channels] = {};
            for (std::uint32_t i = 0; i < count; ++i, pixel += Channels)
                for (std::size_t c = 0; c < Channels; ++c) channel[c] += pixel[c];
            for (std::size_t c = 0; c < 3; ++c) sums[c] += channel[Channels == 1 ? 0 : c];
        });
    }

    template <typename Read>
    void addEach(const std::uint8_t* row, std::size_t step, Read read) {
        squares([&](std::uint32_t x, std::uint32_t count, std::uint32_t* sums) {
            const std::uint8_t* pixel = row + std::size_t(x) * step;
            std::uint64_t red = 0;
            std::uint64_t green = 0;
            std::uint64_t blue = 0;
            std::uint32_t alpha = 0;
            for (std::uint32_t i = 0; i < count; ++i, pixel += step) {
                const Sample sample = read(pixel);
                red += sample.red * sample.alpha;
                green += sample.green * sample.alpha;
                blue += sample.blue * sample.alpha;
                alpha += sample.alpha;
            }
            sums[0] += static_cast<std::uint32_t>((red + 127) / 255);
            sums[1] += static_cast<std::uint32_t>((green + 127) / 255);
            sums[2] += static_cast<std::uint32_t>((blue + 127) / 255);
            sums[3] += alpha;
        });
    }

    void finishRow() {
        uchar* out = m_image.scanLine(m_line++);
        const bool opaque = !m_header.hasAlpha();
        squares([&](std::uint32_t, std::uint32_t count, const std::uint32_t* sums) {
            const std::uint32_t pixels = count * m_rows;
            for (std::size_t c = 0; c < 4; ++c) out[c] = static_cast<uchar>((sums[c] + pixels / 2) / pixels);
            if (opaque)
                out[3] = 255;
            else
                for (std::size_t c = 0; c < 3; ++c) out[c] = std::min(out[c], out[3]);
            out += 4;
        });
        std::ranges::fill(m_sums, 0);
        m_rows = 0;
    }

    const PngHeader& m_header;
    const std::uint32_t m_side;
    QImage m_image;
    std::vector<std::uint32_t> m_sums; ///< red, green, blue, alpha of the squares under way
    std::uint32_t m_rows = 0;
    int m_line = 0;
};

} // namespace

std::optional<Picture> readPng(Bytes file, int longestSide) {
    auto header = PngHeader::read(file);
    if (!header) return {};
    // Twice the size that is wanted, so that scaling has something to choose from; small pictures are read as they are.
    const std::uint32_t side =
        std::max(1U, std::max(header->width, header->height) / (2 * static_cast<std::uint32_t>(longestSide)));
    const std::size_t rowBytes = header->width * header->bytesPerPixel();
    const std::uint64_t samples = std::uint64_t(rowBytes + 1) * header->height;
    if (samples > mostSamples) return {};
    auto rows = inflated(header->data, static_cast<std::size_t>(samples));
    if (rows.empty()) return {};

    SquareMeans means(*header, side);
    const std::uint8_t* above = nullptr;
    for (std::uint32_t y = 0; y < header->height; ++y) {
        std::uint8_t* filtered = rows.data() + std::size_t(y) * (rowBytes + 1);
        if (!unfilterRow(filtered[0], filtered + 1, above, rowBytes, header->bytesPerPixel())) return {};
        above = filtered + 1;
        means.add(above);
    }
    return Picture{means.finish(),
                   {static_cast<int>(header->width), static_cast<int>(header->height)},
                   header->orientation,
                   header->profile};
}

} // namespace quillary::reduced
