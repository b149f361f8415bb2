#pragma once

#include "media/headers/HeaderFile.h"

#include <optional>
#include <stop_token>

namespace quillary::media {

/// The length in seconds of an MPEG audio stream (layers I to III): from the count that the encoder left in the first
/// frame where the file is as long as that count says, otherwise by walking from frame to frame. Tags before and after
/// are passed over, junk between frames too. What an encoder added before and after the sound does not count. Absent
/// for other files and when a stop is requested.
std::optional<double> mpegAudioSeconds(const HeaderFile& file, std::stop_token stop = {});

/// The same of an AAC stream in ADTS frames, which always has to be walked.
std::optional<double> adtsSeconds(const HeaderFile& file, std::stop_token stop = {});

} // namespace quillary::media
