#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <optional>

namespace quillary {

/// What a drag looks like while it is under way, and when it begins. Sizes and positions are in points (logical
/// pixels).

/// A press that has moved no farther than this is a click.
inline constexpr qreal dragThreshold = 4.0;
bool exceedsDragThreshold(QPointF pressedAt, QPointF now);

/// The size at which a picture is carried: its longer side at most 110, never enlarged.
QSizeF dragPictureSize(QSizeF picture);

/// The picture that follows the pointer, with `devicePixelRatio` set: the image reduced to its size, or a badge with
/// the caption where there is no image.
QImage dragPicture(const std::optional<QImage>& image, const QString& caption, qreal devicePixelRatio);

/// For screens that show each pixel or do not: what is half there or more is there, in its own colour.
QImage withHardEdges(QImage picture);

/// Where the pointer is within a picture that is centred on the point that was pressed.
QPointF dragHotSpot(QPointF pressedAt, QPointF now, QSizeF picture);

} // namespace quillary
