#pragma once

#include <QByteArray>
#include <QImage>
#include <expected>
#include <filesystem>
#include <stop_token>
#include <variant>

namespace quillary {

/// Reads bitmaps of every format that the system's codecs know. Stateless; any thread.
namespace BitmapDecoder {

using Source = std::variant<std::filesystem::path, QByteArray>;

enum class Error {
    unreadable, ///< unknown, damaged or cut short, or of more than `largestPixelCount` pixels
    empty       ///< a picture of no pixels
};

/// An upright picture in sRGB, RGBA8888 with straight alpha or RGBX8888. Samples of a picture without a colour profile
/// pass unchanged, and memory beside the result stays small where the format can be read row by row. A file must be a
/// regular one. A stop request ends it with `unreadable`.
std::expected<QImage, Error> decode(const Source& source, std::stop_token stop = {});

/// The same, but RGB samples stay as they are and the image carries their colour space, as far as the toolkit knows it.
std::expected<QImage, Error> decodeAsStored(const Source& source, std::stop_token stop = {});

struct Reduced {
    QImage picture; ///< null when there is none
    QSize original; ///< of the whole picture, upright
};
/// An upright picture of at most `longestSide` pixels in each direction, never enlarged.
Reduced thumbnail(const std::filesystem::path& file, int longestSide);

/// Whether the first bytes of a file are those of a common bitmap format.
bool hasBitmapSignature(const std::filesystem::path& file);

} // namespace BitmapDecoder

} // namespace quillary
