#include "platform/Trash.h"

#include "base/NumberedName.h"
#include "base/Try.h"
#include "platform/PendingFile.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/FreeName.h"

#include <QByteArray>
#include <QDateTime>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// After the freedesktop.org trash specification.

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view infoSuffix = ".trashinfo";

std::optional<struct stat> statusOf(const fs::path& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) return {};
    return status;
}

/// A folder of this user's alone, made when it is missing; never what a link leads to.
bool isOwnFolder(const fs::path& folder) {
    ::mkdir(folder.c_str(), 0700);
    const auto status = statusOf(folder);
    return status && S_ISDIR(status->st_mode) && status->st_uid == ::getuid();
}

struct TrashFolder {
    fs::path folder;
    fs::path notedBelow = {}; ///< notes tell paths relative to it; empty: whole paths
};

bool isUsable(const fs::path& folder, dev_t device) {
    if (!isOwnFolder(folder)) return false;
    const auto status = statusOf(folder);
    return status && status->st_dev == device && isOwnFolder(folder / "files") && isOwnFolder(folder / "info");
}

std::optional<TrashFolder> homeTrash(dev_t device) {
    const char* data = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    fs::path place = data ? data : "";
    if (!place.is_absolute() && home) place = fs::path(home) / ".local/share";
    if (!place.is_absolute()) return {};
    std::error_code failed;
    fs::create_directories(place, failed);
    const auto status = statusOf(fs::canonical(place, failed));
    // On another file system it is of no use, so it is not made there.
    if (!status || status->st_dev != device || !isUsable(place / "Trash", device)) return {};
    return TrashFolder{place / "Trash"};
}

/// The highest folder of the file system that the folder lies on.
fs::path topFolder(fs::path folder, dev_t device) {
    while (folder.has_relative_path()) {
        const auto above = statusOf(folder.parent_path());
        if (!above || above->st_dev != device) break;
        folder = folder.parent_path();
    }
    return folder;
}

std::optional<TrashFolder> trashAt(const fs::path& top, dev_t device) {
    const std::string user = std::to_string(::getuid());
    const auto shared = statusOf(top / ".Trash");
    if (shared && S_ISDIR(shared->st_mode) && (shared->st_mode & S_ISVTX) != 0 &&
        isUsable(top / ".Trash" / user, device))
        return TrashFolder{top / ".Trash" / user, top};
    if (const fs::path own = top / (".Trash-" + user); isUsable(own, device)) return TrashFolder{own, top};
    return {};
}

QByteArray noteOf(const fs::path& file, const TrashFolder& trash) {
    const fs::path told = trash.notedBelow.empty() ? file : file.lexically_relative(trash.notedBelow);
    const QByteArray bytes(told.c_str(), static_cast<qsizetype>(told.native().size()));
    return "[Trash Info]\nPath=" + bytes.toPercentEncoding("/") +
           "\nDeletionDate=" + QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")).toLatin1() +
           '\n';
}

std::expected<void, FileError> writeNote(const fs::path& info, const QByteArray& note) {
    const Descriptor file(::open(info.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600));
    if (!file) return std::unexpected(FileError::last());
    const ssize_t written = ::write(file.get(), note.constData(), static_cast<std::size_t>(note.size()));
    if (written == note.size() && ::fsync(file.get()) == 0) {
        syncFolder(info.parent_path());
        return {};
    }
    // Fewer bytes than asked for are what a disk takes that gets full.
    const FileError failure = written >= 0 && written < note.size() ? FileError{ENOSPC} : FileError::last();
    ::unlink(info.c_str());
    return std::unexpected(failure);
}

/// The names of a file's notes, one after the other.
NumberedName noteNames(const fs::path& file) {
    const NumberedName name = NumberedName::ofFileName(file.filename().native());
    const std::string suffix(infoSuffix.substr(1));
    constexpr std::size_t longestExtension = 20; // with the suffix behind it still an extension
    if (name.extension().empty() || name.extension().size() > longestExtension)
        return {file.filename().native(), suffix};
    return {name.stem(), name.extension() + '.' + suffix};
}

std::expected<TrashedFile, FileError> moveInto(const TrashFolder& trash, const fs::path& file) {
    const QByteArray note = noteOf(file, trash);
    TrashedFile trashed{.origin = file, .file = {}, .info = {}};
    // A note claims a name, and so does a file that somebody left there without one.
    const auto claim = [&](const fs::path& info) -> std::expected<void, FileError> {
        TRY(writeNote(info, note));
        std::string name = info.filename().native();
        name.resize(name.size() - infoSuffix.size());
        trashed.file = trash.folder / "files" / name;
        const auto moved = renameExclusively(file, trashed.file);
        if (!moved) ::unlink(info.c_str());
        return moved;
    };
    trashed.info = TRY(claimFreeName(trash.folder / "info", noteNames(file), claim));
    trashed.identity = fileIdentity(trashed.file).value_or(FileIdentity());
    return trashed;
}

} // namespace

std::expected<TrashedFile, FileError> moveToTrash(const fs::path& file) {
    // The folder without its links, since a note tells where a file really was.
    std::error_code failed;
    const fs::path real = fs::canonical(file.parent_path(), failed) / file.filename();
    if (failed) return std::unexpected(FileError{failed.value()});
    const auto status = statusOf(real);
    if (!status) return std::unexpected(FileError::last());
    if (S_ISDIR(status->st_mode)) return std::unexpected(FileError{EISDIR});
    if (const auto home = homeTrash(status->st_dev)) {
        auto trashed = moveInto(*home, real);
        // One file system may be mounted at two places, between which nothing can be renamed.
        if (trashed || trashed.error().code != EXDEV) return trashed;
    }
    const auto trash = trashAt(topFolder(real.parent_path(), status->st_dev), status->st_dev);
    if (!trash) return std::unexpected(FileError{ENOTSUP});
    auto trashed = moveInto(*trash, real);
    if (!trashed && trashed.error().code == EXDEV) return std::unexpected(FileError{ENOTSUP});
    return trashed;
}

std::expected<void, FileError> restoreFromTrash(const TrashedFile& trashed) {
    if (fileIdentity(trashed.file) != trashed.identity) return std::unexpected(FileError{ENOENT});
    TRY(createFolders(trashed.origin.parent_path()));
    TRY(renameExclusively(trashed.file, trashed.origin));
    ::unlink(trashed.info.c_str());
    return {};
}

} // namespace quillary::platform
