#include "base/Try.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "platform/linux/FreeName.h"

#include <unistd.h>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

/// `place` gives the copy its name and tells where it stands.
template <typename Place>
std::expected<fs::path, FileError> copyThenRemove(const fs::path& source, const fs::path& folder, Place place) {
    const auto before = fileStamp(source);
    auto copy = TRY(PendingFile::create(folder));
    TRY(copy.copyWhole(source));
    auto placed = TRY(place(copy));
    syncFolder(folder);
    // A source that is still written to, or that cannot be removed, has not moved.
    const bool changed = fileStamp(source) != before;
    if (!changed && ::unlink(source.c_str()) == 0) return placed;
    const FileError failure = changed ? FileError{EBUSY} : FileError::last();
    ::unlink(placed.c_str());
    return std::unexpected(failure);
}

} // namespace

std::expected<fs::path, FileError> moveToFreeName(const fs::path& source, const fs::path& folder,
                                                  const NumberedName& names) {
    auto moved = claimFreeName(folder, names, [&](const fs::path& name) { return renameExclusively(source, name); });
    if (moved || moved.error().code != EXDEV) return moved;
    return copyThenRemove(source, folder, [&](PendingFile& copy) { return copy.place(names); });
}

std::expected<void, FileError> moveTo(const fs::path& source, const fs::path& target) {
    auto moved = renameExclusively(source, target);
    if (moved || moved.error().code != EXDEV) return moved;
    const auto place = [&](PendingFile& copy) -> std::expected<fs::path, FileError> {
        TRY(copy.placeAs(target.filename().native()));
        return target;
    };
    TRY(copyThenRemove(source, target.parent_path(), place));
    return {};
}

std::expected<void, FileError> createFolders(const fs::path& folder) {
    std::error_code failed;
    fs::create_directories(folder, failed);
    if (!failed) return {};
    const FileError failure{failed.value()};
    if (fs::is_directory(folder, failed)) return {};
    return std::unexpected(failure);
}

} // namespace quillary::platform
