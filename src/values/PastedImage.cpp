#include "values/PastedImage.h"

#include "base/Text.h"
#include "base/Translation.h"

#include <algorithm>

namespace quillary {

namespace {

struct Provenance {
    QString operator()(const PastedImage::File& file) const {
        return translate("PastedImage", "File · %1").arg(shown(file.url));
    }
    QString operator()(const PastedImage::RasterizedVector& vector) const {
        return translate("PastedImage", "Rasterized from %1").arg(vector.origin);
    }
    QString operator()(const PastedImage::Bitmap& bitmap) const {
        return translate("PastedImage", "Clipboard bitmap · %1").arg(bitmap.type);
    }
};

QString smallPicture() {
    return translate("PastedImage", "Small for a 4K timeline — fine at this size on screen, soft if you scale it up.");
}

constexpr double softBelow = 1000; ///< pixels of the longer side

} // namespace

PastedImage PastedImage::cutOut(const QImage& cutout) const {
    PastedImage result = *this;
    result.image = cutout;
    result.pixelSize = cutout.size();
    result.hasAlphaChannel = true;
    result.name += QStringLiteral(" cutout");
    return result;
}

QString PastedImage::provenance() const {
    return std::visit(Provenance{}, source);
}

std::optional<QString> PastedImage::resolutionWarning() const {
    return std::max(pixelSize.width(), pixelSize.height()) < softBelow ? std::optional(smallPicture()) : std::nullopt;
}

} // namespace quillary
