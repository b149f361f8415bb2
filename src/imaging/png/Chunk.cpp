#include "imaging/png/Chunk.h"

#include <QtEndian>
#include <array>
#include <libdeflate.h>

namespace quillary::png {

namespace {

void append32(QByteArray& out, std::uint32_t value) {
    std::array<char, 4> bytes;
    qToBigEndian(value, bytes.data());
    out.append(bytes.data(), bytes.size());
}

} // namespace

QByteArray chunk(const char* type, std::span<const std::uint8_t> content, std::span<const std::uint8_t> rest) {
    constexpr std::size_t frame = 12;
    constexpr qsizetype lengthField = 4;
    const std::size_t length = content.size() + rest.size();
    QByteArray out;
    out.reserve(static_cast<qsizetype>(length + frame));
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

} // namespace quillary::png
