#include "platform/HeldFile.h"

#include "base/Try.h"
#include "platform/PendingFile.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/FreeName.h"
#include "platform/linux/HiddenFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// The first free one that is not older than any other.
fs::path nextName(const fs::path& folder, std::string_view suffix) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto stamp = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    return folder / (std::to_string(stamp) + '-' + std::to_string(::getpid()) + std::string(suffix));
}

} // namespace

std::expected<HeldFile, FileError> HeldFile::create(const fs::path& folder, std::string_view suffix,
                                                    std::string_view contents) {
    TRY(createFolders(folder));
    const fs::path temporary = hiddenName(folder);
    Descriptor file(::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0600));
    if (!file) return std::unexpected(FileError::last());
    HeldFile held(temporary, file.release());
    lock(held.m_descriptor);
    if (!writeAll(held.m_descriptor, contents)) {
        const FileError error = FileError::last();
        held.remove();
        return std::unexpected(error);
    }
    for (;;) {
        const fs::path path = nextName(folder, suffix);
        if (const auto renamed = renameExclusively(temporary, path)) {
            held.m_path = path;
            return held;
        } else if (renamed.error().code != EEXIST) {
            held.remove();
            return std::unexpected(renamed.error());
        }
    }
}

std::vector<HeldFile> HeldFile::takeAll(const fs::path& folder, std::string_view suffix) {
    removeAbandonedFiles(folder);
    std::vector<std::string> names;
    for (const std::string& name : namesIn(folder))
        if (name.ends_with(suffix)) names.push_back(name);
    std::ranges::sort(names);
    std::vector<HeldFile> taken;
    for (const std::string& name : names) {
        const fs::path path = folder / name;
        Descriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_APPEND | O_CLOEXEC));
        if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) continue;
        // Its holder may have removed it meanwhile.
        struct stat status {};
        if (::fstat(file.get(), &status) != 0 || status.st_nlink == 0) continue;
        taken.push_back(HeldFile(path, file.release()));
    }
    return taken;
}

HeldFile::HeldFile(HeldFile&& other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

HeldFile& HeldFile::operator=(HeldFile&& other) noexcept {
    std::swap(m_path, other.m_path);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

HeldFile::~HeldFile() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

std::string HeldFile::contents() const {
    std::string all;
    std::array<char, 1U << 16U> piece{};
    for (;;) {
        const auto got = ::pread(m_descriptor, piece.data(), piece.size(), static_cast<off_t>(all.size()));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return all;
        all.append(piece.data(), static_cast<std::size_t>(got));
    }
}

void HeldFile::append(std::string_view text) {
    if (m_descriptor >= 0) writeAll(m_descriptor, text);
}

void HeldFile::remove() {
    if (m_descriptor < 0) return;
    ::unlink(m_path.c_str());
    ::close(std::exchange(m_descriptor, -1));
}

} // namespace quillary::platform
