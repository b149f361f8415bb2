#pragma once

#include "media/ffmpeg/Demuxer.h"

namespace quillary::media {

/// Absent when nothing of the track can be decoded.
std::expected<std::unique_ptr<SoundReader>, MediaError> openSoundDecoder(const std::filesystem::path& file);

} // namespace quillary::media
