#include "blocks/MediaWholeness.h"

#include "platform/FileAttributes.h"
#include "platform/OpenFile.h"

#include <QByteArray>
#include <QFile>
#include <QtEndian>
#include <array>
#include <charconv>

namespace quillary::MediaWholeness {

namespace fs = std::filesystem;

namespace {

constexpr int mostParts = 100'000; ///< of one file; what has more is taken to be whole

/// What `file` holds from `at` on; shorter at its end.
QByteArray bytesAt(QFile& file, std::int64_t at, qint64 count) {
    return file.seek(at) ? file.read(count) : QByteArray();
}

/// QuickTime and MPEG-4: a sequence of boxes, one of which tells what is in the others.
bool areBoxesCutShort(QFile& file) {
    const std::int64_t size = file.size();
    bool isDescribed = false;
    std::int64_t at = 0;
    for (int part = 0; at < size; ++part) {
        const QByteArray head = bytesAt(file, at, 16);
        if (part == mostParts) return false;
        if (head.size() < 8) return true;
        const QByteArrayView kind = QByteArrayView(head).sliced(4, 4);
        isDescribed = isDescribed || kind == "moov" || kind == "moof" || kind == "meta";
        std::uint64_t length = qFromBigEndian<quint32>(head.constData());
        if (length == 0) return !isDescribed; // It goes on to the end of the file.
        if (length == 1) {
            if (head.size() < 16) return true;
            length = qFromBigEndian<quint64>(head.constData() + 8);
        }
        if (length < 8) return false;
        if (length > static_cast<std::uint64_t>(size - at)) return true;
        at += static_cast<std::int64_t>(length);
    }
    return !isDescribed;
}

bool arePngChunksCutShort(QFile& file) {
    const std::int64_t size = file.size();
    std::int64_t at = 8;
    for (int part = 0; part < mostParts; ++part) {
        const QByteArray head = bytesAt(file, at, 8);
        const std::int64_t length = head.size() < 8 ? 0 : qFromBigEndian<quint32>(head.constData());
        if (head.size() < 8 || length > size - at - 12) return true;
        if (QByteArrayView(head).sliced(4) == "IEND") return false;
        at += length + 12;
    }
    return false;
}

/// A length that a writer of a stream never filled in tells nothing.
bool isShorterThan(std::uint32_t told, std::int64_t size) {
    return told != 0 && told != 0xFFFFFFFF && std::int64_t{told} + 8 > size;
}

bool isShorterThanItSays(const fs::path& path) {
    constexpr std::array boxes{"ftyp", "moov", "mdat", "wide", "free", "skip", "pnot"};
    QFile file;
    if (!platform::openForReading(file, path)) return false;
    const QByteArray head = bytesAt(file, 0, 12);
    if (head.size() < 12) return false;
    if (head.startsWith("RIFF")) return isShorterThan(qFromLittleEndian<quint32>(head.constData() + 4), file.size());
    if (head.startsWith("FORM")) return isShorterThan(qFromBigEndian<quint32>(head.constData() + 4), file.size());
    if (head.startsWith("\x89PNG\r\n")) return arePngChunksCutShort(file);
    for (const char* box : boxes)
        if (QByteArrayView(head).sliced(4, 4) == box) return areBoxesCutShort(file);
    return false;
}

} // namespace

bool isCutShort(const fs::path& file) {
    const auto size = platform::regularFileSize(file);
    const std::string told = platform::attribute(file, sizeAttribute).value_or(std::string());
    std::uintmax_t whole = 0;
    std::from_chars(told.data(), told.data() + told.size(), whole);
    return size && (*size < whole || isShorterThanItSays(file));
}

} // namespace quillary::MediaWholeness
