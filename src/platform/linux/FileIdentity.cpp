#include "platform/FileIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace quillary::platform {

std::optional<FileIdentity> fileIdentity(const std::filesystem::path& file) {
    struct statx status {};
    if (::statx(AT_FDCWD, file.c_str(), AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME, &status) != 0) return {};
    constexpr std::int64_t perSecond = 1'000'000'000;
    const bool tells = (status.stx_mask & STATX_BTIME) != 0;
    return FileIdentity{
        .device = makedev(status.stx_dev_major, status.stx_dev_minor),
        .number = status.stx_ino,
        .born = tells ? status.stx_btime.tv_sec * perSecond + static_cast<std::int64_t>(status.stx_btime.tv_nsec) : 0};
}

} // namespace quillary::platform
