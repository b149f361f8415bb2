#include "platform/linux/RegularFile.h"

#include "base/Try.h"
#include "platform/OpenFile.h"

#include <QFile>
#include <fcntl.h>

namespace quillary::platform {

std::expected<RegularFile, FileError> openRegularFile(const std::filesystem::path& file) {
    // Non-blocking, since opening a pipe would wait for its writer.
    RegularFile opened{Descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))};
    if (!opened.descriptor || ::fstat(opened.descriptor.get(), &opened.status) != 0)
        return std::unexpected(FileError::last());
    if (S_ISDIR(opened.status.st_mode)) return std::unexpected(FileError{EISDIR});
    if (!S_ISREG(opened.status.st_mode)) return std::unexpected(FileError{EINVAL});
    return opened;
}

std::expected<void, FileError> openForReading(QFile& file, const std::filesystem::path& path) {
    RegularFile opened = TRY(openRegularFile(path));
    if (!file.open(opened.descriptor.get(), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return std::unexpected(FileError{EIO});
    static_cast<void>(opened.descriptor.release());
    return {};
}

} // namespace quillary::platform
