#include "base/Try.h"
#include "platform/PendingFile.h"
#include "platform/linux/FreeName.h"

#include <sys/stat.h>
#include <unistd.h>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

/// `place` gives the copy its name and tells where it stands.
template <typename Place>
std::expected<fs::path, FileError> copyThenRemove(const fs::path& source, const fs::path& folder, Place place) {
    struct stat status {};
    if (::stat(source.c_str(), &status) != 0) return std::unexpected(FileError::last());
    auto copy = TRY(PendingFile::create(folder));
    TRY(copy.copyFrom(source));
    using namespace std::chrono;
    copy.setModified(system_clock::time_point(seconds(status.st_mtim.tv_sec)) + nanoseconds(status.st_mtim.tv_nsec));
    TRY(copy.sync());
    auto placed = TRY(place(copy));
    if (::unlink(source.c_str()) == 0) return placed;
    // A source that cannot be removed has not moved.
    const auto failure = FileError::last();
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
