#pragma once

#include "platform/FileError.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <filesystem>

namespace quillary::platform {

/// A file as it is now, held open: its bytes, attributes and date can still be had when another file has taken its
/// place. Costs one descriptor, and the room on the disk of a file that has no name any more. Movable; any one thread
/// at a time.
class KeptFile {
public:
    /// Tells a rewritten file from the one it was.
    struct Stamp {
        std::uint64_t size = 0;
        std::chrono::sys_time<std::chrono::nanoseconds> modified;
        bool operator==(const Stamp&) const = default;
    };

    /// Follows links. Folders fail with EISDIR, all else that is no regular file with EINVAL.
    static std::expected<KeptFile, FileError> open(const std::filesystem::path& file);

    KeptFile(KeptFile&& other) noexcept;
    KeptFile& operator=(KeptFile&& other) noexcept;
    ~KeptFile();

    /// Where this process can read it for as long as this object lives, whatever becomes of its name.
    std::filesystem::path readablePath() const;
    /// What was written to the file itself since then shows here too.
    Stamp stamp() const;
    /// Makes it the file at `target` again, in one step; what a link at `target` leads to is replaced. Afterwards that
    /// file has this one's stamp.
    std::expected<void, FileError> putBack(const std::filesystem::path& target) const;
    /// Makes it a new file of this name, with this one's stamp: EEXIST when the name is taken.
    std::expected<void, FileError> placeAs(const std::filesystem::path& target) const;

private:
    explicit KeptFile(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor = -1;
};

} // namespace quillary::platform
