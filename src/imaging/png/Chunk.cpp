#include "imaging/png/Chunk.h"

#include <QIODevice>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <libdeflate.h>
#include <string_view>

namespace quillary::png {

namespace {

void append32(QByteArray& out, std::uint32_t value) {
    std::array<char, 4> bytes;
    qToBigEndian(value, bytes.data());
    out.append(bytes.data(), bytes.size());
}

} // namespace

QByteArray chunk(const char* type, std::span<const std::uint8_t> content, std::span<const std::uint8_t> rest) {
    constexpr qsizetype frame = 12;
    constexpr qsizetype lengthField = 4;
    const std::size_t length = content.size() + rest.size();
    QByteArray out;
    out.reserve(static_cast<qsizetype>(length) + frame);
    append32(out, static_cast<std::uint32_t>(length));
    out.append(type, 4);
    for (const auto part : {content, rest})
        out.append(reinterpret_cast<const char*>(part.data()), static_cast<qsizetype>(part.size()));
    append32(out,
             libdeflate_crc32(0, out.constData() + lengthField, static_cast<std::size_t>(out.size() - lengthField)));
    return out;
}

QByteArray chunk(const char* type, const QByteArray& content) {
    return chunk(type, std::span(reinterpret_cast<const std::uint8_t*>(content.constData()),
                                 static_cast<std::size_t>(content.size())));
}

bool isDamaged(QIODevice& from) {
    if (from.read(8) != "\x89PNG\r\n\x1a\n") return false;
    std::array<char, 1 << 16> piece;
    for (;;) {
        std::array<char, 8> head;
        if (from.read(head.data(), head.size()) != head.size()) return true;
        qint64 left = qFromBigEndian<quint32>(head.data());
        const std::string_view type(head.data() + 4, 4);
        if (type == "IEND") return false;
        if (left + 4 > from.size() - from.pos()) return true;
        if (type != "IDAT") {
            from.seek(from.pos() + left + 4);
            continue;
        }
        quint32 sum = libdeflate_crc32(0, type.data(), type.size());
        while (left > 0) {
            const qint64 read = from.read(piece.data(), std::min<qint64>(left, piece.size()));
            if (read <= 0) return true;
            sum = libdeflate_crc32(sum, piece.data(), static_cast<std::size_t>(read));
            left -= read;
        }
        std::array<char, 4> told;
        if (from.read(told.data(), told.size()) != told.size() || qFromBigEndian<quint32>(told.data()) != sum)
            return true;
    }
}

} // namespace quillary::png
