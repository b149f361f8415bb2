#pragma once

#include "base/NumberedName.h"
#include "platform/FileError.h"

#include <QByteArrayView>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>

namespace quillary::platform {

/// A file that is being written and has no name yet.
///
/// It comes to life in the folder where it will stand, is filled and stamped there, and gets its name in one step when
/// it is whole. Until then nobody sees it, and a kill at any instant leaves nothing: the file is unnamed (O_TMPFILE),
/// or, where the file system cannot do that, a hidden temporary file (".quillary-….part") that is locked while its
/// writer lives and is cleared by `removeAbandonedFiles` once nobody holds the lock.
///
/// Not thread-safe; may be handed from one thread to another. Dropping it without placing it removes it.
class PendingFile {
public:
    /// `folder` must exist. Large copies tell their progress as (bytes done, bytes in all).
    using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

    static std::expected<PendingFile, FileError> create(const std::filesystem::path& folder);
    /// The same with these bytes in it.
    static std::expected<PendingFile, FileError> holding(const std::filesystem::path& folder, QByteArrayView bytes);

    PendingFile(PendingFile&& other) noexcept;
    PendingFile& operator=(PendingFile&& other) noexcept;
    ~PendingFile();

    std::expected<void, FileError> write(std::span<const std::byte> bytes);

    /// Fills the file with the bytes, the extended attributes and the permission bits of `source`, by reflink where the
    /// file system shares blocks, else by copy_file_range, else by reading and writing. Attributes that cannot be kept
    /// are passed over; its date is not kept. Only regular files are copied: others fail with EINVAL or EISDIR. A
    /// source that is changed or replaced meanwhile fails with EBUSY. A stop request ends it with ECANCELED.
    std::expected<void, FileError> copyFrom(const std::filesystem::path& source, const Progress& progress = {},
                                            std::stop_token stop = {});

    /// The same with the source's date, and waits until all is on the disk: nothing of the source is needed any more.
    std::expected<void, FileError> copyWhole(const std::filesystem::path& source, const Progress& progress = {},
                                             std::stop_token stop = {});

    /// Takes the extended attributes and the permission bits of `source` alone, for new bytes of the same file.
    std::expected<void, FileError> copyAttributesFrom(const std::filesystem::path& source);

    /// Where this process can read what was written while the file has no name.
    std::filesystem::path readablePath() const;

    /// Stamps an extended attribute; `name` without the system's prefix. A file system without attributes is passed
    /// over.
    void setAttribute(std::string_view name, std::string_view value);
    void setModified(std::chrono::system_clock::time_point time);

    /// Waits until the bytes are on the disk, so that whatever bears the name after a power cut is whole. Files of the
    /// library are synced before they are placed; those of Recent are not, since a drag waits for them.
    std::expected<void, FileError> sync();

    /// Gives the file the first free name of the sequence in its folder. The file system decides which is free, in one
    /// step, so two processes never get the same one and nothing is ever overwritten. Afterwards this object is empty.
    std::expected<std::filesystem::path, FileError> place(const NumberedName& names);

    /// Gives the file this very name in its folder. EEXIST when it is taken: the file then stays as it is, without a
    /// name.
    std::expected<void, FileError> placeAs(const std::string& name);

    /// Takes the place of `target`, which lies in the same folder, in one step: readers find the old file or the new
    /// one. A link at `target` is itself replaced. Afterwards this object is empty.
    std::expected<void, FileError> replace(const std::filesystem::path& target);

private:
    explicit PendingFile(std::filesystem::path folder);
    /// Returns the date of `source`.
    std::expected<std::chrono::system_clock::time_point, FileError>
    takeFrom(const std::filesystem::path& source, const Progress& progress, const std::stop_token& stop);
    std::expected<void, FileError> claim(const std::filesystem::path& name);
    /// Opens the hidden, locked file of folders that know no unnamed ones.
    std::expected<void, FileError> createHidden();
    /// What is done last, since a file may lose its writability with it.
    void applyPermissions();
    void finish() noexcept;
    void discard() noexcept;

    std::filesystem::path m_folder;
    std::filesystem::path m_temporary; ///< empty while the file is unnamed
    int m_descriptor = -1;
    std::optional<unsigned> m_permissions; ///< bits of the file that was copied
};

/// Moves a file to the first free name of the sequence in `folder`, never over another file. Within one file system it
/// is one rename, which moves folders and links as such; a relative link goes on leading where it led. Across two it is a whole copy of the file, attributes and date
/// included, and only then is the source removed; one that was changed meanwhile stays (EBUSY). A file system that can
/// neither refuse to overwrite nor link may show an empty file under the new name for an instant.
std::expected<std::filesystem::path, FileError>
moveToFreeName(const std::filesystem::path& source, const std::filesystem::path& folder, const NumberedName& names);

/// The same for one name alone: EEXIST when it is taken, and nothing is changed then.
std::expected<void, FileError> moveTo(const std::filesystem::path& source, const std::filesystem::path& target);

/// Removes the temporary files and folders that killed writers left directly in `folder`.
void removeAbandonedFiles(const std::filesystem::path& folder);

/// Creates the folder and its parents. An existing folder is no error.
std::expected<void, FileError> createFolders(const std::filesystem::path& folder);

} // namespace quillary::platform
