#include "cutout/SolidBackgroundRemover.h"

#include "base/Translation.h"
#include "cutout/RowBands.h"
#include "cutout/flat/BackgroundColor.h"
#include "cutout/flat/PixelRows.h"
#include "cutout/flat/RegionFill.h"
#include "platform/LargePages.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>

namespace quillary {

namespace {

using cutout::BackgroundColor;
using cutout::BitPlane;
using cutout::Pixel;
using cutout::PixelLayout;
using SolidBackgroundRemover::Colors;

constexpr int bandRows = 64;
constexpr int samplesPerSide = 64;

/// The pixels as they came, and where the result is made; the same buffer when they had to be converted first.
struct Buffers {
    QImage source;
    QImage result;
    PixelLayout layout;

    const Pixel* row(int y) const { return reinterpret_cast<const Pixel*>(source.constScanLine(y)); }
    Pixel workingPixel(int x, int y) const {
        Pixel pixel = row(y)[x];
        cutout::toWorking(&pixel, 1, layout);
        return pixel;
    }
};

std::optional<PixelLayout> layoutOf(QImage::Format format) {
    switch (format) {
    case QImage::Format_RGBA8888_Premultiplied:
        return PixelLayout{};
    case QImage::Format_RGBA8888:
        return PixelLayout{.straight = true};
    case QImage::Format_RGBX8888:
        return PixelLayout{.opaque = true};
    case QImage::Format_ARGB32_Premultiplied:
        return PixelLayout{.swapped = true};
    case QImage::Format_ARGB32:
        return PixelLayout{.straight = true, .swapped = true};
    case QImage::Format_RGB32:
        return PixelLayout{.swapped = true, .opaque = true};
    default:
        return {};
    }
}

Buffers buffersFor(const QImage& image) {
    constexpr auto working = QImage::Format_RGBA8888_Premultiplied;
    if (const auto layout = layoutOf(image.format())) {
        QImage result(image.size(), working);
        if (!result.isNull()) platform::preferLargePages(result.bits(), static_cast<std::size_t>(result.sizeInBytes()));
        return {image, result, *layout};
    }
    const QImage converted = image.convertToFormat(working);
    return {converted, converted, {}};
}

BackgroundColor backgroundOf(const Buffers& buffers, int width, int height) {
    const int shorter = std::min(width, height);
    const int step = shorter >= samplesPerSide ? shorter / samplesPerSide : 1;
    double red = 0;
    double green = 0;
    double blue = 0;
    double count = 0;
    const auto add = [&](int x, int y) {
        const Pixel pixel = buffers.workingPixel(x, y);
        red += (pixel & 0xff) / 255.0;
        green += (pixel >> 8 & 0xff) / 255.0;
        blue += (pixel >> 16 & 0xff) / 255.0;
        ++count;
    };
    for (int x = 0; x < width; x += step) {
        add(x, 0);
        add(x, height - 1);
    }
    for (int y = 0; y < height; y += step) {
        add(0, y);
        add(width - 1, y);
    }
    return {red / count, green / count, blue / count};
}

Pixel withAlpha(Pixel pixel, std::uint8_t alpha, Colors colors) {
    const Pixel limit = colors == Colors::withinAlpha ? alpha : 0xff;
    const Pixel red = std::min(pixel & 0xff, limit);
    const Pixel green = std::min(pixel >> 8 & 0xff, limit);
    const Pixel blue = std::min(pixel >> 16 & 0xff, limit);
    return red | green << 8 | blue << 16 | Pixel(alpha) << 24;
}

/// Clears the removed pixels of one row and softens those beside them; returns how many were removed.
qint64 finishRow(Pixel* row, int width, const BitPlane& removed, int y, const BackgroundColor& background,
                 Colors colors) {
    qint64 count = 0;
    const std::size_t first = removed.index(y);
    for (std::size_t i = 0; i < removed.wordsPerRow(); ++i) {
        const std::size_t at = first + i;
        const std::uint64_t gone = removed[at];
        const std::size_t pixels = std::min<std::size_t>(64, static_cast<std::size_t>(width) - i * 64);
        std::uint64_t rim = gone << 1 | removed[at - 1] >> 63 | gone >> 1 | removed[at + 1] << 63 |
                            removed[at - removed.stride()] | removed[at + removed.stride()];
        rim &= ~gone;
        if (pixels < 64) rim &= (std::uint64_t(1) << pixels) - 1;
        Pixel* const word = row + i * 64;
        if (gone != 0) cutout::clearPixels(word, pixels, gone, colors == Colors::withinAlpha);
        count += std::popcount(gone);
        for (; rim != 0; rim &= rim - 1) {
            Pixel& pixel = word[std::countr_zero(rim)];
            if (background.isInRim(pixel)) pixel = withAlpha(pixel, background.rimAlpha(pixel), colors);
        }
    }
    return count;
}

} // namespace

std::expected<SolidBackgroundRemover::Result, BackgroundRemovalError>
SolidBackgroundRemover::remove(const QImage& image, std::stop_token stop, Colors colors, Reach reach) {
    if (image.isNull()) return std::unexpected(BackgroundRemovalError::noImage());
    const int width = image.width();
    const int height = image.height();
    Buffers buffers = buffersFor(image);
    if (buffers.result.isNull())
        return std::unexpected(BackgroundRemovalError::failed(translate("Cutout", "Could not rebuild the image.")));

    const BackgroundColor background = backgroundOf(buffers, width, height);
    BitPlane open(width, height);
    cutout::forRowBands(height, bandRows, stop, [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            cutout::findNear(buffers.row(y), static_cast<std::size_t>(width), buffers.layout, background,
                             open.data() + open.index(y));
    });
    BitPlane removed = cutout::takeRegionAtBorder(open, width, height, stop);
    if (reach == Reach::enclosedAreas) removed |= cutout::takeRegionsWithCore(open, width, height, stop);

    const bool inPlace = buffers.source.constBits() == buffers.result.constBits();
    if (inPlace) buffers.source = {};
    uchar* const out = buffers.result.bits();
    std::atomic<qint64> count = 0;
    cutout::forRowBands(height, bandRows, stop, [&](int begin, int end) {
        qint64 inBand = 0;
        for (int y = begin; y < end; ++y) {
            auto* const row = reinterpret_cast<Pixel*>(out + y * buffers.result.bytesPerLine());
            if (!inPlace) std::memcpy(row, buffers.row(y), static_cast<std::size_t>(width) * sizeof(Pixel));
            if (!buffers.layout.isWorking()) cutout::toWorking(row, static_cast<std::size_t>(width), buffers.layout);
            inBand += finishRow(row, width, removed, y, background, colors);
        }
        count += inBand;
    });
    if (stop.stop_requested()) return std::unexpected(BackgroundRemovalError::stopped());
    const double pixels = static_cast<double>(width) * height;
    return Result{std::move(buffers.result), static_cast<double>(count.load()) / pixels};
}

} // namespace quillary
