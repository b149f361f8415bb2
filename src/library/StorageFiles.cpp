#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/SettingsStore.h"

#include <QStringDecoder>
#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

bool liesBelow(const fs::path& file, const fs::path& folder) {
    const auto [inFolder, inFile] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    return inFolder == folder.end() && inFile != file.end();
}

/// Names that are no text keep their bytes.
std::string sanitizedStem(const fs::path& file) {
    const std::string stem = file.stem().native();
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(QByteArrayView(stem.data(), static_cast<qsizetype>(stem.size())));
    return decoder.hasError() ? stem : Storage::sanitize(text).toStdString();
}

std::string extensionOf(const fs::path& file) {
    return NumberedName::ofFileName(file.filename().native()).extension();
}

bool sameFolder(const fs::path& a, const fs::path& b) {
    std::error_code failed;
    return a == b || fs::equivalent(a, b, failed);
}

StorageError taken(const fs::path& place) {
    return StorageError::platform(translate("Storage", "Another file is called “%1” by now; both stay as they are.")
                                      .arg(shown(place.filename())));
}

StorageError gone(const fs::path& file) {
    return StorageError::platform(translate("Storage", "“%1” is no longer there.").arg(shown(file.filename())));
}

StorageError refused(const fs::path& file, const QString& why) {
    return StorageError::platform(why.arg(shown(file.filename())));
}

StorageError isFolder(const fs::path& file) {
    return refused(file, translate("Storage", "%1 is a folder."));
}

} // namespace

std::optional<fs::path> Storage::shelfFolderOf(const fs::path& file) {
    const auto root = this->root();
    if (!root) return {};
    const auto path = ownFile(file);
    if (!path) return {};
    for (const fs::path& shelf : layout())
        if (liesBelow(*path, *root / shelf)) return *root / shelf;
    return {};
}

std::expected<fs::path, StorageError> Storage::ownFile(const fs::path& file) {
    const fs::path root = TRY(this->root());
    const auto onShelf = [](const fs::path& path, const fs::path& library) {
        return std::ranges::any_of(layout(), [&](const fs::path& shelf) { return liesBelow(path, library / shelf); });
    };
    fs::path path = standardized(file);
    if (onShelf(path, root)) return path;
    // The same place by another way: links above the library are resolved on both sides, the file itself never.
    std::error_code failed;
    const fs::path realRoot = fs::canonical(root, failed);
    const fs::path realFile = fs::canonical(path.parent_path(), failed) / path.filename();
    if (!failed && onShelf(realFile, realRoot)) return root / realFile.lexically_relative(realRoot);
    return std::unexpected(refused(file, translate("Storage", "%1 is not in the library.")));
}

std::expected<void, StorageError> Storage::remove(const fs::path& file) {
    const fs::path path = TRY(ownFile(file));
    std::error_code failed;
    const auto status = fs::symlink_status(path, failed);
    if (fs::is_directory(status)) return std::unexpected(isFolder(path));
    if (fs::remove(path, failed)) return {};
    const platform::FileError reason{failed ? failed.value() : ENOENT};
    return std::unexpected(StorageError::platform(
        translate("Storage", "Could not delete %1: %2").arg(shown(path.filename()), reason.description())));
}

std::expected<fs::path, StorageError> Storage::moveWithStar(const fs::path& file, const fs::path& folder,
                                                            const NumberedName& names) {
    std::error_code failed;
    if (fs::is_directory(fs::symlink_status(file, failed))) return std::unexpected(isFolder(file));
    auto moved = platform::moveToFreeName(file, folder, names);
    if (!moved)
        return std::unexpected(StorageError::platform(
            translate("Storage", "Could not move %1: %2").arg(shown(file.filename()), moved.error().description())));
    moveStar(file, *moved);
    return *std::move(moved);
}

void Storage::moveStar(const fs::path& file, const fs::path& moved) {
    const QString from = favoriteKey(file);
    const QString to = favoriteKey(moved);
    m_settings.update(SettingsKey::favouritePaths, [&](const QVariant& stored) -> QVariant {
        QStringList keys = stored.toStringList();
        const qsizetype at = keys.indexOf(from);
        if (at < 0) return stored;
        keys.removeAll(to);
        keys.replace(keys.indexOf(from), to);
        return keys;
    });
}

