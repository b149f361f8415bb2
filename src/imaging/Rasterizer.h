#pragma once

#include "imaging/RasterSize.h"

#include <QByteArray>
#include <QImage>
#include <chrono>
#include <expected>
#include <filesystem>
#include <stop_token>
#include <variant>

namespace quillary {

/// Draws SVG and PDF documents in a short-lived process of their own, so that a hostile one ends as an ordinary error:
/// it has a limit of time and of memory, reads no other file and no network. Stateless; any thread; blocks.
namespace Rasterizer {

using Source = std::variant<std::filesystem::path, QByteArray>;

enum class Format { svg, pdf };

enum class Error {
    unreadable, ///< not such a document, or damaged
    locked,     ///< it asks for a password
    notDrawn    ///< of no size or too large a one, too slow, or more than the drawing process survived
};

inline constexpr std::chrono::milliseconds timeLimit{10'000};

/// The document, or the first page of it, on transparency: ARGB32_Premultiplied. Its pixels are the memory that the
/// other process drew into. A stop request ends it with `notDrawn`.
std::expected<QImage, Error> draw(const Source& source, Format format, RasterRule rule, std::stop_token stop = {},
                                  std::chrono::milliseconds limit = timeLimit);

} // namespace Rasterizer

} // namespace quillary
