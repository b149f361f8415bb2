#include "media/headers/WaveHeader.h"

#include <algorithm>

namespace quillary::media {

namespace {

constexpr int linearPcm = 1;
constexpr int floatingPoint = 3;
constexpr int extensible = 0xFFFE;

constexpr std::uint32_t sizeElsewhere = 0xFFFFFFFF; // in "ds64", or not known when the header was written

} // namespace

std::optional<WaveHeader> waveHeader(const HeaderFile& file) {
    if (!(file.startsWith("RIFF") || file.startsWith("RF64") || file.startsWith("BW64")) || !file.holds(8, "WAVE"))
        return {};
    WaveHeader header;
    std::uint64_t dataSize64 = 0;
    int format = 0;
    std::uint64_t at = 12;
    for (int chunk = 0; chunk < chunksAtMost && at + 8 <= file.size(); ++chunk) {
        const std::uint64_t body = at + 8;
        std::uint64_t size = file.le32(at + 4);
        if (file.holds(at, "ds64")) dataSize64 = file.le64(body + 8);
        if (file.holds(at, "fmt ")) {
            format = file.le16(body);
            header.channels = file.le16(body + 2);
            header.rate = static_cast<int>(std::min<std::uint32_t>(file.le32(body + 4), 1 << 30));
            header.frameBytes = file.le16(body + 12);
            header.bits = file.le16(body + 14);
            if (format == extensible && size >= 26) format = file.le16(body + 24);
        }
        if (file.holds(at, "data")) {
            if (size == sizeElsewhere && dataSize64 > 0) size = dataSize64;
            const std::uint64_t rest = file.size() - body;
            header.offset = body;
            // A recorder that was cut off leaves no size behind.
            header.bytes = size == 0 ? rest : std::min(size, rest);
            header.integers = format == linearPcm;
            const bool linear = header.integers || format == floatingPoint;
            const bool sensible = header.channels > 0 && header.rate > 0 && header.bits > 0 &&
                                  header.frameBytes == header.channels * ((header.bits + 7) / 8);
            if (!linear || !sensible) return {};
            return header;
        }
        at = body + size + (size & 1);
    }
    return {};
}

} // namespace quillary::media
