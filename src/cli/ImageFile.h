#pragma once

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "values/PastedImage.h"

#include <QByteArray>
#include <QImage>
#include <expected>
#include <filesystem>

namespace quillary {
class AppSettings;
}

namespace quillary::cli {

/// Everything that standard input holds, up to a size that no picture or document has.
std::expected<QByteArray, CommandError> standardInput();

/// Reads the image that a command names: a file, or standard input for "-", which counts as pasted data whose type is
/// told by its first bytes. Only regular files are opened, so that a pipe without a writer keeps nobody waiting.
std::expected<PastedImage, CommandError> readImage(const std::filesystem::path& file, const AppSettings& settings);

/// Writes the image as PNG. The file is whole when it appears, and only the named one is replaced; what is no regular
/// file is not. The folder must exist.
std::expected<void, CommandError> writePng(const QImage& image, const std::filesystem::path& file);

/// The result of a command that wrote a picture: how large it is.
void tellSize(const QImage& image, Output& output);

} // namespace quillary::cli
