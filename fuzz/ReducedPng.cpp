// Feeds pictures to the quick reader of PNG for thumbnails: bytes as they come, and, so that not every change ends at a
// checksum, pictures of a well-formed file whose header, palette, orientation and rows come from the bytes.
#include "fuzz/Promise.h"
#include "imaging/png/Chunk.h"
#include "imaging/reduced/ReducedPicture.h"

#include <algorithm>
#include <libdeflate.h>

using namespace quillary;

namespace {

using Bytes = std::span<const std::uint8_t>;

Bytes taken(Bytes& from, std::size_t most) {
    const Bytes piece = from.first(std::min(most, from.size()));
    from = from.subspan(piece.size());
    return piece;
}

QByteArray deflated(Bytes rows) {
    static libdeflate_compressor* const compressor = libdeflate_alloc_compressor(1);
    QByteArray stream(static_cast<qsizetype>(libdeflate_zlib_compress_bound(compressor, rows.size())), 0);
    stream.resize(static_cast<qsizetype>(
        libdeflate_zlib_compress(compressor, rows.data(), rows.size(), stream.data(), std::size_t(stream.size()))));
    return stream;
}

/// Rows that are cut short are filled up with what is there, so that most headers fit their rows.
QByteArray wellFormed(Bytes bytes) {
    const Bytes plan = taken(bytes, 8);
    if (plan.size() < 8) return {};
    static constexpr int colours[] = {0, 2, 3, 4, 6};
    static constexpr int samples[] = {1, 3, 1, 2, 4};
    const std::size_t kind = plan[0] % std::size(colours);
    const int width = 1 + plan[1];
    const int height = 1 + plan[2] % 64;
    QByteArray header(13, 0);
    header[3] = static_cast<char>(width & 0xff);
    header[2] = static_cast<char>(width >> 8);
    header[7] = static_cast<char>(height);
    header[8] = 8;
    header[9] = static_cast<char>(colours[kind]);
    QByteArray file("\x89PNG\r\n\x1a\n");
    file += png::chunk("IHDR", header);
    if (colours[kind] == 3) file += png::chunk("PLTE", taken(bytes, plan[3]));
    if (plan[4] & 1) file += png::chunk("tRNS", taken(bytes, plan[4]));
    if (plan[5] & 1) file += png::chunk("eXIf", taken(bytes, plan[5]));
    if (plan[6] & 1) file += png::chunk("iCCP", QByteArray("p\0\0", 3) + deflated(taken(bytes, plan[6])));
    std::vector<std::uint8_t> rows(static_cast<std::size_t>(height) * (1 + std::size_t(width) * samples[kind]));
    for (std::size_t i = 0; i < rows.size() && !bytes.empty(); ++i) rows[i] = bytes[i % bytes.size()];
    if (plan[7] & 1)
        for (std::size_t i = 0; i < rows.size(); i += rows.size() / height) rows[i] %= 5;
    file += png::chunk("IDAT", deflated(rows));
    return file + png::chunk("IEND");
}

void read(Bytes file) {
    for (const int side : {1, 30}) {
        const auto picture = reduced::readPng(file, side);
        if (!picture) continue;
        fuzz::require(!picture->image.isNull(), "a picture that is read has pixels");
        const auto longer = [](QSize size) { return std::max(size.width(), size.height()); };
        fuzz::require(longer(picture->image.size()) >= std::min(side, longer(picture->original)),
                      "and as many as were wanted, or all");
        fuzz::require(picture->orientation >= 1 && picture->orientation <= 8, "orientations are those of EXIF");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, size);
    read(bytes);
    const QByteArray file = wellFormed(bytes);
    read({reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())});
    return 0;
}
