#pragma once

#include <filesystem>

namespace quillary::fuzz {

/// The documents that the fuzzer of blocks begins with, and the media they refer to.
void writeBlockSeeds(const std::filesystem::path& corpus);
/// A folder for each format of pictures, and those of the quick readers.
void writePictureSeeds(const std::filesystem::path& corpora);
void writeMediaSeeds(const std::filesystem::path& corpora);
/// What the clipboard, the caches and SVG documents begin with.
void writeTextSeeds(const std::filesystem::path& corpora);

} // namespace quillary::fuzz
