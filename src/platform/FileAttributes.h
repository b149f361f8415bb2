#pragma once

#include "base/WebOrigin.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillary::platform {

/// Extended attributes and dates of files. Names are given without the system's prefix ("user." here). Nothing here
/// reports an error: a file system without attributes reads as one without values, and stamping is best effort.

/// Absent when the file has no such attribute or its value cannot be read whole.
std::optional<std::string> attribute(const std::filesystem::path& file, std::string_view name);
bool setAttribute(const std::filesystem::path& file, std::string_view name, std::string_view value);
void removeAttribute(const std::filesystem::path& file, std::string_view name);

/// The addresses that browsers, and this program, write beside what they save from the web ("xdg.origin.url",
/// "xdg.referrer.url"); what is no address on the web is passed over.
WebOrigin webOrigin(const std::filesystem::path& file);
/// The same as attributes: name and value of those that are known.
std::vector<std::pair<std::string_view, std::string>> attributesOf(const WebOrigin& origin);

/// Removes the mark with which a system remembers that a file came from outside.
void clearQuarantine(const std::filesystem::path& file);

/// Whether a name is taken: by anything at all, a link that leads nowhere included.
bool isTaken(const std::filesystem::path& name);

/// Bytes of a regular file, or of the one that a link leads to; absent for everything else.
std::optional<std::uintmax_t> regularFileSize(const std::filesystem::path& file);

/// What tells whether a file is still the one that it was.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uintmax_t size = 0; ///< bytes
    std::chrono::sys_time<std::chrono::nanoseconds> modified = {};

    bool operator==(const FileStamp&) const = default;
};
/// Of a regular file, or of the one that a link leads to; absent for everything else.
std::optional<FileStamp> fileStamp(const std::filesystem::path& file);

/// Whether this process may write the file, or the one that a link leads to. A file that has no permission to be
/// written by anyone may not, whoever asks.
bool mayBeWritten(const std::filesystem::path& file);

/// Sets the content modification date to the current time.
void stampNow(const std::filesystem::path& file);

} // namespace quillary::platform
