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

} // namespace quillary::platform
