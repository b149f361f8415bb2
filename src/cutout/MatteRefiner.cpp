#include "cutout/MatteRefiner.h"

#include "cutout/RowBands.h"
#include "cutout/matte/TileFilter.h"
#include "cutout/matte/TileScan.h"
#include "platform/LargePages.h"

#include <QColorSpace>
#include <algorithm>
#include <cstring>
#include <vector>

namespace quillary::MatteRefiner {

namespace {

using cutout::TileFilter;

constexpr int tileSide = TileFilter::side;
constexpr int margin = TileFilter::margin;
constexpr int cellSide = 16; ///< at least the margin, so that a tile's surroundings are the cells around it
constexpr double leastAmount = 0.001;
constexpr double leastRadius = leastAmount * largestErosion;

enum class Tile : std::uint8_t {
    clear,  ///< transparent, and so is everything that the filter would look at: stays transparent
    opaque, ///< opaque likewise: stays as it is
    edge    ///< must be filtered
};

bool isWorking(QImage::Format format) {
    return format == QImage::Format_RGBA8888_Premultiplied || format == QImage::Format_ARGB32_Premultiplied;
}

const std::uint32_t* pixelRow(const QImage& image, int y) {
    return reinterpret_cast<const std::uint32_t*>(image.constScanLine(y));
}

/// Rows of the picture as the filter wants them, the outermost pixels repeated beyond its border.
void fillAlphas(const QImage& image, int left, int top, TileFilter& filter) {
    const bool inside = left >= margin && left + tileSide + margin <= image.width();
    for (int y = -margin; y < tileSide + margin; ++y) {
        const std::uint32_t* row = pixelRow(image, std::clamp(top + y, 0, image.height() - 1));
        std::uint8_t* out = filter.alphas(y, -margin);
        if (inside) {
            cutout::takeAlphas(row + left - margin, tileSide + 2 * margin, out);
            continue;
        }
        for (int x = -margin; x < tileSide + margin; ++x)
            *out++ = static_cast<std::uint8_t>(row[std::clamp(left + x, 0, image.width() - 1)] >> 24);
    }
}

} // namespace

struct Matte::Tiles {
    int columns;
    int rows;
    std::vector<Tile> kinds;

    explicit Tiles(const QImage& image)
        : columns(partsOf(image.width(), tileSide))
        , rows(partsOf(image.height(), tileSide))
        , kinds(static_cast<std::size_t>(columns) * rows) {
        const std::vector<Tile> cells = cellsOf(image);
        const int cellColumns = partsOf(image.width(), cellSide);
        const int cellRows = partsOf(image.height(), cellSide);
        constexpr int perTile = tileSide / cellSide;
        const auto kindOf = [&](int column, int row) {
            Tile kind = cells[static_cast<std::size_t>(row * perTile) * cellColumns + column * perTile];
            for (int j = std::max(0, row * perTile - 1); j <= std::min(cellRows - 1, (row + 1) * perTile); ++j)
                for (int i = std::max(0, column * perTile - 1); i <= std::min(cellColumns - 1, (column + 1) * perTile);
                     ++i)
                    if (cells[static_cast<std::size_t>(j) * cellColumns + i] != kind) kind = Tile::edge;
            return kind;
        };
        for (int j = 0; j < rows; ++j)
            for (int i = 0; i < columns; ++i) kinds[static_cast<std::size_t>(j) * columns + i] = kindOf(i, j);
    }

    Tile kind(int column, int row) const { return kinds[static_cast<std::size_t>(row) * columns + column]; }

private:
    static int partsOf(int length, int part) { return (length + part - 1) / part; }

    static std::vector<Tile> cellsOf(const QImage& image) {
        const auto width = static_cast<std::size_t>(image.width());
        const auto cellColumns = static_cast<std::size_t>(partsOf(image.width(), cellSide));
        std::vector<Tile> cells(cellColumns * static_cast<std::size_t>(partsOf(image.height(), cellSide)));
        cutout::forRowBands(image.height(), cellSide, {}, [&](int begin, int end) {
            std::vector<std::uint32_t> least(width, ~std::uint32_t(0));
            std::vector<std::uint32_t> largest(width, 0);
            for (int y = begin; y < end; ++y)
                cutout::widenRanges(pixelRow(image, y), width, least.data(), largest.data());
            for (std::size_t i = 0; i < cellColumns; ++i) {
                const std::size_t first = i * cellSide;
                const std::size_t last = std::min(width, first + cellSide);
                const bool opaque = *std::min_element(&least[first], least.data() + last) >> 24 == 255;
                const bool clear = *std::max_element(&largest[first], largest.data() + last) >> 24 == 0;
                cells[static_cast<std::size_t>(begin / cellSide) * cellColumns + i] = opaque  ? Tile::opaque
                                                                                      : clear ? Tile::clear
                                                                                              : Tile::edge;
            }
        });
        return cells;
    }
};

Matte::Matte(const QImage& image)
    : m_input(image)
    , m_image(image.isNull() || isWorking(image.format())
                  ? image
                  : image.convertToFormat(QImage::Format_RGBA8888_Premultiplied)) {
    if (!m_image.isNull()) m_tiles = std::make_shared<const Tiles>(m_image);
}

QImage Matte::refined(double radius, std::stop_token stop) const {
    if (!(radius > leastRadius) || m_image.isNull()) return m_input;
    QImage result(m_image.size(), m_image.format());
    if (result.isNull()) return m_input;
    result.setColorSpace(m_image.colorSpace());
    uchar* const out = result.bits();
    const qsizetype stride = result.bytesPerLine();
    platform::preferLargePages(out, static_cast<std::size_t>(result.sizeInBytes()));

    const double limited = std::min(radius, largestErosion);
    cutout::forRowBands(m_image.height(), tileSide, stop, [&](int top, int bottom) {
        std::unique_ptr<TileFilter> filter;
        for (int left = 0; left < m_image.width(); left += tileSide) {
            const int width = std::min(tileSide, m_image.width() - left);
            const auto bytes = static_cast<std::size_t>(width) * sizeof(std::uint32_t);
            const Tile kind = m_tiles->kind(left / tileSide, top / tileSide);
            if (kind == Tile::edge) {
                if (!filter) filter = std::make_unique<TileFilter>(limited);
                fillAlphas(m_image, left, top, *filter);
                filter->run();
            }
            for (int y = top; y < bottom; ++y) {
                auto* const to = reinterpret_cast<std::uint32_t*>(out + y * stride) + left;
                const std::uint32_t* const from = pixelRow(m_image, y) + left;
                switch (kind) {
                case Tile::clear:
                    std::memset(to, 0, bytes);
                    break;
                case Tile::opaque:
                    std::memcpy(to, from, bytes);
                    break;
                case Tile::edge:
                    TileFilter::multiply(to, from, filter->matte(y - top), width);
                    break;
                }
            }
        }
    });
    return stop.stop_requested() ? m_input : result;
}

double erosionRadius(double amount) {
    return amount > 0 ? largestErosion * std::min(amount, 1.0) : 0;
}

QImage refine(const QImage& image, double amount, std::stop_token stop) {
    if (!(amount > leastAmount)) return image;
    return Matte(image).refined(erosionRadius(amount), std::move(stop));
}

} // namespace quillary::MatteRefiner
