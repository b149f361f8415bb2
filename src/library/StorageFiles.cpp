#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "library/AppSettings.h"
#include "library/Storage.h"
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
    const QString from = favoriteKey(file);
    const QString to = favoriteKey(*moved);
    m_settings.update(SettingsKey::favouritePaths, [&](const QVariant& stored) -> QVariant {
        QStringList keys = stored.toStringList();
        const qsizetype at = keys.indexOf(from);
        if (at < 0) return stored;
        keys.removeAll(to);
        keys.replace(keys.indexOf(from), to);
        return keys;
    });
    return *std::move(moved);
}

std::expected<fs::path, StorageError> Storage::move(const fs::path& file, const std::optional<QString>& collection) {
    const fs::path path = TRY(ownFile(file));
    const fs::path shelf = shelfFolderOf(path).value_or(path.parent_path());
    const fs::path folder = appending(collection.value_or(QString()), shelf);
    if (shelf.filename() == relativeFolder(Folder::recent) && folder != shelf)
        return std::unexpected(StorageError::platform(translate("Storage", "Recent has no collections.")));
    std::error_code failed;
    if (!fs::exists(fs::symlink_status(path, failed)))
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
    std::error_code failed;
    if (names.at(1) == path.filename().native() && fs::exists(fs::symlink_status(path, failed))) return path;
    return moveWithStar(path, path.parent_path(), names);
}

std::expected<fs::path, StorageError> Storage::moveTo(const fs::path& folder, const NumberedName& names,
                                                      const fs::path& file) {
    const fs::path path = TRY(ownFile(file));
    TRY(makeFolder(folder));
    return moveWithStar(path, folder, names);
}

bool Storage::createCollection(const QString& collection, Folder folder) {
    return folderFor(folder, collection).has_value();
}

} // namespace quillary
