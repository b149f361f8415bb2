#pragma once

#include <QByteArray>
#include <cstdint>
#include <span>

namespace quillary::png {

/// A whole chunk: length, type, content (in two pieces, if that saves a copy) and checksum.
QByteArray chunk(const char* type, std::span<const std::uint8_t> content = {}, std::span<const std::uint8_t> rest = {});
QByteArray chunk(const char* type, const QByteArray& content);

} // namespace quillary::png
