#include "imaging/png/PixelMatcher.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillary::png {

namespace {

constexpr int hashBits = 13;
constexpr std::size_t chainSize = 16384;
constexpr int longestChain = 6;
/// A match this long is taken without looking further, and only its ends are remembered.
constexpr std::size_t longEnough = 64;
/// One symbol's worth: what goes on after it is often a run, which is told in fewer bits.
constexpr std::size_t longestFarMatch = 258;
/// The last positions are not searched, so that a word can be read everywhere.
constexpr std::size_t margin = 16;
constexpr std::uint32_t nowhere = 0;

template <typename T>
T load(const std::uint8_t* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <std::size_t Pixel>
std::uint32_t pixelAt(const std::uint8_t* at) {
    const auto value = load<std::uint32_t>(at);
    if constexpr (Pixel == 4 || std::endian::native == std::endian::big) return value;
    return value & 0xffffff;
}

std::uint32_t hashOfPixel(std::uint32_t pixel) {
    return pixel * 0x9e3779b1U >> (32 - hashBits);
}

/// Of the next twelve bytes: three or four pixels.
std::uint32_t hashOfGroup(const std::uint8_t* at) {
    const std::uint64_t mixed = load<std::uint64_t>(at) * 0x9e3779b97f4a7c15U + load<std::uint32_t>(at + 8);
    return static_cast<std::uint32_t>(mixed * 0xd6e8feb86659fd93U >> (64 - hashBits));
}

std::size_t commonLength(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* end) {
    const std::uint8_t* const start = b;
    while (static_cast<std::size_t>(end - b) >= sizeof(std::uint64_t)) {
        const auto difference = load<std::uint64_t>(a) ^ load<std::uint64_t>(b);
        if (difference != 0) {
            const int zeros = std::endian::native == std::endian::little ? std::countr_zero(difference)
                                                                         : std::countl_zero(difference);
            return static_cast<std::size_t>(b - start) + static_cast<std::size_t>(zeros) / 8;
        }
        a += sizeof(std::uint64_t);
        b += sizeof(std::uint64_t);
    }
    while (b < end && *a == *b) {
        ++a;
        ++b;
    }
    return static_cast<std::size_t>(b - start);
}

} // namespace

PixelMatcher::PixelMatcher()
    : m_heads(std::size_t(1) << hashBits), m_singles(std::size_t(1) << hashBits), m_previous(chainSize) {}

void PixelMatcher::write(const std::uint8_t* data, std::size_t rows, std::size_t width, std::size_t bytesPerPixel,
                         DeflateWriter& writer) {
    const std::size_t rowBytes = 1 + width * bytesPerPixel;
    if (bytesPerPixel == 4)
        write<4>(data, rows, rowBytes, writer);
    else
        write<3>(data, rows, rowBytes, writer);
}

template <std::size_t Pixel>
void PixelMatcher::write(const std::uint8_t* data, std::size_t rows, std::size_t rowBytes, DeflateWriter& writer) {
    std::ranges::fill(m_heads, nowhere);
    std::ranges::fill(m_singles, nowhere);
    const std::uint8_t* const end = data + rows * rowBytes;
    const std::uint8_t* rowEnd = data + rowBytes;
    const std::uint8_t* at = data + 1;

    const auto offset = [data](const std::uint8_t* p) { return static_cast<std::uint32_t>(p - data); };
    const auto link = [](std::uint32_t where) { return where / 2 % chainSize; };
    const auto remember = [&](const std::uint8_t* p) {
        const std::uint32_t where = offset(p);
        std::uint32_t& head = m_heads[hashOfGroup(p)];
        const std::uint32_t back = where - head;
        m_previous[link(where)] =
            head != nowhere && back < DeflateWriter::window ? static_cast<std::uint16_t>(back) : 0;
        head = where;
        m_singles[hashOfPixel(pixelAt<Pixel>(p))] = where;
    };

    const std::uint8_t* const searchEnd = rows * rowBytes > margin ? end - margin : data;
    while (at < searchEnd) {
        std::size_t bestLength = 0;
        std::size_t bestDistance = 0;
        const auto tryDistance = [&](std::size_t distance, const std::uint8_t* limit) {
            const std::size_t length = commonLength(at - distance, at, limit);
            if (length <= bestLength) return;
            bestLength = length;
            bestDistance = distance;
        };
        const std::uint8_t* const limit =
            at + std::min<std::size_t>(longestFarMatch, static_cast<std::size_t>(end - at));
        const std::uint32_t where = offset(at);
        const std::uint32_t pixel = pixelAt<Pixel>(at);
        if (where > Pixel && pixelAt<Pixel>(at - Pixel) == pixel) tryDistance(Pixel, end);
        if (bestLength < longEnough && where > rowBytes && rowBytes <= DeflateWriter::window &&
            pixelAt<Pixel>(at - rowBytes) == pixel)
            tryDistance(rowBytes, limit);
        if (bestLength < longEnough) {
            std::uint32_t candidate = m_heads[hashOfGroup(at)];
            for (int depth = 0; depth < longestChain && candidate != nowhere && at + bestLength < searchEnd; ++depth) {
                const std::uint32_t distance = where - candidate;
                if (distance > DeflateWriter::window) break;
                // Only what agrees where the best so far ends can be longer.
                if (load<std::uint32_t>(data + candidate + bestLength) == load<std::uint32_t>(at + bestLength))
                    tryDistance(distance, limit);
                if (bestLength >= longEnough) break;
                const std::uint16_t back = m_previous[link(candidate)];
                if (back == 0) break;
                candidate -= back;
            }
            if (bestLength < Pixel) {
                const std::uint32_t single = m_singles[hashOfPixel(pixel)];
                if (single != nowhere && where - single <= DeflateWriter::window) tryDistance(where - single, limit);
            }
        }
        // Whole pixels, unless the match goes over the row's end.
        if (at + bestLength < rowEnd) bestLength -= bestLength % Pixel;
        const bool worth = bestLength >= 2 * Pixel || (bestLength >= 4 && bestDistance <= 4096);
        remember(at);
        if (!worth) {
            at += Pixel;
        } else {
            writer.match(at, bestLength, bestDistance);
            const std::uint8_t* const stop = at + bestLength;
            const std::uint8_t* const known = std::min(std::min(stop, rowEnd), searchEnd);
            // Of a long match only its end, which leads over to what comes next.
            constexpr std::size_t tail = 4 * Pixel;
            const std::uint8_t* p = at + Pixel;
            if (bestLength > longEnough) p = stop <= rowEnd ? stop - tail : stop;
            for (; p < known; p += Pixel) remember(p);
            at = stop;
        }
        // To the next whole pixel: over the filter's number at a row's start, or out of a pixel that a match ended in.
        while (at >= rowEnd) {
            if (at == rowEnd) ++at;
            rowEnd += rowBytes;
        }
        const auto inRow = static_cast<std::size_t>(at - (rowEnd - rowBytes + 1));
        if (const std::size_t into = inRow % Pixel) at += Pixel - into;
        if (at == rowEnd) {
            ++at;
            rowEnd += rowBytes;
        }
    }
    writer.literalsTo(end);
}

void writeRuns(const std::uint8_t* data, std::size_t size, DeflateWriter& writer) {
    constexpr std::size_t step = 32;
    constexpr std::size_t shortest = 2 * step;
    const std::uint8_t* const end = data + size;
    const auto isZero = [](const std::uint8_t* p) {
        return (load<std::uint64_t>(p) | load<std::uint64_t>(p + 8) | load<std::uint64_t>(p + 16) |
                load<std::uint64_t>(p + 24)) == 0;
    };
    for (const std::uint8_t* at = data; static_cast<std::size_t>(end - at) >= step;) {
        if (!isZero(at)) {
            at += step;
            continue;
        }
        const std::uint8_t* const run = at;
        while (static_cast<std::size_t>(end - at) >= step && isZero(at)) at += step;
        while (at < end && *at == 0) ++at;
        // The first zero is the literal that the rest repeats.
        if (static_cast<std::size_t>(at - run) >= shortest)
            writer.match(run + 1, static_cast<std::size_t>(at - run - 1), 1);
    }
    writer.literalsTo(end);
}

} // namespace quillary::png
