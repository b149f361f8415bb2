#pragma once

#include "media/MediaError.h"

#include <expected>
#include <filesystem>
#include <stop_token>

namespace quillary::media {

/// How long a sound or the sound of a clip plays, in seconds: as long as what is decoded from it, to a tenth of a
/// second. Headers are believed where they fit the size of the file; otherwise the packets are counted. The content
/// tells the format, not the name. Any thread.
std::expected<double, MediaError> audioLength(const std::filesystem::path& file, std::stop_token stop = {});

/// The same for the picture of a clip.
std::expected<double, MediaError> videoLength(const std::filesystem::path& file, std::stop_token stop = {});

} // namespace quillary::media
