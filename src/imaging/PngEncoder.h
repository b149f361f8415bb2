#pragma once

#include <QByteArray>
#include <QImage>
#include <stop_token>

namespace quillary {

/// Encodes an image as PNG (8 bits a sample: RGBA, or RGB when no pixel is transparent and the image carries no alpha),
/// in bands on all cores. Straight alpha passes unchanged; premultiplied input is divided. A colour space
/// other than sRGB that the image carries goes along as its profile. Empty when the image is
/// null, has no pixels, or a stop was requested. Any thread.
QByteArray pngData(const QImage& image, std::stop_token stop = {});

} // namespace quillary
