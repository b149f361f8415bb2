#include "media/headers/BigEndianHeaders.h"

#include <algorithm>
#include <array>
#include <bit>

namespace quillary::media {

namespace {

constexpr std::array<std::uint8_t, 256> crcTable = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        unsigned value = i;
        for (int bit = 0; bit < 8; ++bit) value = value & 0x80 ? value << 1 ^ 0x07 : value << 1;
        table[i] = static_cast<std::uint8_t>(value);
    }
    return table;
}();

std::uint8_t crc8(std::span<const std::uint8_t> bytes) {
    std::uint8_t crc = 0;
    for (const std::uint8_t byte : bytes) crc = crcTable[crc ^ byte];
    return crc;
}

struct Stream {
    std::uint32_t rate;
    std::uint32_t blockSize; ///< of every frame but the last when all are alike
    std::uint64_t frames;    ///< sample frames; 0 when unknown
};

struct Frame {
    std::uint64_t begin; ///< the number of its first sample
    std::uint64_t end;
};

/// The frame whose header the bytes begin with.
std::optional<Frame> frameAt(std::span<const std::uint8_t> bytes, const Stream& stream) {
    if (bytes.size() < 16 || bytes[0] != 0xFF || (bytes[1] & 0xFE) != 0xF8) return {};
    const bool numbersSamples = bytes[1] & 1;
    const unsigned sizeCode = bytes[2] >> 4;
    const unsigned rateCode = bytes[2] & 15;
    const bool reserved = bytes[3] & 1 || bytes[3] >> 4 > 10 || (bytes[3] >> 1 & 7) == 3;
    if (sizeCode == 0 || rateCode == 15 || reserved) return {};

    // The number is written like a character of UTF-8, only longer.
    const int ones = std::countl_one(bytes[4]);
    if (ones == 1 || ones > 7) return {};
    const int more = ones == 0 ? 0 : ones - 1;
    std::uint64_t number = ones == 0 ? bytes[4] : bytes[4] & (0x7F >> ones);
    std::size_t at = 5;
    for (int i = 0; i < more; ++i, ++at) {
        if ((bytes[at] & 0xC0) != 0x80) return {};
        number = number << 6 | (bytes[at] & 0x3F);
    }
    std::uint32_t size = 0;
    if (sizeCode == 1)
        size = 192;
    else if (sizeCode <= 5)
        size = 576u << (sizeCode - 2);
    else if (sizeCode >= 8)
        size = 256u << (sizeCode - 8);
    else if (sizeCode == 6)
        size = bytes[at++] + 1u;
    else {
        size = (unsigned(bytes[at]) << 8 | bytes[at + 1]) + 1u;
        at += 2;
    }
    at += rateCode == 12 ? 1 : rateCode == 13 || rateCode == 14 ? 2 : 0;
    if (at >= bytes.size() || crc8(bytes.first(at)) != bytes[at]) return {};
    const std::uint64_t begin = numbersSamples ? number : number * stream.blockSize;
    if (stream.frames > 0 && begin + size > stream.frames) return {};
    return Frame{begin, begin + size};
}

/// Looks backwards through the end of the file for the last frame.
std::optional<Frame> lastFrame(const HeaderFile& file, std::uint64_t firstFrame, const Stream& stream) {
    constexpr std::uint64_t reach = 4 * 1024 * 1024;
    constexpr std::uint64_t step = 64 * 1024;
    constexpr std::uint64_t overlap = 16;
    const std::uint64_t lowest = std::max(firstFrame, file.size() > reach ? file.size() - reach : 0);
    for (std::uint64_t end = file.size(); end > lowest;) {
        const std::uint64_t begin = end - lowest > step ? end - step : lowest;
        const auto bytes = file.bytes(begin, static_cast<std::size_t>(end - begin + overlap));
        for (std::size_t i = bytes.size(); i-- > 0;)
            if (bytes[i] == 0xFF)
                if (const auto found = frameAt(bytes.subspan(i), stream)) return found;
        end = begin;
    }
    return {};
}

} // namespace

std::optional<double> flacSeconds(const HeaderFile& file) {
    if (!file.startsWith("fLaC") || (file.u8(4) & 0x7F) != 0) return {};
    const std::uint64_t packed = file.be64(18);
    const Stream stream{static_cast<std::uint32_t>(packed >> 44), file.be16(8), packed & 0xFFFFFFFFF};
    if (stream.rate == 0) return {};
    std::uint64_t at = 4;
    bool last = false;
    for (int block = 0; block < chunksAtMost && !last && at + 4 <= file.size(); ++block) {
        last = file.u8(at) & 0x80;
        at += 4 + (file.be32(at) & 0xFFFFFF);
    }
    const auto end = lastFrame(file, at, stream);
    if (!end) return {};
    // Where the stream says that more should follow, the file was cut within this frame.
    const std::uint64_t frames = end->end < stream.frames ? end->begin : end->end;
    return static_cast<double>(frames) / stream.rate;
}

} // namespace quillary::media
