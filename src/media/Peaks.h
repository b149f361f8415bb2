#pragma once

#include "media/MediaError.h"

#include <expected>
#include <filesystem>
#include <stop_token>
#include <vector>

namespace quillary::media {

/// How many peaks a row's waveform is drawn from.
inline constexpr int waveformPeaks = 2000;

/// The waveform of a sound: `count` values from 0 to 1 at most, fewer for a sound of fewer samples. Reads and decodes
/// the whole file. A file without sound is an error, one without samples an empty list. Any thread.
std::expected<std::vector<float>, MediaError> readPeaks(const std::filesystem::path& file, int count,
                                                        std::stop_token stop = {});

} // namespace quillary::media
