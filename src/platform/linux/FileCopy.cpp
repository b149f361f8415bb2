#include "base/Try.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "platform/linux/Attributes.h"
#include "platform/linux/RegularFile.h"

#include <algorithm>
#include <linux/fs.h>
#include <memory>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace quillary::platform {

namespace {

constexpr std::size_t stretch = std::size_t{16} << 20U; ///< bytes between two reports of progress
constexpr std::size_t bufferSize = std::size_t{1} << 20U;

/// The bytes of one file on their way into another, both at the same offset.
class Copy {
public:
    Copy(int from, int to, std::uint64_t total, const PendingFile::Progress& progress, const std::stop_token& stop)
        : m_from(from), m_to(to), m_total(total), m_progress(progress), m_stop(stop) {}

    std::expected<void, FileError> run() {
        if (::ioctl(m_to, FICLONE, m_from) == 0) {
            advance(m_total);
            return {};
        }
        TRY(inTheKernel());
        return throughMemory();
    }

private:
    void advance(std::uint64_t bytes) {
        m_done += bytes;
        if (m_progress) m_progress(m_done, std::max(m_total, m_done));
    }

    /// Goes as far as the system carries; what is left is read and written.
    std::expected<void, FileError> inTheKernel() {
        while (m_done < m_total) {
            if (m_stop.stop_requested()) return std::unexpected(FileError{ECANCELED});
            const ssize_t copied = ::copy_file_range(m_from, nullptr, m_to, nullptr, stretch, 0);
            if (copied < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO || errno == EFBIG))
                return std::unexpected(FileError::last());
            if (copied <= 0) return {};
            advance(static_cast<std::uint64_t>(copied));
        }
        return {};
    }

    std::expected<void, FileError> throughMemory() {
        std::unique_ptr<char[]> buffer;
        while (true) {
            if (m_stop.stop_requested()) return std::unexpected(FileError{ECANCELED});
            if (!buffer) buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
            const ssize_t got = ::read(m_from, buffer.get(), bufferSize);
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) return std::unexpected(FileError::last());
            if (got == 0) return {};
            for (ssize_t put = 0; put < got;) {
                const ssize_t written = ::write(m_to, buffer.get() + put, static_cast<std::size_t>(got - put));
                if (written < 0 && errno != EINTR) return std::unexpected(FileError::last());
                put += std::max<ssize_t>(written, 0);
            }
            advance(static_cast<std::uint64_t>(got));
        }
    }

    const int m_from;
    const int m_to;
    const std::uint64_t m_total;
    std::uint64_t m_done = 0;
    const PendingFile::Progress& m_progress;
    const std::stop_token& m_stop;
};

/// Keeps what the file system takes; the rest is passed over.
void copyAttributes(int from, int to) {
    const ssize_t length = ::flistxattr(from, nullptr, 0);
    if (length <= 0) return;
    std::string names(static_cast<std::size_t>(length), '\0');
    if (::flistxattr(from, names.data(), names.size()) != length) return;
    std::vector<char> value;
    for (std::size_t at = 0; at < names.size(); at += std::string_view(names.data() + at).size() + 1) {
        const char* name = names.data() + at;
        if (!std::string_view(name).starts_with(attributePrefix)) continue;
        const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
        if (size < 0) continue;
        value.resize(static_cast<std::size_t>(size));
        const ssize_t got = ::fgetxattr(from, name, value.data(), value.size());
        if (got == size) ::fsetxattr(to, name, value.data(), value.size(), 0);
    }
}

} // namespace

std::expected<std::chrono::system_clock::time_point, FileError>
PendingFile::takeFrom(const std::filesystem::path& source, const Progress& progress, const std::stop_token& stop) {
    const auto before = fileStamp(source);
    const RegularFile from = TRY(openRegularFile(source));
    const auto size = static_cast<std::uint64_t>(from.status.st_size);
    TRY(Copy(from.descriptor.get(), m_descriptor, size, progress, stop).run());
    copyAttributes(from.descriptor.get(), m_descriptor);
    // What was copied may be half of the old and half of the new.
    if (fileStamp(source) != before) return std::unexpected(FileError{EBUSY});
    m_permissions = from.status.st_mode & 0777U;
    return modifiedOf(from.status);
}

std::expected<void, FileError> PendingFile::copyFrom(const std::filesystem::path& source, const Progress& progress,
                                                     std::stop_token stop) {
    TRY(takeFrom(source, progress, stop));
    return {};
}

std::expected<void, FileError> PendingFile::copyWhole(const std::filesystem::path& source, const Progress& progress,
                                                      std::stop_token stop) {
    setModified(TRY(takeFrom(source, progress, stop)));
    return sync();
}

std::expected<void, FileError> PendingFile::copyAttributesFrom(const std::filesystem::path& source) {
    const RegularFile from = TRY(openRegularFile(source));
    copyAttributes(from.descriptor.get(), m_descriptor);
    m_permissions = from.status.st_mode & 0777U;
    return {};
}

} // namespace quillary::platform
