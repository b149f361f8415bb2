#include "imaging/PngEncoder.h"

#include <QBuffer>

namespace quillary {

QByteArray pngData(const QImage& image, std::stop_token stop) {
    if (image.isNull() || stop.stop_requested()) return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

} // namespace quillary
