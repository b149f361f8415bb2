#pragma once

#include <QImage>
#include <stop_token>

namespace quillary::PictureScaling {

/// Pictures with a longer side beyond this many pixels get a smaller stand-in.
inline constexpr int hugeSide = 4096;

/// A stand-in for a picture whose longer side is beyond `side`, its own between half of `side` and `side`: every pixel
/// the average of a square block of the picture's. Reads the picture in bands, so that no second copy of it is made.
/// The picture itself when it is not so large; null when stopped. Any thread.
QImage reduced(const QImage& picture, std::stop_token stop = {}, int side = hugeSide);

/// The picture at that many pixels, smoothly, as a format that goes to the screen without another conversion. A picture
/// that is smaller already keeps its size. Any thread.
QImage scaledDown(const QImage& picture, QSize pixels);

} // namespace quillary::PictureScaling
