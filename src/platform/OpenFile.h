#pragma once

#include "platform/FileError.h"

#include <expected>
#include <filesystem>

class QFile;

namespace quillary::platform {

/// Opens a regular file, or the one that a link leads to, for the toolkit to read. It is found by the bytes of its
/// path, which the toolkit itself would change where they are no UTF-8. Folders fail with EISDIR; pipes, sockets and
/// devices, which are never waited for, with EINVAL. Any thread.
std::expected<void, FileError> openForReading(QFile& file, const std::filesystem::path& path);

} // namespace quillary::platform
