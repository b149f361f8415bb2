#pragma once

#include <QImage>
#include <filesystem>
#include <stop_token>

namespace quillary {

/// The small pictures of library tiles, at most 220 pixels on their longer side, upright. Stateless; any thread.
namespace Thumbnail {

inline constexpr int longestSide = 220;

/// Null when no picture can be made of the file.
QImage load(const std::filesystem::path& url, std::stop_token stop = {});

} // namespace Thumbnail

} // namespace quillary
