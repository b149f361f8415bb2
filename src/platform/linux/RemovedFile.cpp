#include "platform/RemovedFile.h"

#include "base/Try.h"
#include "platform/PendingFile.h"

#include <cerrno>

namespace quillary::platform {

namespace fs = std::filesystem;

std::expected<RemovedFile, FileError> RemovedFile::of(const fs::path& file) {
    const auto identity = fileIdentity(file);
    if (!identity) return std::unexpected(FileError::last());
    RemovedFile removed(file, *identity);
    std::error_code noLink;
    removed.m_target = fs::read_symlink(file, noLink);
    if (noLink) removed.m_kept = std::make_shared<const KeptFile>(TRY(KeptFile::open(file)));
    return removed;
}

std::expected<void, FileError> RemovedFile::putBack() const {
    TRY(createFolders(m_origin.parent_path()));
    if (m_kept) return m_kept->placeAs(m_origin);
    std::error_code failed;
    fs::create_symlink(m_target, m_origin, failed);
    if (failed) return std::unexpected(FileError{failed.value()});
    return {};
}

} // namespace quillary::platform
