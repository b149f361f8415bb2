#pragma once

#include "media/MediaError.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <vector>

namespace quillary::media {

/// How many peaks a row's waveform is drawn from.
inline constexpr int waveformPeaks = 2000;

/// Hears how many samples were read, of how many in all; of a length that is only estimated more may come.
using PeaksReport = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// The waveform of a sound: `count` values from 0 to 1 at most, fewer for a sound of fewer samples. Reads and decodes
/// the whole file. A file without sound is an error, one without samples an empty list. Any thread.
/// `report` is called there after every piece.
std::expected<std::vector<float>, MediaError> readPeaks(const std::filesystem::path& file, int count,
                                                        std::stop_token stop = {}, const PeaksReport& report = {});

} // namespace quillary::media
