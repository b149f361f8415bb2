#pragma once

#include <QByteArray>
#include <QImage>

/// Pictures and documents made on the spot.
namespace quillary::test {

QByteArray encoded(const QImage& image, const char* format);

/// Every pixel different from its neighbours, with all degrees of transparency; the colours of transparent pixels
/// count.
QImage colourful(int width, int height, QImage::Format format = QImage::Format_RGBA8888);

/// A JPEG of four quarters, red, green, blue and white in reading order, with an EXIF orientation.
QByteArray orientedJpeg(int orientation);

/// As telephones store them, for 8 × 16 pixels: two squares side by side, red and blue, with a quarter turn that brings
/// the blue one to the top.
QByteArray turnedAvif();
QByteArray turnedHeic();

/// A PNG that is nothing but a header with these numbers, and one chunk that cannot be decoded.
QByteArray pngHeader(quint32 width, quint32 height);
/// A small PNG whose colour profile inflates to `size` bytes.
QByteArray pngWithProfileBomb(qsizetype size);

/// A PNG of one red pixel whose colour profile is a table for the perceptual intent alone; through it the pixel is green.
QByteArray pngWithPerceptualProfile();

QByteArray gzipped(const QByteArray& bytes);

/// A Windows icon with these pictures, as PNG, in this order.
QByteArray icon(const QList<QImage>& pictures);
/// An Apple icon of 16 × 16 points, dark, and one of 128 × 128, light.
QByteArray appleIcon();

/// One page of so many points, its lower half red at half strength.
QByteArray pdf(int width, int height);
/// A page that needs a password.
QByteArray lockedPdf();

/// An SVG document with these attributes on its root and this content.
QByteArray svg(const QByteArray& attributes, const QByteArray& content = {});
/// Takes minutes to draw at usual sizes.
QByteArray slowSvg();

} // namespace quillary::test
