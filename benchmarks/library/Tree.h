#pragma once

#include <filesystem>

namespace quillary::benchmark {

/// A library of pictures as an editor collects them: `fileCount` one-byte files (png, jpg, svg) spread over 2,000
/// nested folders, each with a date of its own and the attribute of its source format.
void makeTree(const std::filesystem::path& root, int fileCount);

} // namespace quillary::benchmark
