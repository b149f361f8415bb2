#include "ui/PictureScaling.h"

#include <algorithm>
#include <vector>

namespace quillary::PictureScaling {

namespace {

constexpr auto averaged = QImage::Format_ARGB32_Premultiplied;

/// `factor` rows of the picture, from `top` on, in the format that can be averaged channel by channel.
QImage band(const QImage& picture, int top, int factor) {
    const QImage rows(picture.constScanLine(top), picture.width(), factor, picture.bytesPerLine(), picture.format());
    if (picture.colorCount() == 0) return rows.convertToFormat(averaged);
    QImage indexed = rows.copy();
    indexed.setColorTable(picture.colorTable());
    return indexed.convertToFormat(averaged);
}

void average(const QImage& rows, int factor, uchar* out, int width) {
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(width) * 4, 0);
    for (int row = 0; row < factor; ++row) {
        const uchar* in = rows.constScanLine(row);
        for (int x = 0; x < width; ++x)
            for (int step = 0; step < factor; ++step, in += 4)
                for (std::size_t channel = 0; channel < 4; ++channel)
                    sums[static_cast<std::size_t>(x) * 4 + channel] += in[channel];
    }
    const auto area = static_cast<std::uint32_t>(factor * factor);
    std::ranges::transform(sums, out,
                           [area](std::uint32_t sum) { return static_cast<uchar>((sum + area / 2) / area); });
}

} // namespace

QImage reduced(const QImage& picture, std::stop_token stop, int side) {
    const int longer = std::max(picture.width(), picture.height());
    if (longer <= side) return picture;
    const int factor = (longer + side - 1) / side;
    const QSize size(picture.width() / factor, picture.height() / factor);
    if (size.isEmpty()) return picture;
    QImage result(size, averaged);
    for (int y = 0; y < size.height(); ++y) {
        if (stop.stop_requested()) return {};
        average(band(picture, y * factor, factor), factor, result.scanLine(y), size.width());
    }
    return result;
}

QImage scaledDown(const QImage& picture, QSize pixels) {
    const bool smaller = pixels.width() < picture.width() || pixels.height() < picture.height();
    const QImage scaled = smaller ? picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation) : picture;
    return scaled.convertToFormat(scaled.hasAlphaChannel() ? averaged : QImage::Format_RGB32);
}

} // namespace quillary::PictureScaling
