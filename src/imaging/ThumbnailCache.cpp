#include "imaging/ThumbnailCache.h"

#include "base/FileUrl.h"
#include "imaging/PngEncoder.h"
#include "imaging/png/Chunk.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFile.h"
#include "platform/PendingFile.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QImageReader>
#include <algorithm>
#include <utility>
#include <vector>

namespace quillary {

namespace fs = std::filesystem;

namespace {

constexpr const char* uriKey = "Thumb::URI";
constexpr const char* modifiedKey = "Thumb::MTime";
constexpr const char* sizeKey = "Thumb::Size";
constexpr const char* widthKey = "Thumb::Image::Width";
constexpr const char* heightKey = "Thumb::Image::Height";
constexpr const char* softwareKey = "Software";
/// The standard knows whole seconds only.
constexpr const char* preciseKey = "X-Quillary::MTime";
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

using Texts = std::vector<std::pair<const char*, QByteArray>>;

std::int64_t seconds(const ThumbnailCache::FileState& state) {
    const std::int64_t whole = state.modified / nanosecondsPerSecond;
    return state.modified % nanosecondsPerSecond < 0 ? whole - 1 : whole;
}

fs::path nameFor(const fs::path& file) {
    const QByteArray hash = QCryptographicHash::hash(fileUrl(file), QCryptographicHash::Md5).toHex();
    return (hash + ".png").toStdString();
}

/// The texts go before the pixels, so that a reader knows them without decoding.
QByteArray withTexts(QByteArray png, const Texts& texts) {
    constexpr qsizetype headerEnd = 33;
    QByteArray chunks;
    for (const auto& [key, text] : texts) chunks += png::chunk("tEXt", QByteArray(key) + '\0' + text);
    return png.insert(headerEnd, chunks);
}

Texts describing(const fs::path& file, const ThumbnailCache::FileState& state) {
    return {
        {uriKey, fileUrl(file)},
        {modifiedKey, QByteArray::number(qint64(seconds(state)))},
        {sizeKey, QByteArray::number(qulonglong(state.size))},
        {preciseKey, QByteArray::number(qint64(state.modified))},
        {softwareKey, "Quillary"},
    };
}

/// The entry's picture if it is whole, small enough and of that file. The reader tells texts with a colon in their key
/// only once the pixels are read.
QImage matching(const fs::path& entry, int most, const fs::path& file, const ThumbnailCache::FileState& state) {
    QFile from;
    if (!platform::openForReading(from, entry) || png::isDamaged(from) || !from.seek(0)) return {};
    QImageReader reader(&from, "png");
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > most || size.height() > most) return {};
    QImage picture = reader.read();
    const auto says = [&](const char* key, const QByteArray& expected) {
        return picture.text(QString::fromLatin1(key)).toLatin1() == expected;
    };
    const bool same = says(uriKey, fileUrl(file)) && says(modifiedKey, QByteArray::number(qint64(seconds(state)))) &&
                      (says(sizeKey, {}) || says(sizeKey, QByteArray::number(qulonglong(state.size)))) &&
                      (says(preciseKey, {}) || says(preciseKey, QByteArray::number(qint64(state.modified))));
    return same ? picture : QImage();
}

/// For the owner alone, as the standard wants it.
bool make(const fs::path& folder) {
    std::error_code failed;
    if (fs::is_directory(folder, failed)) return true;
    if (!platform::createFolders(folder)) return false;
    fs::permissions(folder, fs::perms::owner_all, failed);
    return true;
}

void place(const QByteArray& bytes, const fs::path& folder, const fs::path& name) {
    if (!make(folder.parent_path()) || !make(folder)) return;
    auto pending = platform::PendingFile::holding(folder, bytes);
    if (!pending || !pending->replace(folder / name)) return;
    std::error_code ignored;
    fs::permissions(folder / name, fs::perms::owner_read | fs::perms::owner_write, ignored);
}

} // namespace

std::optional<ThumbnailCache::FileState> ThumbnailCache::stateOf(const fs::path& file) {
    const auto stamp = platform::fileStamp(file);
    if (!stamp) return {};
    return FileState{stamp->modified.time_since_epoch().count(), stamp->size};
}

fs::path ThumbnailCache::folderOf(Size size) const {
    return m_folder / (size == Size::large ? "large" : "x-large");
}

fs::path ThumbnailCache::failureFolder() const {
    return m_folder / "fail" / ("quillary-" + QCoreApplication::applicationVersion().toStdString());
}

bool ThumbnailCache::keeps(const fs::path& file) const {
    const auto& own = m_folder.native();
    const auto& path = file.native();
    return m_folder.is_absolute() && file.is_absolute() &&
           !(path.starts_with(own) && path.substr(own.size()).starts_with('/'));
}

std::optional<ThumbnailCache::Entry> ThumbnailCache::read(const fs::path& file, const FileState& state,
                                                          Size size) const {
    if (!keeps(file)) return {};
    QImage picture = matching(folderOf(size) / nameFor(file), static_cast<int>(size), file, state);
    if (picture.isNull()) return {};
    const QSize original(picture.text(QString::fromLatin1(widthKey)).toInt(),
                         picture.text(QString::fromLatin1(heightKey)).toInt());
    return Entry{std::move(picture), original};
}

void ThumbnailCache::write(const fs::path& file, const FileState& state, Size size, const Entry& entry) const {
    const int most = static_cast<int>(size);
    if (!keeps(file) || entry.picture.width() > most || entry.picture.height() > most) return;
    const QByteArray png = pngData(entry.picture);
    if (png.isEmpty()) return;
    Texts texts = describing(file, state);
    if (!entry.original.isEmpty()) {
        texts.emplace_back(widthKey, QByteArray::number(entry.original.width()));
        texts.emplace_back(heightKey, QByteArray::number(entry.original.height()));
    }
    place(withTexts(png, texts), folderOf(size), nameFor(file));
}

bool ThumbnailCache::hasFailed(const fs::path& file, const FileState& state) const {
    constexpr int anySize = 512;
    return keeps(file) && !matching(failureFolder() / nameFor(file), anySize, file, state).isNull();
}

void ThumbnailCache::writeFailure(const fs::path& file, const FileState& state) const {
    if (!keeps(file)) return;
    QImage dot(1, 1, QImage::Format_RGBA8888);
    dot.fill(Qt::transparent);
    place(withTexts(pngData(dot), describing(file, state)), failureFolder(), nameFor(file));
}

} // namespace quillary
