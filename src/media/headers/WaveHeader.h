#pragma once

#include "media/headers/HeaderFile.h"

#include <optional>

namespace quillary::media {

/// Where the samples of a WAV file lie and what they are. RIFF, RF64 and BW64.
struct WaveHeader {
    int channels = 0;
    int rate = 0; ///< sample frames a second
    int bits = 0; ///< of one sample
    int frameBytes = 0;
    bool integers = false;    ///< linear PCM of whole numbers
    std::uint64_t offset = 0; ///< of the first sample
    std::uint64_t bytes = 0;  ///< of samples that are in the file, whatever the header claims

    std::uint64_t frames() const { return bytes / static_cast<std::uint64_t>(frameBytes); }
};

/// Absent for other files, for coded samples and for headers that make no sense.
std::optional<WaveHeader> waveHeader(const HeaderFile& file);

} // namespace quillary::media
