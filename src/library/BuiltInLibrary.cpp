#include "library/BuiltInLibrary.h"

#include "base/Text.h"
#include "base/Try.h"
#include "imaging/ImageIntake.h"
#include "imaging/PngEncoder.h"
#include "library/NaturalOrder.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFolder.h"
#include "platform/PendingFile.h"

#include <QCoreApplication>
#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

using platform::OpenFolder;

std::optional<FileDate> modifiedDate(const fs::path& file) {
    const auto folder = OpenFolder::open(file.parent_path());
    const auto status = folder ? folder->status(file.filename().c_str()) : std::nullopt;
    return status ? std::optional(status->modified) : std::nullopt;
}

LibraryItems iconsOf(const fs::path& folder, const QString& set) {
    LibraryItems icons;
    const auto opened = OpenFolder::open(folder);
    if (!opened) return icons;
    OpenFolder::Entries entries;
    opened->read(entries);
    for (const auto& entry : entries.list) {
        const char* name = entries.name(entry);
        const auto status = opened->status(name);
        if (!status || status->kind != OpenFolder::Kind::file || !Storage::isReadableImage(name)) continue;
        icons.push_back({folder / name, status->modified, set, {}, true});
    }
    std::ranges::sort(icons, naturallyBefore, [](const LibraryItem& icon) { return shown(icon.url.stem()); });
    return icons;
}

} // namespace

fs::path BuiltInLibrary::installedFolder() {
    const fs::path program = pathOf(QCoreApplication::applicationDirPath());
    for (const fs::path& folder : {program / "BuiltIn", program.parent_path() / "share" / "quillary" / "BuiltIn"}) {
        std::error_code missing;
        if (fs::is_directory(folder, missing)) return folder;
    }
    return {};
}

QStringList BuiltInLibrary::sets() const {
    QStringList names;
    const auto folder = OpenFolder::open(m_folder);
    if (!folder) return names;
    OpenFolder::Entries entries;
    folder->read(entries);
    for (const auto& entry : entries.list) {
        const auto status = folder->status(entries.name(entry));
        if (status && status->kind == OpenFolder::Kind::folder) names.append(QString::fromUtf8(entries.name(entry)));
    }
    names.sort();
    return names;
}

LibraryItems BuiltInLibrary::items() const {
    LibraryItems items;
    for (const QString& set : sets())
        std::ranges::move(iconsOf(m_folder / pathOf(set), set), std::back_inserter(items));
    return items;
}

std::expected<fs::path, StorageError> BuiltInLibrary::rasterizedPNG(const LibraryItem& item, Storage& storage,
                                                                    int longEdge) const {
    const fs::path icon = item.url;
    if (!Storage::isVector(icon)) return icon;
    const fs::path cache = TRY(storage.root()) / ".rasterized";
    const fs::path png = cache / (icon.stem().native() + ".png");
    const auto made = modifiedDate(png);
    if (made && *made >= modifiedDate(icon).value_or(distantPast)) return png;

    const auto image = ImageIntake::read(icon, longEdge);
    if (!image) return std::unexpected(StorageError::platform(image.error().description()));
    const QByteArray bytes = pngData(image->image);
    if (bytes.isEmpty()) return std::unexpected(StorageError::couldNotEncodePNG());
    const auto write = [&]() -> std::expected<void, platform::FileError> {
        TRY(platform::createFolders(cache));
        return TRY(platform::PendingFile::holding(cache, bytes)).replace(png);
    };
    if (const auto written = write(); !written)
        return std::unexpected(StorageError::couldNotWrite(png, written.error().description()));
    platform::clearQuarantine(png);
    return png;
}

} // namespace quillary
