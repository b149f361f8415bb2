#pragma once

#include <QByteArray>
#include <QImage>

namespace quillary {

/// Reads Truevision TGA: palettes, grey and true colour of 8 to 32 bits, plain or run-length coded, rows and columns from
/// any corner. Stateless; any thread.
namespace TgaReader {

/// Whether the file ends as version 2 of the format does; older ones have no mark at all.
bool hasMark(const QByteArray& file);

/// RGBA8888, or RGBX8888 without transparency; null when the file is damaged, cut short or of another format.
QImage read(const QByteArray& file);

} // namespace TgaReader

} // namespace quillary
