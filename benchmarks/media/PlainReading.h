#pragma once

#include <filesystem>

namespace quillary::benchmark {

/// Reads the whole file in pieces and sums its words.
unsigned long passOver(const std::filesystem::path& file);
/// Decodes the sound and drops it; the number of its samples.
long decode(const std::filesystem::path& file);
/// The length that libavformat tells after it has looked into the streams.
double probedLength(const std::filesystem::path& file);
/// Decodes the key frame at or before a time, without looking into the streams first.
bool decodeKeyFrame(const std::filesystem::path& file, double seconds);

} // namespace quillary::benchmark