std::expected<fs::path, StorageError> Storage::move(const fs::path& file, const std::optional<QString>& collection) {
    const fs::path path = TRY(ownFile(file));
    const fs::path shelf = shelfFolderOf(path).value_or(path.parent_path());
    const fs::path folder = appending(collection.value_or(QString()), shelf);
    if (shelf.filename() == relativeFolder(Folder::recent) && folder != shelf)
        return std::unexpected(StorageError::platform(translate("Storage", "Recent has no collections.")));
    if (!platform::isTaken(path))
        return std::unexpected(
            StorageError::platform(translate("Storage", "Could not move %1: %2")
                                       .arg(shown(path.filename()), platform::FileError{ENOENT}.description())));
    if (sameFolder(folder, path.parent_path())) return path;
    TRY(makeFolder(folder));
    return moveWithStar(path, folder, {sanitizedStem(path), extensionOf(path)});
}

std::expected<fs::path, StorageError> Storage::rename(const fs::path& file, const QString& name) {
    const fs::path path = TRY(ownFile(file));
    const std::string extension = extensionOf(path);
    QString wanted = name;
    const QString ending = u'.' + QString::fromStdString(extension);
    if (!extension.empty() && wanted.trimmed().endsWith(ending, Qt::CaseInsensitive))
        wanted = wanted.trimmed().chopped(ending.size());
    const NumberedName names(sanitize(wanted).toStdString(), extension);
    if (names.at(1) == path.filename().native() && platform::isTaken(path)) return path;
    return moveWithStar(path, path.parent_path(), names);
}

std::expected<fs::path, StorageError> Storage::moveTo(const fs::path& folder, const NumberedName& names,
                                                      const fs::path& file) {
    const fs::path path = TRY(ownFile(file));
    TRY(makeFolder(folder));
    return moveWithStar(path, folder, names);
}

std::expected<void, StorageError> Storage::moveBack(const fs::path& file, const fs::path& place) {
    const fs::path from = TRY(ownFile(file));
    const fs::path to = TRY(ownFile(place));
    TRY(makeFolder(to.parent_path()));
    const auto moved = platform::moveTo(from, to);
    if (!moved && moved.error().code == EEXIST) return std::unexpected(taken(to));
    if (!moved && moved.error().code == ENOENT) return std::unexpected(gone(from));
    if (!moved)
        return std::unexpected(StorageError::platform(
            translate("Storage", "Could not move %1: %2").arg(shown(from.filename()), moved.error().description())));
    moveStar(from, to);
    return {};
}

std::expected<platform::TrashedFile, StorageError> Storage::trash(const fs::path& file) {
    const fs::path path = TRY(ownFile(file));
    auto trashed = platform::moveToTrash(path);
    if (trashed) {
        // Where the panel sees it, so that it comes back by the same way.
        trashed->origin = path;
        return *std::move(trashed);
    }
    switch (trashed.error().code) {
    case EISDIR:
        return std::unexpected(isFolder(path));
    case ENOENT:
        return std::unexpected(gone(path));
    case ENOTSUP:
        return std::unexpected(
            StorageError::platform(translate("Storage", "There is no trash on the drive of “%1”; the file stays.")
                                       .arg(shown(path.filename()))));
    default:
        return std::unexpected(StorageError::platform(translate("Storage", "Could not move “%1” to the trash: %2")
                                                          .arg(shown(path.filename()), trashed.error().description())));
    }
}

std::expected<void, StorageError> Storage::restore(const platform::TrashedFile& trashed) {
    const auto restored = platform::restoreFromTrash(trashed);
    if (restored) return {};
    const QString name = shown(trashed.origin.filename());
    switch (restored.error().code) {
    case EEXIST:
        return std::unexpected(taken(trashed.origin));
    case ENOENT:
        return std::unexpected(
            StorageError::platform(translate("Storage", "“%1” is not in the trash any more.").arg(name)));
    default:
        return std::unexpected(StorageError::platform(translate("Storage", "Could not take “%1” out of the trash: %2")
                                                          .arg(name, restored.error().description())));
    }
}

bool Storage::createCollection(const QString& collection, Folder folder) {
    return folderFor(folder, collection).has_value();
}

} // namespace quillary
