#include "platform/PendingFile.h"

#include "base/Try.h"
#include "platform/linux/Attributes.h"
#include "platform/linux/FreeName.h"
#include "platform/linux/HiddenFile.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

std::expected<void, FileError> lastFailure() {
    return std::unexpected(FileError::last());
}

bool hasNoUnnamedFiles(int error) {
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOSYS;
}

std::expected<void, FileError> linkUnnamed(int descriptor, const fs::path& name) {
    const std::string own = "/proc/self/fd/" + std::to_string(descriptor);
    if (::linkat(AT_FDCWD, own.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) return {};
    if (errno != ENOENT) return lastFailure();
    // Without /proc the descriptor itself may be linked where the system allows it.
    if (::linkat(descriptor, "", AT_FDCWD, name.c_str(), AT_EMPTY_PATH) == 0) return {};
    return lastFailure();
}

} // namespace

PendingFile::PendingFile(fs::path folder) : m_folder(std::move(folder)) {}

PendingFile::PendingFile(PendingFile&& other) noexcept
    : m_folder(std::move(other.m_folder))
    , m_temporary(std::exchange(other.m_temporary, {}))
    , m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_permissions(other.m_permissions) {}

PendingFile& PendingFile::operator=(PendingFile&& other) noexcept {
    if (this == &other) return *this;
    discard();
    m_folder = std::move(other.m_folder);
    m_temporary = std::exchange(other.m_temporary, {});
    m_descriptor = std::exchange(other.m_descriptor, -1);
    m_permissions = other.m_permissions;
    return *this;
}

PendingFile::~PendingFile() {
    discard();
}

void PendingFile::finish() noexcept {
    m_temporary.clear();
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = -1;
}

void PendingFile::discard() noexcept {
    if (m_descriptor >= 0 && !m_temporary.empty()) ::unlink(m_temporary.c_str());
    finish();
}

std::expected<PendingFile, FileError> PendingFile::create(const fs::path& folder) {
    PendingFile file(folder);
    file.m_descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (file.m_descriptor >= 0) return file;
    if (!hasNoUnnamedFiles(errno)) return std::unexpected(FileError::last());
    TRY(file.createHidden());
    return file;
}

std::expected<PendingFile, FileError> PendingFile::holding(const fs::path& folder, QByteArrayView bytes) {
    PendingFile file = TRY(create(folder));
    TRY(file.write(std::as_bytes(std::span(bytes.data(), static_cast<std::size_t>(bytes.size())))));
    return file;
}

std::expected<void, FileError> PendingFile::createHidden() {
    while (true) {
        m_temporary = hiddenName(m_folder);
        m_descriptor = ::open(m_temporary.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        if (m_descriptor < 0) return lastFailure();
        // Where nothing can be locked, nothing is ever cleared either.
        lock(m_descriptor);
        struct stat status {};
        if (::fstat(m_descriptor, &status) != 0 || status.st_nlink > 0) return {};
        // Somebody cleared it before it was locked: once more.
        finish();
    }
}

std::expected<void, FileError> PendingFile::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return lastFailure();
    }
    return {};
}

void PendingFile::setAttribute(std::string_view name, std::string_view value) {
    ::fsetxattr(m_descriptor, attributeName(name).c_str(), value.data(), value.size(), 0);
}

void PendingFile::setModified(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto whole = floor<seconds>(time);
    const timespec modified{static_cast<time_t>(whole.time_since_epoch().count()),
                            static_cast<long>(duration_cast<nanoseconds>(time - whole).count())};
    const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, modified};
    ::futimens(m_descriptor, times.data());
}

std::filesystem::path PendingFile::readablePath() const {
    return m_temporary.empty() ? std::filesystem::path("/proc/self/fd/" + std::to_string(m_descriptor)) : m_temporary;
}

std::expected<void, FileError> PendingFile::sync() {
    if (::fdatasync(m_descriptor) == 0) return {};
    // Some file systems have nothing to sync.
    if (errno == EINVAL || errno == EROFS) return {};
    return lastFailure();
}

void PendingFile::applyPermissions() {
    if (m_permissions) ::fchmod(m_descriptor, *m_permissions);
}

std::expected<void, FileError> PendingFile::claim(const fs::path& name) {
    return m_temporary.empty() ? linkUnnamed(m_descriptor, name) : renameExclusively(m_temporary, name);
}

std::expected<fs::path, FileError> PendingFile::place(const NumberedName& names) {
    applyPermissions();
    const auto placed = claimFreeName(m_folder, names, [this](const fs::path& name) { return claim(name); });
    if (placed) finish();
    return placed;
}

std::expected<void, FileError> PendingFile::placeAs(const std::string& name) {
    applyPermissions();
    TRY(claim(m_folder / name));
    finish();
    return {};
}

std::expected<void, FileError> PendingFile::replace(const fs::path& target) {
    applyPermissions();
    if (m_temporary.empty()) {
        lock(m_descriptor);
        const fs::path name = hiddenName(m_folder);
        TRY(linkUnnamed(m_descriptor, name));
        m_temporary = name;
    }
    if (::rename(m_temporary.c_str(), target.c_str()) != 0) return lastFailure();
    finish();
    return {};
}

} // namespace quillary::platform
