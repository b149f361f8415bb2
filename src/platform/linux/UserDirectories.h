#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quillary::platform {

/// The folder that the text of a `user-dirs.dirs` file gives for a name such as "XDG_VIDEOS_DIR". Absent when the name
/// is not there, its value is neither absolute nor below $HOME, or it is the home folder itself, which stands for
/// "none".
std::optional<std::filesystem::path> userDirectory(std::string_view userDirs, std::string_view name,
                                                   const std::filesystem::path& home);

} // namespace quillary::platform
