#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "imaging/PngEncoder.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"

#include <chrono>
#include <fstream>
#include <vector>

namespace quillary {

namespace fs = std::filesystem;
using platform::regularFileSize;

namespace {

NumberedName pngName(const QString& name) {
    return {Storage::sanitize(name).toStdString(), "png"};
}

StorageError couldNotWrite(const fs::path& folder, const NumberedName& names, const platform::FileError& error) {
    return StorageError::couldNotWrite(folder / names.at(1), error.description());
}

/// The first file of the sequence that `matches`; the search ends at the first free name.
template <typename Matches>
std::optional<fs::path> existing(const fs::path& folder, const NumberedName& names, Matches matches) {
    for (unsigned n = 1;; ++n) {
        fs::path candidate = folder / names.at(n);
        if (!platform::isTaken(candidate)) return {};
        if (matches(candidate)) return candidate;
    }
}

bool sameBytes(const fs::path& a, const fs::path& b) {
    std::ifstream left(a, std::ios::binary);
    std::ifstream right(b, std::ios::binary);
    if (!left || !right) return false;
    constexpr std::size_t piece = 256 * 1024;
    std::vector<char> leftBytes(piece);
    std::vector<char> rightBytes(piece);
    while (left && right) {
        left.read(leftBytes.data(), piece);
        right.read(rightBytes.data(), piece);
        if (left.gcount() != right.gcount()) return false;
        if (!std::equal(leftBytes.begin(), leftBytes.begin() + left.gcount(), rightBytes.begin())) return false;
    }
    return left.eof() && right.eof();
}

} // namespace

std::expected<void, StorageError> Storage::makeFolder(const fs::path& folder) {
    const auto made = platform::createFolders(folder);
    if (made) return {};
    return std::unexpected(StorageError::platform(translate("Storage", "Could not create the folder “%1”: %2")
                                                      .arg(shown(folder.filename()), made.error().description())));
}

std::expected<fs::path, StorageError> Storage::folderFor(Folder folder, const std::optional<QString>& collection) {
    const fs::path path = appending(collection.value_or(QString()), TRY(root()) / relativeFolder(folder));
    TRY(makeFolder(path));
    return path;
}

std::expected<Storage::Prepared, StorageError> Storage::prepare(const PastedImage& image, Folder folder,
                                                                const std::optional<QString>& collection,
                                                                std::stop_token stop) {
    fs::path path = TRY(folderFor(folder, collection));
    const QByteArray png = pngData(image.image, std::move(stop));
    if (png.isEmpty()) return std::unexpected(StorageError::couldNotEncodePNG());

    const auto failed = [&](const platform::FileError& error) {
        return std::unexpected(couldNotWrite(path, pngName(image.name), error));
    };
    auto file = platform::PendingFile::holding(path, png);
    if (!file) return failed(file.error());
    file->setAttribute(sourceAttribute, image.formatLabel.toLower().toStdString());
    if (image.sourceBytes) file->setAttribute(sourceSizeAttribute, std::to_string(*image.sourceBytes));
    for (const auto& [name, value] : platform::attributesOf(image.webOrigin)) file->setAttribute(name, value);
    Prepared prepared(*std::move(file), std::move(path), pngName(image.name));
    if (folder == Folder::recent)
        prepared.lookForTwin();
    // A drag waits for Recent; what is saved into the library is safe on disk before it gets its name.
    else if (const auto synced = prepared.m_file.sync(); !synced)
        return failed(synced.error());
    return prepared;
}

std::expected<Storage::Prepared, StorageError> Storage::prepareCopy(const fs::path& png, const QString& name,
                                                                    std::stop_token stop) {
    fs::path path = TRY(folderFor(Folder::recent, {}));
    NumberedName names = pngName(name);
    const auto failed = [&](const platform::FileError& error) {
        return std::unexpected(couldNotWrite(path, names, error));
    };
    auto file = platform::PendingFile::create(path);
    if (!file) return failed(file.error());
    if (const auto copied = file->copyFrom(png, {}, std::move(stop)); !copied) return failed(copied.error());
    Prepared prepared(*std::move(file), std::move(path), std::move(names));
    prepared.lookForTwin();
    return prepared;
}

void Storage::Prepared::lookForTwin() {
    const auto size = regularFileSize(readablePath());
    const auto twin = existing(m_folder, m_names, [&](const fs::path& there) {
        return size && regularFileSize(there) == size && sameBytes(readablePath(), there);
    });
    const auto stamp = twin ? platform::fileStamp(*twin) : std::nullopt;
    m_twin = stamp ? std::optional(Twin{*twin, *stamp}) : std::nullopt;
}

std::expected<fs::path, StorageError> Storage::place(Prepared prepared) {
    const auto changed = [&] { return platform::fileStamp(prepared.m_twin->file) != prepared.m_twin->stamp; };
    if (prepared.m_twin && changed()) prepared.lookForTwin();
    if (prepared.m_twin) {
        platform::stampNow(prepared.m_twin->file);
        return prepared.m_twin->file;
    }
    prepared.m_file.setModified(std::chrono::system_clock::now());
    auto placed = prepared.m_file.place(prepared.m_names);
    if (!placed) return std::unexpected(couldNotWrite(prepared.m_folder, prepared.m_names, placed.error()));
    return *std::move(placed);
}

std::expected<fs::path, StorageError> Storage::write(const PastedImage& image, Folder folder,
                                                     const std::optional<QString>& collection) {
    return place(TRY(prepare(image, folder, collection)));
}

std::expected<Storage::Stored, StorageError> Storage::storeVerbatim(const fs::path& file, Folder folder,
                                                                    const std::optional<QString>& collection,
                                                                    const platform::PendingFile::Progress& progress,
                                                                    std::stop_token stop) {
    const auto size = regularFileSize(file);
    if (!size)
        return std::unexpected(
            StorageError::platform(translate("Storage", "Could not read %1.").arg(shown(file.filename()))));
    const fs::path path = TRY(folderFor(folder, collection));
    const NumberedName names = NumberedName::ofFileName(file.filename().native());
    if (const auto same =
            existing(path, names, [&](const fs::path& there) { return regularFileSize(there) == size; })) {
        platform::stampNow(*same);
        return Stored{*same, true};
    }
    const auto failed = [&](const platform::FileError& error) {
        return std::unexpected(couldNotWrite(path, names, error));
    };
    auto copy = platform::PendingFile::create(path);
    if (!copy) return failed(copy.error());
    if (const auto copied = copy->copyFrom(file, progress, std::move(stop)); !copied) return failed(copied.error());
    if (const auto synced = copy->sync(); !synced) return failed(synced.error());
    copy->setModified(std::chrono::system_clock::now());
    auto placed = copy->place(names);
    if (!placed) return failed(placed.error());
    platform::clearQuarantine(*placed);
    return Stored{*std::move(placed), false};
}

bool Storage::alreadySaved(const fs::path& file, Folder folder, const std::optional<QString>& collection) {
    const auto size = regularFileSize(file);
    const auto root = this->root();
    if (!size || !root) return false;
    const fs::path path = appending(collection.value_or(QString()), *root / relativeFolder(folder));
    const auto holds = [&](const fs::path& there) {
        const auto source = sourceSize(there);
        if (source && static_cast<std::uintmax_t>(*source) == *size) return true;
        if (regularFileSize(there) != size) return false;
        return !source || sameBytes(file, there);
    };
    if (existing(path, pngName(shownStem(file)), holds)) return true;
    return existing(path, NumberedName::ofFileName(file.filename().native()), holds).has_value();
}

void Storage::setSourceFormat(const fs::path& file, const QString& format) {
    platform::setAttribute(file, sourceAttribute, format.toLower().toStdString());
}

void Storage::setSourceSize(const fs::path& file, qint64 size) {
    platform::setAttribute(file, sourceSizeAttribute, std::to_string(size));
}

std::optional<QString> Storage::sourceFormat(const fs::path& file) {
    const auto value = platform::attribute(file, sourceAttribute);
    return value && !value->empty() ? std::optional(QString::fromStdString(*value)) : std::nullopt;
}

std::optional<qint64> Storage::sourceSize(const fs::path& file) {
    const auto value = platform::attribute(file, sourceSizeAttribute);
    if (!value) return {};
    bool isNumber = false;
    const qint64 size = QByteArray::fromStdString(*value).toLongLong(&isNumber);
    return isNumber ? std::optional(size) : std::nullopt;
}

} // namespace quillary
