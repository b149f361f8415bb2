#pragma once

#include <filesystem>
#include <string_view>

namespace quillary {

/// Whether files of media are whole. Stateless; any thread.
namespace MediaWholeness {

/// On each copy that a library keeps: how many bytes its source had.
inline constexpr std::string_view sizeAttribute = "com.quillary.mediaSize";

/// Whether a file is shorter than it was when it was kept, or than it says itself: clips and sounds in QuickTime,
/// MPEG-4, WAVE, AVI and AIFF files and PNG pictures tell how long they are. Other files without the attribute are
/// taken to be whole. Reads a few bytes of each part of the file; false for what cannot be read.
bool isCutShort(const std::filesystem::path& file);

} // namespace MediaWholeness

} // namespace quillary
