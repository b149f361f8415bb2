#pragma once

#include "platform/FileError.h"
#include "platform/FileIdentity.h"

#include <expected>
#include <filesystem>

namespace quillary::platform {

/// A file that lies in the desktop's trash.
struct TrashedFile {
    std::filesystem::path origin; ///< where it was
    std::filesystem::path file;   ///< where it is now
    std::filesystem::path info;   ///< the desktop's note of it
    FileIdentity identity = {};   ///< tells it from another file that lies there under its name by now
};

/// Moves a file (a link as such, never a folder) into the trash of its file system, in one rename: bytes are never
/// copied, and what is there already is never overwritten. The note comes first and is on the disk before the file
/// moves, so that every file in the trash can be put back; a kill in between leaves a note without a file, which
/// desktops pass over.
///
/// ENOTSUP where the file system has no trash and none can be made. The file then stays untouched, as after every
/// error. Any thread.
std::expected<TrashedFile, FileError> moveToTrash(const std::filesystem::path& file);

/// Puts the file back where it was, making its folder anew when that is gone. EEXIST when its name is taken there,
/// ENOENT when it is not in the trash any more; nothing is changed then.
std::expected<void, FileError> restoreFromTrash(const TrashedFile& trashed);

} // namespace quillary::platform
