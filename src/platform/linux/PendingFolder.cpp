#include "platform/PendingFolder.h"

#include "platform/PendingFile.h"
#include "platform/linux/FreeName.h"
#include "platform/linux/HiddenFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace fs = std::filesystem;

std::expected<PendingFolder, FileError> PendingFolder::create(const fs::path& parent) {
    while (true) {
        fs::path path = hiddenName(parent);
        if (::mkdir(path.c_str(), 0777) != 0) return std::unexpected(FileError::last());
        const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        // Somebody may clear it before it is locked: once more then.
        if (descriptor < 0 && errno == ENOENT) continue;
        if (descriptor < 0) return std::unexpected(FileError::last());
        lock(descriptor);
        struct stat status {};
        if (::fstat(descriptor, &status) != 0 || status.st_nlink > 0) return PendingFolder(std::move(path), descriptor);
        ::close(descriptor);
    }
}

PendingFolder::PendingFolder(PendingFolder&& other) noexcept
    : m_path(std::exchange(other.m_path, {})), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

PendingFolder::~PendingFolder() {
    std::error_code ignored;
    if (!m_path.empty()) fs::remove_all(m_path, ignored);
    if (m_descriptor >= 0) ::close(m_descriptor);
}

std::expected<fs::path, FileError> PendingFolder::place(const NumberedName& names) {
    auto placed = moveToFreeName(m_path, m_path.parent_path(), names);
    if (placed) m_path.clear();
    return placed;
}

std::expected<void, FileError> PendingFolder::placeAs(const std::string& name) {
    auto placed = renameExclusively(m_path, m_path.parent_path() / name);
    if (placed) m_path.clear();
    return placed;
}

} // namespace quillary::platform
