#pragma once

#include "base/NumberedName.h"
#include "platform/FileError.h"

#include <expected>
#include <filesystem>
#include <string>

namespace quillary::platform {

/// A folder that is being filled and bears a hidden name (".quillary-….part") until it is whole, in the folder where it
/// will stand. It is locked while its maker lives; what a killed one left is cleared by `removeAbandonedFiles`.
///
/// Not thread-safe. Dropping it without placing it removes it with all that is in it.
class PendingFolder {
public:
    /// `parent` must exist.
    static std::expected<PendingFolder, FileError> create(const std::filesystem::path& parent);

    PendingFolder(PendingFolder&& other) noexcept;
    PendingFolder& operator=(PendingFolder&& other) = delete;
    ~PendingFolder();

    /// Where it is filled.
    const std::filesystem::path& path() const { return m_path; }

    /// Gives the folder the first free name of the sequence, in one step. Afterwards this object is empty.
    std::expected<std::filesystem::path, FileError> place(const NumberedName& names);

    /// Gives the folder this very name. EEXIST when it is taken: the folder then stays as it is.
    std::expected<void, FileError> placeAs(const std::string& name);

private:
    PendingFolder(std::filesystem::path path, int descriptor) : m_path(std::move(path)), m_descriptor(descriptor) {}

    std::filesystem::path m_path; ///< empty once it was placed
    int m_descriptor = -1;        ///< holds the lock
};

} // namespace quillary::platform
