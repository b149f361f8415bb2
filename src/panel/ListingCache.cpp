#include "panel/ListingCache.h"

#include "platform/OpenFile.h"
#include "platform/PendingFile.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>

namespace quillary {

namespace fs = std::filesystem;

namespace {

constexpr quint64 magic = 0x5155'4C49'5354'0001; // the last digits are the version of what follows
constexpr qint64 largestFile = 64 << 20;         ///< bytes; more is none of ours

QByteArray bytesOf(const fs::path& path) {
    return QByteArray::fromStdString(path.native());
}

QDataStream& operator<<(QDataStream& out, const std::optional<QString>& text) {
    return out << text.has_value() << text.value_or(QString());
}

QDataStream& operator>>(QDataStream& in, std::optional<QString>& text) {
    bool present = false;
    QString value;
    in >> present >> value;
    if (present) text = std::move(value);
    return in;
}

/// As many as the file says, for as long as it holds them: the toolkit makes room for all that a damaged one claims.
template <typename One>
void readEach(QDataStream& in, const One& one) {
    quint32 count = 0;
    in >> count;
    for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) one();
}

QStringList readTexts(QDataStream& in) {
    QStringList texts;
    readEach(in, [&] { in >> texts.emplace_back(); });
    return texts;
}

QHash<QString, int> readCounts(QDataStream& in) {
    QHash<QString, int> counts;
    readEach(in, [&] {
        QString path;
        in >> path >> counts[path];
    });
    return counts;
}

LibraryItems readItems(QDataStream& in, const fs::path& shelf) {
    LibraryItems items;
    readEach(in, [&] {
        QByteArray name;
        qint64 modified = 0;
        std::optional<QString> collection;
        std::optional<QString> format;
        in >> name >> modified >> collection >> format;
        items.push_back({shelf / name.toStdString(), FileDate(std::chrono::nanoseconds(modified)),
                         std::move(collection), std::move(format)});
    });
    return items;
}

} // namespace

ListingCache::ListingCache(const fs::path& cacheFolder)
    : m_folder(cacheFolder.empty() ? fs::path() : cacheFolder / "quillary" / "shelves") {}

fs::path ListingCache::fileFor(const fs::path& shelf) const {
    return m_folder / QCryptographicHash::hash(bytesOf(shelf), QCryptographicHash::Md5).toHex().toStdString();
}

std::optional<ShelfListing::Contents> ListingCache::read(const fs::path& shelf) const {
    QFile file;
    if (m_folder.empty() || !platform::openForReading(file, fileFor(shelf)) || file.size() > largestFile) return {};
    QDataStream in(file.readAll());
    in.setVersion(QDataStream::Qt_6_4);
    quint64 begin = 0;
    QByteArray of;
    in >> begin >> of;
    if (begin != magic || of != bytesOf(shelf)) return {};
    ShelfListing::Contents contents{.whole = false};
    quint64 count = 0;
    in >> count >> contents.unfiled;
    contents.count = count;
    contents.counts = readCounts(in);
    contents.collections = readTexts(in);
    contents.collectionFolders = readTexts(in);
    contents.formats = readTexts(in);
    contents.items = SearchableItems(std::make_shared<const LibraryItems>(readItems(in, shelf)));
    if (in.status() != QDataStream::Ok || !in.atEnd()) return {};
    return contents;
}

void ListingCache::write(const fs::path& shelf, const ShelfListing::Contents& contents) const {
    if (!m_folder.is_absolute()) return;
    const LibraryItems& items = contents.items.items();
    if (items.size() < worthwhile) {
        std::error_code ignored;
        fs::remove(fileFor(shelf), ignored);
        return;
    }
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_4);
    out << magic << bytesOf(shelf) << quint64(contents.count) << contents.unfiled << contents.counts
        << contents.collections << contents.collectionFolders << contents.formats << quint32(mostItems);
    for (const LibraryItem& item : std::span(items).first(mostItems))
        out << bytesOf(item.url.path().lexically_relative(shelf)) << qint64(item.modified.time_since_epoch().count())
            << item.collection << item.sourceFormat;
    if (!platform::createFolders(m_folder)) return;
    if (auto pending = platform::PendingFile::holding(m_folder, bytes))
        static_cast<void>(pending->replace(fileFor(shelf)));
}

} // namespace quillary
