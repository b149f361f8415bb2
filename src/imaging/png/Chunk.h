#pragma once

#include <QByteArray>
#include <cstdint>
#include <span>

class QIODevice;

namespace quillary::png {

/// A whole chunk: length, type, content (in two pieces, if that saves a copy) and checksum.
QByteArray chunk(const char* type, std::span<const std::uint8_t> content = {}, std::span<const std::uint8_t> rest = {});
QByteArray chunk(const char* type, const QByteArray& content);

/// Whether this is a PNG that ends early, whose chunks claim more than there is, or whose pixel data were changed.
/// Decoders show some of these as half a picture, and the toolkit's makes room for whatever a chunk claims. Reads from
/// where the device stands; false for what is no PNG.
bool isDamaged(QIODevice& from);

} // namespace quillary::png
