#include "platform/KeptFile.h"

#include "base/Try.h"
#include "platform/PendingFile.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace fs = std::filesystem;

std::expected<KeptFile, FileError> KeptFile::open(const fs::path& file) {
    // Non-blocking, since opening a pipe would wait for its writer.
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return std::unexpected(FileError::last());
    KeptFile kept(descriptor);
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return std::unexpected(FileError::last());
    if (!S_ISREG(status.st_mode)) return std::unexpected(FileError{EINVAL});
    return kept;
}

KeptFile::KeptFile(KeptFile&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

KeptFile& KeptFile::operator=(KeptFile&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

KeptFile::~KeptFile() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

KeptFile::Stamp KeptFile::stamp() const {
    struct stat status {};
    if (::fstat(m_descriptor, &status) != 0) return {};
    using namespace std::chrono;
    return {static_cast<std::uint64_t>(status.st_size),
            sys_time<nanoseconds>(seconds(status.st_mtim.tv_sec) + nanoseconds(status.st_mtim.tv_nsec))};
}

std::expected<void, FileError> KeptFile::putBack(const fs::path& target) const {
    std::error_code failed;
    const fs::path file = fs::canonical(target, failed);
    if (failed) return std::unexpected(FileError{failed.value()});
    auto pending = TRY(PendingFile::create(file.parent_path()));
    TRY(pending.copyFrom("/proc/self/fd/" + std::to_string(m_descriptor)));
    pending.setModified(stamp().modified);
    TRY(pending.sync());
    return pending.replace(file);
}

} // namespace quillary::platform
