#include "imaging/rasterizer/Canvas.h"

#include <QBuffer>
#include <QImage>
#include <QPdfDocument>

namespace quillary::rasterizer {

namespace {

bool drawFirstPage(std::span<const std::byte> document, Canvas& canvas) {
    auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(document.data()),
                                         static_cast<qsizetype>(document.size()));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument pdf;
    pdf.load(&buffer);
    if (pdf.error() == QPdfDocument::Error::IncorrectPassword) canvas.tellLocked();
    if (pdf.status() != QPdfDocument::Status::Ready || pdf.pageCount() < 1) return false;

    const QSizeF page = pdf.pagePointSize(0);
    const auto pixels = canvas.begin(page.width(), page.height());
    if (!pixels) return false;
    const QImage drawn = pdf.render(0, {pixels->width, pixels->height});
    if (drawn.isNull()) return false;
    QImage out(pixels->data, pixels->width, pixels->height, static_cast<qsizetype>(pixels->stride),
               QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < out.height(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
        auto* to = reinterpret_cast<QRgb*>(out.scanLine(y));
        for (int x = 0; x < out.width(); ++x) to[x] = qPremultiply(from[x]);
    }
    return true;
}

} // namespace

} // namespace quillary::rasterizer

extern "C" Q_DECL_EXPORT bool quillaryDrawPdf(std::span<const std::byte> document,
                                              quillary::rasterizer::Canvas& canvas) {
    return quillary::rasterizer::drawFirstPage(document, canvas);
}
