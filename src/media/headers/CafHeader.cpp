#include "media/headers/BigEndianHeaders.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace quillary::media {

std::optional<double> cafSeconds(const HeaderFile& file) {
    if (!file.startsWith("caff")) return {};
    constexpr std::uint64_t toTheEnd = ~std::uint64_t(0);
    double rate = 0;
    std::uint64_t packetBytes = 0;
    std::uint64_t packetFrames = 0;
    std::optional<std::uint64_t> counted;
    std::optional<std::uint64_t> held;
    std::uint64_t at = 8;
    for (int chunk = 0; chunk < chunksAtMost && at + 12 <= file.size(); ++chunk) {
        const std::uint64_t body = at + 12;
        const std::uint64_t rest = file.size() - body;
        const std::uint64_t size = file.be64(at + 4);
        if (file.holds(at, "desc")) {
            rate = std::bit_cast<double>(file.be64(body));
            packetBytes = file.be32(body + 16);
            packetFrames = file.be32(body + 20);
        }
        // Before the samples stands a count of edits.
        if (file.holds(at, "data")) {
            const std::uint64_t there = size == toTheEnd ? rest : std::min(size, rest);
            if (size != toTheEnd && size > rest && packetBytes == 0) return {};
            held = there < 4 ? 0 : there - 4;
        }
        if (file.holds(at, "pakt")) counted = file.be64(body + 8);
        if (size > rest) break;
        at = body + size;
    }
    if (!(rate >= 1) || !std::isfinite(rate) || !held) return {};
    if (packetBytes > 0 && packetFrames > 0)
        return static_cast<double>(*held / packetBytes) * static_cast<double>(packetFrames) / rate;
    if (counted) return static_cast<double>(*counted) / rate;
    return {};
}

} // namespace quillary::media
