#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct AVFrame;

namespace quillary::media {

/// The samples of a decoded frame as interleaved 16-bit integers: floating point is scaled by 32768, rounded and
/// clipped, wider integers lose their low bits, narrower ones gain zeros. False for a sample format that no decoder
/// gives. `into` is grown and overwritten.
bool convertSamples(const AVFrame& frame, std::size_t skippedFrames, std::vector<std::int16_t>& into);

} // namespace quillary::media
