#include "media/headers/BigEndianHeaders.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace quillary::media {

namespace {

/// An 80-bit extended number.
double extended(const HeaderFile& file, std::uint64_t at) {
    const int exponent = (file.be16(at) & 0x7FFF) - 16383 - 63;
    return std::ldexp(static_cast<double>(file.be64(at + 2)), exponent);
}

constexpr std::array<std::string_view, 9> uncoded{"NONE", "twos", "sowt", "raw ", "fl32",
                                                  "FL32", "fl64", "FL64", "in24"};

} // namespace

std::optional<double> aiffSeconds(const HeaderFile& file) {
    const bool compressible = file.holds(8, "AIFC");
    if (!file.startsWith("FORM") || !(compressible || file.holds(8, "AIFF"))) return {};
    double rate = 0;
    std::uint64_t frames = 0;
    std::uint64_t frameBytes = 0;
    std::uint64_t at = 12;
    for (int chunk = 0; chunk < chunksAtMost && at + 8 <= file.size(); ++chunk) {
        const std::uint64_t body = at + 8;
        const std::uint64_t size = file.be32(at + 4);
        if (file.holds(at, "COMM")) {
            const auto isOfKind = [&](std::string_view kind) { return file.holds(body + 18, kind); };
            if (compressible && std::ranges::none_of(uncoded, isOfKind)) return {};
            frames = file.be32(body + 2);
            frameBytes = std::uint64_t(file.be16(body)) * ((file.be16(body + 6) + 7u) / 8u);
            rate = extended(file, body + 8);
        }
        if (file.holds(at, "SSND")) {
            if (frameBytes == 0 || !(rate >= 1) || !std::isfinite(rate)) return {};
            const std::uint64_t unused = 8 + std::uint64_t(file.be32(body));
            const std::uint64_t rest = file.size() > body + unused ? file.size() - body - unused : 0;
            return static_cast<double>(std::min(frames, rest / frameBytes)) / rate;
        }
        at = body + size + (size & 1);
    }
    return {};
}

} // namespace quillary::media
