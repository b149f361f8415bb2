#pragma once

#include "imaging/ImageIntakeError.h"
#include "imaging/RasterSize.h"
#include "values/PastedImage.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <expected>
#include <filesystem>
#include <optional>
#include <stop_token>

namespace quillary {

namespace platform {
class Pasteboard;
}

/// Turns what the user pastes, drops or picks into one staged image. Stateless; every operation may run on any thread,
/// those that read a pasteboard on the threads that the pasteboard allows. Vectors are rasterised at `longEdge` pixels
/// (the reading of the settings is the caller's). A stop request ends the work early with `nothingUsable`.
///
/// A picture of more than `largestPixelCount` pixels is refused before any pixel is touched.
namespace ImageIntake {

using quillary::largestPixelCount;

/// Preferred clipboard types, best first: PNG, TIFF, JPEG.
const QStringList& bitmapPriority();
/// SVG and PDF.
const QStringList& vectorTypes();
/// The generic image type and the vector types: what the file picker and the drop target accept.
const QStringList& acceptedFileTypes();

/// The clipboard: a file URL, a bitmap, a vector, SVG source text, then any picture at all; the first that yields an
/// image wins and the failures before it are not told.
std::expected<PastedImage, ImageIntakeError> read(platform::Pasteboard& pasteboard, int longEdge,
                                                  std::stop_token stop = {});
/// A file.
std::expected<PastedImage, ImageIntakeError> read(const std::filesystem::path& url, int longEdge,
                                                  std::stop_token stop = {});
/// Raw data of a declared type, under a given name.
std::expected<PastedImage, ImageIntakeError> read(const QByteArray& data, const QString& named, const QString& type,
                                                  int longEdge, std::stop_token stop = {});

/// The first file on the pasteboard whose content is of an accepted type.
std::optional<std::filesystem::path> fileURL(platform::Pasteboard& pasteboard);
/// A name taken from a web address on the pasteboard, or "Pasted Image".
QString suggestedName(platform::Pasteboard& pasteboard);
/// The format label of a type: its usual extension in upper case, else the last component of its identifier.
QString shortName(const QString& typeIdentifier);

} // namespace ImageIntake

} // namespace quillary
