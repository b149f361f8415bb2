#include "values/PastedImage.h"

#include "base/Text.h"

namespace quillary {

namespace {

struct Provenance {
    QString operator()(const PastedImage::File& file) const { return QStringLiteral("File · ") + shown(file.url); }
    QString operator()(const PastedImage::RasterizedVector& vector) const {
        return QStringLiteral("Rasterized from ") + vector.origin;
    }
    QString operator()(const PastedImage::Bitmap& bitmap) const {
        return QStringLiteral("Clipboard bitmap · ") + bitmap.type;
    }
};

} // namespace

QString PastedImage::provenance() const { return std::visit(Provenance{}, source); }

} // namespace quillary
