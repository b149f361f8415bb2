#include "drag/DragPicture.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <span>

namespace quillary {

namespace {

constexpr qreal longestSide = 110;
constexpr qreal badgeHeight = 24;
constexpr qreal widestBadge = 220;
constexpr qreal badgeMargin = 10;
constexpr int captionSize = 11;

QSize pixels(QSizeF points, qreal devicePixelRatio) {
    const auto side = [&](qreal length) {
        return std::max(1, static_cast<int>(std::lround(length * devicePixelRatio)));
    };
    return {side(points.width()), side(points.height())};
}

QImage reduced(const QImage& image, qreal devicePixelRatio) {
    const QSize target = pixels(dragPictureSize(image.deviceIndependentSize()), devicePixelRatio);
    // A drag must begin at once, so a large picture is thinned out before it is smoothed.
    const QSize thinned = target * 4;
    const bool large = image.width() > thinned.width() && image.height() > thinned.height();
    const QImage source = large ? image.scaled(thinned) : image;
    QImage picture = source.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

QImage badge(const QString& caption, qreal devicePixelRatio) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(captionSize);
    const qreal textWidth = std::ceil(QFontMetricsF(font).horizontalAdvance(caption));
    const QSizeF size(std::min(textWidth + 2 * badgeMargin, widestBadge), badgeHeight);
    QImage picture(pixels(size, devicePixelRatio), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.75F));
    painter.drawRoundedRect(QRectF(QPointF(), size), 6, 6);
    painter.setPen(Qt::white);
    painter.setFont(font);
    painter.drawText(QRectF(badgeMargin, 4, size.width() - 2 * badgeMargin, 16),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, caption);
    return picture;
}

} // namespace

bool exceedsDragThreshold(QPointF pressedAt, QPointF now) {
    const QPointF moved = now - pressedAt;
    return std::hypot(moved.x(), moved.y()) > dragThreshold;
}

QSizeF dragPictureSize(QSizeF picture) {
    return picture * std::min(longestSide / std::max(picture.width(), picture.height()), 1.0);
}

QImage dragPicture(const std::optional<QImage>& image, const QString& caption, qreal devicePixelRatio) {
    return image && image->width() > 0 ? reduced(*image, devicePixelRatio) : badge(caption, devicePixelRatio);
}

QImage withHardEdges(QImage picture) {
    constexpr int half = 128;
    if (!picture.hasAlphaChannel()) return picture;
    picture.convertTo(QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (QRgb& pixel : std::span(reinterpret_cast<QRgb*>(picture.scanLine(y)), std::size_t(picture.width())))
            pixel = qAlpha(pixel) < half ? 0 : qRgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
    return picture;
}

QPointF dragHotSpot(QPointF pressedAt, QPointF now, QSizeF picture) {
    return now - pressedAt + QPointF(picture.width() / 2, picture.height() / 2);
}

} // namespace quillary
