#pragma once

#include "platform/FileError.h"
#include "platform/linux/Descriptor.h"

#include <chrono>
#include <expected>
#include <filesystem>
#include <sys/stat.h>

namespace quillary::platform {

/// A file that was opened for reading, and what the system says of it.
struct RegularFile {
    Descriptor descriptor;
    struct stat status {};
};

/// Opens a regular file, or the one that a link leads to. Folders fail with EISDIR, pipes, sockets and devices, which
/// are never waited for, with EINVAL.
std::expected<RegularFile, FileError> openRegularFile(const std::filesystem::path& file);

/// The content modification date.
inline std::chrono::sys_time<std::chrono::nanoseconds> modifiedOf(const struct stat& status) {
    using namespace std::chrono;
    return sys_time<nanoseconds>(seconds(status.st_mtim.tv_sec) + nanoseconds(status.st_mtim.tv_nsec));
}

} // namespace quillary::platform
