#include "imaging/PngEncoder.h"

#include "base/AllCores.h"
#include "imaging/png/BandEncoder.h"
#include "imaging/png/Chunk.h"

#include <QColorSpace>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <atomic>
#include <optional>
#include <span>
#include <vector>

namespace quillary {

namespace {

constexpr std::uint32_t adlerModulus = 65521;

/// The checksum of two pieces in a row, from the checksums of each.
std::uint32_t joinedChecksum(std::uint32_t first, std::uint32_t second, std::uint64_t secondSize) {
    const std::uint64_t size = secondSize % adlerModulus;
    const std::uint64_t firstLow = first & 0xffff;
    const std::uint64_t low = (firstLow + (second & 0xffff) + adlerModulus - 1) % adlerModulus;
    const std::uint64_t high = ((first >> 16) + (second >> 16) + size * (firstLow + adlerModulus - 1)) % adlerModulus;
    return static_cast<std::uint32_t>(high << 16 | low);
}

QByteArray headerChunk(const QImage& image) {
    constexpr std::uint8_t rgb = 2;
    constexpr std::uint8_t rgba = 6;
    std::array<std::uint8_t, 13> header{};
    qToBigEndian(static_cast<quint32>(image.width()), header.data());
    qToBigEndian(static_cast<quint32>(image.height()), header.data() + 4);
    header[8] = 8;
    header[9] = image.hasAlphaChannel() ? rgba : rgb;
    return png::chunk("IHDR", header);
}

/// Absent for sRGB, which a picture without a profile is taken to be.
std::optional<QByteArray> profileChunk(const QImage& image) {
    const QColorSpace space = image.colorSpace();
    if (!space.isValid() || space == QColorSpace(QColorSpace::SRgb)) return {};
    constexpr qsizetype sizeBefore = 4; // what compression puts before the stream
    const QByteArray content = QByteArray("ICC profile\0\0", 13) + qCompress(space.iccProfile()).mid(sizeBefore);
    return png::chunk("iCCP", content);
}

struct Band {
    int firstRow;
    int rows;
    QByteArray chunk = {};
    std::uint32_t checksum = 0;
    std::size_t size = 0;
};

/// Bands of about the same size, small enough to stay near the processor, large enough to lose nothing at their
/// borders.
std::vector<Band> bandsOf(const QImage& image) {
    constexpr qint64 wanted = qint64(3) << 19;
    const qint64 rowBytes = qint64(image.width()) * static_cast<qint64>(png::BandEncoder::bytesPerPixel(image)) + 1;
    const qint64 count = std::clamp<qint64>(rowBytes * image.height() / wanted, 1, image.height());
    std::vector<Band> bands;
    for (qint64 i = 0; i < count; ++i) {
        const int first = static_cast<int>(image.height() * i / count);
        bands.push_back({first, static_cast<int>(image.height() * (i + 1) / count) - first});
    }
    return bands;
}

void encodeBands(const QImage& image, std::span<Band> bands, const std::stop_token& stop) {
    std::atomic<std::size_t> next = 0;
    onAllCores(bands.size(), [&] {
        png::BandEncoder encoder(image);
        for (std::size_t i = next++; i < bands.size() && !stop.stop_requested(); i = next++) {
            constexpr std::array<std::uint8_t, 2> streamStart{0x78, 0x01};
            Band& band = bands[i];
            const bool last = i + 1 == bands.size();
            const png::BitWriter& out = encoder.encode(band.firstRow, band.rows, last);
            band.checksum = encoder.checksum();
            band.size = encoder.filteredSize();
            const std::span stream(out.data(), out.size());
            band.chunk = png::chunk(
                "IDAT", i == 0 ? std::span<const std::uint8_t>(streamStart) : std::span<const std::uint8_t>(), stream);
        }
    });
}

} // namespace

QByteArray pngData(const QImage& given, std::stop_token stop) {
    if (given.isNull()) return {};
    const QImage image =
        png::BandEncoder::isDirect(given.format())
            ? given
            : given.convertToFormat(given.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
    if (image.isNull()) return {};
    auto bands = bandsOf(image);
    encodeBands(image, bands, stop);
    if (stop.stop_requested()) return {};

    std::uint32_t checksum = 1;
    for (const Band& band : bands) checksum = joinedChecksum(checksum, band.checksum, band.size);
    std::array<std::uint8_t, 4> streamEnd;
    qToBigEndian(checksum, streamEnd.data());

    std::vector<QByteArray> parts{QByteArrayLiteral("\x89PNG\r\n\x1a\n"), headerChunk(image)};
    if (auto profile = profileChunk(image)) parts.push_back(*std::move(profile));
    for (Band& band : bands) parts.push_back(std::move(band.chunk));
    parts.push_back(png::chunk("IDAT", streamEnd));
    parts.push_back(png::chunk("IEND"));
    qsizetype size = 0;
    for (const QByteArray& part : parts) size += part.size();
    QByteArray file;
    file.reserve(size);
    for (QByteArray& part : parts) {
        file += part;
        part = {};
    }
    return file;
}

} // namespace quillary
