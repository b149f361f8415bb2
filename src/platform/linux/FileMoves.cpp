#include "base/Try.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "platform/linux/FreeName.h"
#include "platform/linux/HiddenFile.h"

#include <cstdio>
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

/// A relative link that moved from `folder` leads where it led before. Best effort: it stays as it is otherwise.
void keepLeading(const fs::path& link, const fs::path& folder) {
    std::error_code failed;
    const fs::path words = fs::read_symlink(link, failed);
    if (failed || words.is_absolute()) return;
    const fs::path before = fs::canonical(folder, failed);
    const fs::path now = failed ? fs::path() : fs::canonical(link.parent_path(), failed);
    if (failed || before == now) return;
    const fs::path above = fs::weakly_canonical((before / words).parent_path(), failed);
    if (failed) return;
    const fs::path renewed = hiddenName(now);
    fs::create_symlink((above / words.filename()).lexically_relative(now), renewed, failed);
    if (!failed && ::rename(renewed.c_str(), link.c_str()) != 0) ::unlink(renewed.c_str());
}

} // namespace

std::expected<fs::path, FileError> moveToFreeName(const fs::path& source, const fs::path& folder,
                                                  const NumberedName& names) {
    auto moved = claimFreeName(folder, names, [&](const fs::path& name) { return renameExclusively(source, name); });
    if (moved) keepLeading(*moved, source.parent_path());
    if (moved || moved.error().code != EXDEV) return moved;
    return copyThenRemove(source, folder, [&](PendingFile& copy) { return copy.place(names); });
}

std::expected<void, FileError> moveTo(const fs::path& source, const fs::path& target) {
    auto moved = renameExclusively(source, target);
    if (moved) keepLeading(target, source.parent_path());
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
