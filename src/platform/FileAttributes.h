#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace quillary::platform {

/// Extended attributes and dates of files. Names are given without the system's prefix ("user." here). Nothing here
/// reports an error: a file system without attributes reads as one without values, and stamping is best effort.

/// Absent when the file has no such attribute or its value cannot be read whole.
std::optional<std::string> attribute(const std::filesystem::path& file, std::string_view name);
bool setAttribute(const std::filesystem::path& file, std::string_view name, std::string_view value);
void removeAttribute(const std::filesystem::path& file, std::string_view name);

/// Removes the mark with which a system remembers that a file came from outside.
void clearQuarantine(const std::filesystem::path& file);

/// Bytes of a regular file, or of the one that a link leads to; absent for everything else.
std::optional<std::uintmax_t> regularFileSize(const std::filesystem::path& file);

/// Sets the content modification date to the current time.
void stampNow(const std::filesystem::path& file);

} // namespace quillary::platform
