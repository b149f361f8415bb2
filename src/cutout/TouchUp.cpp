#include "cutout/TouchUp.h"

#include "cutout/MatteRefiner.h"
#include "cutout/RowBands.h"
#include "cutout/SolidBackgroundRemover.h"
#include "cutout/touchup/ColorField.h"

#include <cmath>
#include <span>
#include <vector>

namespace quillary::TouchUp {

namespace {

using cutout::Color;
using cutout::ColorField;
using cutout::ColorOf;
using Pixel = std::uint32_t; ///< RGBA8888, red in the lowest byte

constexpr int bandRows = 64;
static_assert(bandRows % ColorField::cellSide == 0);
constexpr auto working = QImage::Format_RGBA8888_Premultiplied;
/// Colours closer than this, squared, cannot be told apart.
constexpr float leastContrast = 24.0F * 24.0F;
/// From this alpha on a pixel keeps ever more of its colour, so that nothing jumps where the picture gets opaque.
constexpr float cleanUpTo = 0.75F;

std::span<const Pixel> row(const QImage& image, int y) {
    return {reinterpret_cast<const Pixel*>(image.constScanLine(y)), static_cast<std::size_t>(image.width())};
}

std::uint8_t alpha(Pixel pixel) {
    return static_cast<std::uint8_t>(pixel >> 24);
}

Color colorOf(Pixel straight) {
    return {static_cast<float>(straight & 0xff), static_cast<float>(straight >> 8 & 0xff),
            static_cast<float>(straight >> 16 & 0xff)};
}

float dot(const Color& a, const Color& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Color minus(const Color& a, const Color& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// The colour without the background's part: how far it lies on the way from the background to the foreground is that
/// part and is made good; what lies across that way is the subject's own, as far as the subject was seen.
Color unmixed(const Color& seen, const Color& foreground, const Color& background) {
    const Color way = minus(foreground, background);
    const float length = dot(way, way);
    if (length < leastContrast) return seen;
    const float part = std::clamp(dot(minus(seen, background), way) / length, 0.0F, 1.0F);
    Color result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = foreground[i] + part * (seen[i] - part * foreground[i] - (1 - part) * background[i]);
    return result;
}

Pixel premultiplied(const Color& color, std::uint8_t alpha) {
    const auto channel = [&](float value) {
        return static_cast<Pixel>(std::lround(std::clamp(value, 0.0F, 255.0F) * alpha / 255.0F));
    };
    return channel(color[0]) | channel(color[1]) << 8 | channel(color[2]) << 16 | Pixel(alpha) << 24;
}

/// Which parts of a cut-out lie at its edge: near half-transparent pixels.
class EdgeTiles {
public:
    static constexpr int side = 32; ///< pixels
    static_assert(bandRows % side == 0);

    EdgeTiles(const QImage& cutout, const std::stop_token& stop)
        : m_columns((cutout.width() + side - 1) / side)
        , m_rows((cutout.height() + side - 1) / side)
        , m_half(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows), 0) {
        cutout::forRowBands(cutout.height(), bandRows, stop, [&](int begin, int end) {
            for (int y = begin; y < end; ++y) mark(row(cutout, y), m_half.data() + y / side * m_columns);
        });
    }

    /// Whether a half-transparent pixel lies in the tile of this pixel or in one beside it.
    bool near(int x, int y) const {
        for (int line = std::max(0, y / side - 1); line <= std::min(m_rows - 1, y / side + 1); ++line)
            for (int column = std::max(0, x / side - 1); column <= std::min(m_columns - 1, x / side + 1); ++column)
                if (m_half[static_cast<std::size_t>(line * m_columns + column)] != 0) return true;
        return false;
    }

private:
    static void mark(std::span<const Pixel> pixels, std::uint8_t* tiles) {
        for (std::size_t x = 0; x < pixels.size(); x += side) {
            unsigned half = 0;
            for (const Pixel pixel : pixels.subspan(x, std::min<std::size_t>(side, pixels.size() - x)))
                half |= unsigned((pixel >> 24) - 1 < 254);
            tiles[x / side] |= static_cast<std::uint8_t>(half);
        }
    }

    int m_columns;
    int m_rows;
    std::vector<std::uint8_t> m_half;
};

/// The colours on both sides of the edge.
struct Sides {
    ColorField foreground;
    ColorField background;
};

/// What lies that far from everything transparent is the subject's own colour; nearer, it may be mixed already.
constexpr int safeDistance = 2;
constexpr int safeWeight = 16;

/// Whether the pixels up to `safeDistance` away are opaque too, in the four directions.
bool isSafelyInside(const QImage& cutout, int x, int y) {
    for (int away = -safeDistance; away <= safeDistance; ++away) {
        const int column = std::clamp(x + away, 0, cutout.width() - 1);
        const int line = std::clamp(y + away, 0, cutout.height() - 1);
        if (alpha(row(cutout, y)[static_cast<std::size_t>(column)]) != 255) return false;
        if (alpha(row(cutout, line)[static_cast<std::size_t>(x)]) != 255) return false;
    }
    return true;
}

/// Far from every edge one pixel of a cell stands for all. `colors` are rows `begin` … of the picture, straight.
void gather(Sides& sides, const EdgeTiles& edge, const QImage& colors, const QImage& base, const QImage& cutout,
            int begin) {
    const auto take = [&](int x, int y, bool atEdge) {
        const auto at = static_cast<std::size_t>(x);
        const Pixel seen = row(colors, y - begin)[at];
        if (alpha(seen) == 0) return; // nothing to be seen there
        const ColorOf<int> color{int(seen & 0xff), int(seen >> 8 & 0xff), int(seen >> 16 & 0xff)};
        if (alpha(row(cutout, y)[at]) == 255)
            sides.foreground.add(x, y, color, atEdge && !isSafelyInside(cutout, x, y) ? 1 : safeWeight);
        else if (alpha(row(base, y)[at]) == 0)
            sides.background.add(x, y, color, safeWeight);
    };
    const int end = begin + colors.height();
    for (int top = begin; top < end; top += EdgeTiles::side)
        for (int left = 0; left < colors.width(); left += EdgeTiles::side) {
            const bool atEdge = edge.near(left, top);
            const int step = atEdge ? 1 : ColorField::cellSide;
            for (int y = top; y < std::min(end, top + EdgeTiles::side); y += step)
                for (int x = left; x < std::min(colors.width(), left + EdgeTiles::side); x += step) take(x, y, atEdge);
        }
}

void clean(Pixel* out, std::span<const Pixel> seen, int y, const Sides& sides) {
    for (std::size_t x = 0; x < seen.size(); ++x) {
        const std::uint8_t coverage = alpha(out[x]);
        if (coverage == 0 || coverage == 255) continue;
        const auto foreground = sides.foreground.at(static_cast<int>(x), y);
        const auto background = sides.background.at(static_cast<int>(x), y);
        if (!foreground || !background) continue;
        const Color before = colorOf(seen[x]);
        const Color after = unmixed(before, *foreground, *background);
        const float share = std::min(1.0F, (1 - coverage / 255.0F) / (1 - cleanUpTo));
        Color blended;
        for (std::size_t i = 0; i < blended.size(); ++i) blended[i] = before[i] + share * (after[i] - before[i]);
        out[x] = premultiplied(blended, coverage);
    }
}

} // namespace

QImage base(const QImage& picture, const QImage& rawCutout, Cutout::Method method, Options options,
            const std::stop_token& stop) {
    if (!options.enclosed || method != Cutout::Method::solid) return rawCutout;
    using namespace SolidBackgroundRemover;
    auto removed = remove(picture, stop, Colors::withinAlpha, Reach::enclosedAreas);
    return removed ? std::move(removed->image) : rawCutout;
}

QImage cleanEdge(const QImage& picture, const QImage& base, QImage cutout, const std::stop_token& stop) {
    if (cutout.format() != working) cutout.convertTo(working);
    const QImage removed = base.convertedTo(working);
    if (cutout.isNull() || removed.isNull() || picture.size() != cutout.size() || removed.size() != cutout.size())
        return cutout;
    const auto colors = [&](int begin, int end) {
        return picture.copy(0, begin, picture.width(), end - begin).convertToFormat(QImage::Format_RGBA8888);
    };
    const EdgeTiles edge(cutout, stop);
    Sides sides{{cutout.width(), cutout.height()}, {cutout.width(), cutout.height()}};
    cutout::forRowBands(cutout.height(), bandRows, stop,
                        [&](int begin, int end) { gather(sides, edge, colors(begin, end), removed, cutout, begin); });
    sides.foreground.settle();
    sides.background.settle();
    uchar* const out = cutout.bits();
    const qsizetype stride = cutout.bytesPerLine();
    cutout::forRowBands(cutout.height(), bandRows, stop, [&](int begin, int end) {
        const QImage seen = colors(begin, end);
        for (int y = begin; y < end; ++y)
            clean(reinterpret_cast<Pixel*>(out + y * stride), row(seen, y - begin), y, sides);
    });
    return cutout;
}

QRect visibleFrame(const QImage& cutout) {
    int top = cutout.height();
    int bottom = -1;
    std::size_t left = static_cast<std::size_t>(cutout.width());
    std::size_t right = 0;
    const auto visible = [](Pixel pixel) { return alpha(pixel) != 0; };
    for (int y = 0; y < cutout.height(); ++y) {
        const auto pixels = row(cutout, y);
        const auto first = std::ranges::find_if(pixels, visible);
        if (first == pixels.end()) continue;
        const auto last = std::find_if(pixels.rbegin(), pixels.rend(), visible);
        top = std::min(top, y);
        bottom = y;
        left = std::min(left, static_cast<std::size_t>(first - pixels.begin()));
        right = std::max(right, static_cast<std::size_t>(pixels.rend() - last));
    }
    if (bottom < top) return cutout.rect();
    return {QPoint(static_cast<int>(left), top), QPoint(static_cast<int>(right) - 1, bottom)};
}

Result finish(const QImage& picture, const QImage& base, std::optional<double> amount, Options options,
              const std::stop_token& stop) {
    QImage image = amount ? MatteRefiner::refine(base, *amount, stop) : base;
    if (options.cleanEdge && !stop.stop_requested()) image = cleanEdge(picture, base, std::move(image), stop);
    if (!options.trim || image.isNull()) return {image, image.rect()};
    if (image.format() != working) image.convertTo(working);
    const QRect frame = visibleFrame(image);
    return {frame == image.rect() ? image : image.copy(frame), frame};
}

} // namespace quillary::TouchUp
