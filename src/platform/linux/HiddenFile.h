#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillary::platform {

/// How hidden temporary files are named: ".quillary-<process>-<random>.part".
inline constexpr std::string_view hiddenPrefix = ".quillary-";
inline constexpr std::string_view hiddenSuffix = ".part";

/// A name in `folder` that nobody else makes up.
std::filesystem::path hiddenName(const std::filesystem::path& folder);
bool isHiddenName(std::string_view name);

/// Waits for the lock of a file or folder, which goes with the descriptor, also when the process is killed. Without
/// effect where nothing can be locked.
void lock(int descriptor);

} // namespace quillary::platform
