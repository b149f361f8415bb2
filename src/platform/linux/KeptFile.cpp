#include "platform/KeptFile.h"

#include "base/Try.h"
#include "platform/PendingFile.h"
#include "platform/linux/RegularFile.h"

#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace fs = std::filesystem;

std::expected<KeptFile, FileError> KeptFile::open(const fs::path& file) {
    return KeptFile(TRY(openRegularFile(file)).descriptor.release());
}

KeptFile::KeptFile(KeptFile&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

KeptFile& KeptFile::operator=(KeptFile&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

KeptFile::~KeptFile() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

fs::path KeptFile::readablePath() const {
    return "/proc/self/fd/" + std::to_string(m_descriptor);
}

KeptFile::Stamp KeptFile::stamp() const {
    struct stat status {};
    if (::fstat(m_descriptor, &status) != 0) return {};
    return {static_cast<std::uint64_t>(status.st_size), modifiedOf(status)};
}

std::expected<void, FileError> KeptFile::putBack(const fs::path& target) const {
    std::error_code failed;
    const fs::path file = fs::canonical(target, failed);
    if (failed) return std::unexpected(FileError{failed.value()});
    auto pending = TRY(PendingFile::create(file.parent_path()));
    TRY(pending.copyWhole(readablePath()));
    return pending.replace(file);
}

std::expected<void, FileError> KeptFile::placeAs(const fs::path& target) const {
    auto pending = TRY(PendingFile::create(target.parent_path()));
    TRY(pending.copyWhole(readablePath()));
    return pending.placeAs(target.filename().native());
}

} // namespace quillary::platform
