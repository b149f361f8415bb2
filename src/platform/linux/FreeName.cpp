#include "platform/linux/FreeName.h"

#include "platform/linux/Descriptor.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillary::platform {

namespace {

bool notSupported(int error) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM || error == EMLINK;
}

std::expected<void, FileError> failure(int code) {
    return std::unexpected(FileError{code});
}

std::expected<void, FileError> linkThenUnlink(const char* from, const char* to) {
    if (::link(from, to) != 0) return failure(errno);
    if (::unlink(from) == 0) return {};
    const int code = errno;
    ::unlink(to);
    return failure(code);
}

std::expected<void, FileError> renameOverClaim(const char* from, const char* to) {
    struct stat status {};
    if (::lstat(from, &status) != 0) return failure(errno);
    const bool isFolder = S_ISDIR(status.st_mode);
    if (isFolder) {
        if (::mkdir(to, 0777) != 0) return failure(errno);
    } else if (!Descriptor(::open(to, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666))) {
        return failure(errno);
    }
    if (::rename(from, to) == 0) return {};
    const int code = errno;
    isFolder ? ::rmdir(to) : ::unlink(to);
    return failure(code);
}

} // namespace

std::expected<void, FileError> renameExclusively(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (!notSupported(errno)) return failure(errno);
    const auto linked = linkThenUnlink(from.c_str(), to.c_str());
    if (linked || !notSupported(linked.error().code)) return linked;
    return renameOverClaim(from.c_str(), to.c_str());
}

void syncFolder(const std::filesystem::path& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened) ::fsync(opened.get());
}

} // namespace quillary::platform
