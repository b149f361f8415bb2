#include "imaging/TgaReader.h"

#include "imaging/RasterSize.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

namespace quillary::TgaReader {

namespace {

using Bytes = std::span<const std::uint8_t>;
using Colour = std::array<std::uint8_t, 4>;

enum class Kind { palette = 1, colour = 2, grey = 3 };

struct Header {
    Kind kind;
    bool coded; ///< in runs
    std::size_t begin; ///< of the palette, or of the pixels where there is none
    std::size_t firstOfPalette, sizeOfPalette;
    int paletteBits;
    int width, height;
    int bits; ///< of a pixel
    int alphaBits;
    bool fromRight, fromTop;
};

constexpr std::size_t headerSize = 18;

std::uint8_t widened(unsigned fiveBits) {
    return static_cast<std::uint8_t>(fiveBits << 3 | fiveBits >> 2);
}

/// A colour as the file stores it: blue first.
Colour colourOf(const std::uint8_t* from, int bits, bool alpha) {
    if (bits > 16) return {from[2], from[1], from[0], bits == 32 && alpha ? from[3] : std::uint8_t(255)};
    const unsigned value = qFromLittleEndian<quint16>(from);
    const bool opaque = !alpha || bits == 15 || (value & 0x8000) != 0;
    return {widened(value >> 10 & 31), widened(value >> 5 & 31), widened(value & 31),
            opaque ? std::uint8_t(255) : std::uint8_t(0)};
}

bool isColourSize(int bits) {
    return bits == 15 || bits == 16 || bits == 24 || bits == 32;
}

std::size_t bytesOf(int bits) {
    return static_cast<std::size_t>(bits + 7) / 8;
}

bool isKnown(const Header& header) {
    switch (header.kind) {
    case Kind::palette:
        return header.sizeOfPalette > 0 && isColourSize(header.paletteBits) && (header.bits == 8 || header.bits == 16);
    case Kind::colour:
        return isColourSize(header.bits);
    case Kind::grey:
        return header.bits == 8 || header.bits == 16;
    }
    return false;
}

std::optional<Header> headerOf(Bytes file) {
    if (file.size() < headerSize) return {};
    const auto word = [&](std::size_t at) { return qFromLittleEndian<quint16>(file.data() + at); };
    constexpr int codedBit = 8;
    const int kind = file[2] & ~codedBit;
    if (file[1] > 1 || kind < 1 || kind > 3) return {};
    const Header header{.kind = static_cast<Kind>(kind),
                        .coded = (file[2] & codedBit) != 0,
                        .begin = headerSize + file[0],
                        .firstOfPalette = word(3),
                        .sizeOfPalette = file[1] == 1 ? word(5) : std::size_t(0),
                        .paletteBits = file[7],
                        .width = word(12),
                        .height = word(14),
                        .bits = file[16],
                        .alphaBits = file[17] & 15,
                        .fromRight = (file[17] & 16) != 0,
                        .fromTop = (file[17] & 32) != 0};
    return isKnown(header) && isDrawable(header.width, header.height) ? std::optional(header) : std::nullopt;
}

/// The stored pixels in their order, taken out of their runs; empty when the file ends before them.
std::vector<std::uint8_t> storedPixels(Bytes from, const Header& header) {
    const std::size_t size = bytesOf(header.bits);
    const std::size_t all = size * static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.height);
    // A run makes at most 128 pixels of two bytes or more.
    if (from.size() < (header.coded ? all / 128 / size : all)) return {};
    if (!header.coded) return {from.begin(), from.begin() + static_cast<std::ptrdiff_t>(all)};
    std::vector<std::uint8_t> pixels;
    pixels.reserve(all);
    while (pixels.size() < all) {
        if (from.empty()) return {};
        const std::size_t count = std::min<std::size_t>((from[0] & 127U) + 1, (all - pixels.size()) / size);
        const bool run = (from[0] & 128) != 0;
        const std::size_t stored = size * (run ? 1 : count);
        if (from.size() < 1 + stored) return {};
        const Bytes pixel = from.subspan(1, stored);
        for (std::size_t i = 0; i < (run ? count : 1); ++i) pixels.insert(pixels.end(), pixel.begin(), pixel.end());
        from = from.subspan(1 + stored);
    }
    return pixels;
}

/// What a stored pixel of the header's kind looks like.
class Colours {
public:
    Colours(const Header& header, Bytes palette) : m_header(header) {
        const std::size_t size = bytesOf(header.paletteBits);
        for (std::size_t i = 0; i < header.sizeOfPalette && size > 0; ++i)
            m_palette.push_back(colourOf(palette.data() + i * size, header.paletteBits, header.paletteBits == 32));
    }

    Colour operator()(const std::uint8_t* pixel) const {
        const bool wide = m_header.bits == 16;
        switch (m_header.kind) {
        case Kind::colour:
            return colourOf(pixel, m_header.bits, m_header.alphaBits > 0);
        case Kind::grey:
            return {pixel[0], pixel[0], pixel[0], wide ? pixel[1] : std::uint8_t(255)};
        case Kind::palette:
            break;
        }
        const std::size_t index = wide ? qFromLittleEndian<quint16>(pixel) : std::size_t(pixel[0]);
        const std::size_t place = index - m_header.firstOfPalette;
        return place < m_palette.size() ? m_palette[place] : Colour{0, 0, 0, 255};
    }

private:
    const Header& m_header;
    std::vector<Colour> m_palette;
};

} // namespace

bool hasMark(const QByteArray& file) {
    return file.endsWith(QByteArrayView("TRUEVISION-XFILE.\0", 18));
}

QImage read(const QByteArray& file) {
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size()));
    const auto header = headerOf(bytes);
    if (!header) return {};
    const std::size_t palette = header->sizeOfPalette * bytesOf(header->paletteBits);
    if (bytes.size() < header->begin + palette) return {};
    const std::vector<std::uint8_t> pixels = storedPixels(bytes.subspan(header->begin + palette), *header);
    QImage image(header->width, header->height, QImage::Format_RGBA8888);
    if (pixels.empty() || image.isNull()) return {};

    const Colours colours(*header, bytes.subspan(header->begin, palette));
    const std::size_t size = bytesOf(header->bits);
    std::uint8_t most = 0;
    std::uint8_t least = 255;
    const std::uint8_t* pixel = pixels.data();
    for (int row = 0; row < header->height; ++row) {
        std::uint8_t* const line = image.scanLine(header->fromTop ? row : header->height - 1 - row);
        for (int column = 0; column < header->width; ++column, pixel += size) {
            const Colour colour = colours(pixel);
            const int x = header->fromRight ? header->width - 1 - column : column;
            std::memcpy(line + std::ptrdiff_t(x) * 4, colour.data(), colour.size());
            most = std::max(most, colour[3]);
            least = std::min(least, colour[3]);
        }
    }
    // Many programs leave the alpha of an opaque picture at nothing.
    if (most == 0 || least == 255) image.reinterpretAsFormat(QImage::Format_RGBX8888);
    if (most == 0)
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) image.scanLine(y)[std::ptrdiff_t(x) * 4 + 3] = 255;
    return image;
}

} // namespace quillary::TgaReader
