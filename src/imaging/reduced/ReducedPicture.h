#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <cstdint>
#include <optional>
#include <span>

namespace quillary::reduced {

/// A bitmap as its file stores it, at a fraction of its size.
struct Picture {
    QImage image;            ///< RGBX8888, or RGBA8888_Premultiplied
    QSize original;          ///< pixels of the whole, before `orientation`
    int orientation = 1;     ///< as EXIF counts
    QByteArray profile = {}; ///< ICC; empty when the file has none
};

/// Quick readers of the commonest bitmaps for thumbnails: each pixel of the result is the mean of a square of the
/// original's. They read whole, well-formed files of the usual kinds only, and answer nothing for all others, which are
/// left to a complete decoder. `longestSide` is what the longer side shall have at least; none where the reduced
/// JPEG would be smaller. Any bytes are safe to read. Any thread.

/// Eight-bit sequential JPEG in grey or YCbCr, one eighth of its size: the means are its constant coefficients, so that
/// all the others are only skipped.
std::optional<Picture> readJpeg(std::span<const std::uint8_t> file, int longestSide);

/// Eight-bit PNG, grey, RGB or palette, not interlaced, of up to 48 MiB of samples; one that is hardly larger than
/// wanted, or smaller, as it is.
std::optional<Picture> readPng(std::span<const std::uint8_t> file, int longestSide);

/// The orientation that EXIF data (a TIFF header and what follows) tells, 1 when it tells none.
int exifOrientation(std::span<const std::uint8_t> exif);

} // namespace quillary::reduced
