#pragma once

#include "platform/FileIdentity.h"
#include "platform/KeptFile.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>

namespace quillary::platform {

/// A file that is about to be removed, so that it can come back for as long as this is held: as a KeptFile, or as the
/// words of a link. Any one thread at a time.
class RemovedFile {
public:
    /// Before the file goes. Errors as KeptFile::open has them; a link is never followed.
    static std::expected<RemovedFile, FileError> of(const std::filesystem::path& file);

    const std::filesystem::path& origin() const { return m_origin; }
    FileIdentity identity() const { return m_identity; }
    /// The room on the disk that it holds once the file has no name; 0 for a link.
    std::uint64_t bytes() const { return m_kept ? m_kept->stamp().size : 0; }
    /// Puts it where it was, its folder too, with bytes, attributes and date. EEXIST when the name is taken by now;
    /// nothing is changed then.
    std::expected<void, FileError> putBack() const;

private:
    explicit RemovedFile(std::filesystem::path origin, FileIdentity identity)
        : m_origin(std::move(origin)), m_identity(identity) {}

    std::filesystem::path m_origin;
    FileIdentity m_identity;
    std::filesystem::path m_target; ///< of a link
    std::shared_ptr<const KeptFile> m_kept;
};

} // namespace quillary::platform
