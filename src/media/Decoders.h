#pragma once

#include "media/MediaError.h"
#include "media/ffmpeg/MediaModule.h"

namespace quillary::media {

/// The module of demuxers and decoders, loaded when it is first asked for. `noDecoders`, with a warning once, when it
/// is missing. Any thread.
std::expected<MediaModule*, MediaError> decoders();

} // namespace quillary::media
