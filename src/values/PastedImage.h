#pragma once

#include "base/WebOrigin.h"

#include <QImage>
#include <QSizeF>
#include <QString>
#include <filesystem>
#include <optional>
#include <variant>

namespace quillary {

/// One image on its way in: decoded, named, and told where it came from.
struct PastedImage {
    struct File {
        std::filesystem::path url;
        bool operator==(const File&) const = default;
    };
    struct RasterizedVector {
        QString origin; ///< the file's name, or the type of pasted data
        bool operator==(const RasterizedVector&) const = default;
    };
    struct Bitmap {
        QString type; ///< the clipboard type, or "unknown"
        bool operator==(const Bitmap&) const = default;
    };
    using Source = std::variant<File, RasterizedVector, Bitmap>;

    /// Four bytes a pixel: RGBA8888 with straight alpha or RGBX8888 from bitmaps, so that a picture passes to its PNG
    /// unchanged; ARGB32_Premultiplied from vectors, RGBA8888_Premultiplied from cut-outs. sRGB.
    QImage image;
    QSizeF pixelSize; ///< whole numbers
    bool hasAlphaChannel = false;
    Source source;
    QString name;                           ///< suggested name
    QString formatLabel;                    ///< upper case, such as "PNG"
    std::optional<qint64> sourceBytes = {}; ///< size of the source file; none for clipboard input
    WebOrigin webOrigin = {};               ///< as far as whoever offered it, or its file, tells

    static QString defaultName() { return QStringLiteral("Pasted Image"); }

    /// The same image with its cut-out in its place, which the name tells.
    PastedImage cutOut(const QImage& cutout) const;

    /// Where it came from, in one line for the user.
    QString provenance() const;
    /// What the user should know about a picture whose longer side is under 1000 pixels; none for others.
    std::optional<QString> resolutionWarning() const;
};

} // namespace quillary
