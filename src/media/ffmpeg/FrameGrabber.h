#pragma once

#include "media/ffmpeg/Demuxer.h"

namespace quillary::media {

std::expected<std::unique_ptr<FrameReader>, MediaError> openFrameGrabber(const std::filesystem::path& file);

} // namespace quillary::media
