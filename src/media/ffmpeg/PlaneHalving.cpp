#include "media/ffmpeg/PlaneHalving.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <cstring>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
}

namespace quillary::media {

namespace {

/// A pair of neighbours is loaded as one number, so that a processor takes many pairs at once.
QUILLARY_MULTIVERSION void halveBytes(const std::uint8_t* upper, const std::uint8_t* lower, int pairs,
                                      std::uint8_t* out) {
    for (int i = 0; i < pairs; ++i) {
        std::uint16_t above = 0;
        std::uint16_t below = 0;
        std::memcpy(&above, upper + 2 * i, sizeof above);
        std::memcpy(&below, lower + 2 * i, sizeof below);
        const auto sum = static_cast<std::uint16_t>((above & 0xff) + (above >> 8) + (below & 0xff) + (below >> 8));
        out[i] = static_cast<std::uint8_t>((sum + 2) >> 2);
    }
}

QUILLARY_MULTIVERSION void halveWords(const std::uint16_t* upper, const std::uint16_t* lower, int pairs,
                                      std::uint16_t* out) {
    for (int i = 0; i < pairs; ++i) {
        const std::uint32_t sum = std::uint32_t(upper[2 * i]) + upper[2 * i + 1] + lower[2 * i] + lower[2 * i + 1];
        out[i] = static_cast<std::uint16_t>((sum + 2) >> 2);
    }
}

struct Plane {
    const std::uint8_t* data;
    int stride;
    int width;
    int height;
};

/// An odd edge is averaged with itself.
template <typename Sample, typename HalveRow>
void halve(const Plane& from, int stride, std::uint8_t* out, const HalveRow& halveRow) {
    const int pairs = from.width / 2;
    for (int y = 0; y < (from.height + 1) / 2; ++y) {
        const auto row = [&](int number) {
            return reinterpret_cast<const Sample*>(from.data + std::ptrdiff_t(number) * from.stride);
        };
        const Sample* const upper = row(2 * y);
        const Sample* const lower = row(std::min(2 * y + 1, from.height - 1));
        auto* const to = reinterpret_cast<Sample*>(out + std::ptrdiff_t(y) * stride);
        halveRow(upper, lower, pairs, to);
        if (from.width % 2 != 0)
            to[pairs] = static_cast<Sample>((upper[from.width - 1] + lower[from.width - 1] + 1) / 2);
    }
}

/// Bytes of a sample where each component has a plane of its own, else 0.
int sampleBytes(const AVPixFmtDescriptor* format) {
    constexpr std::uint64_t others = AV_PIX_FMT_FLAG_BE | AV_PIX_FMT_FLAG_PAL | AV_PIX_FMT_FLAG_BITSTREAM |
                                     AV_PIX_FMT_FLAG_HWACCEL | AV_PIX_FMT_FLAG_FLOAT;
    if (!format || (format->flags & others)) return 0;
    const int bytes = format->comp[0].depth > 8 ? 2 : 1;
    for (int c = 0; c < format->nb_components; ++c)
        if (format->comp[c].step != bytes || format->comp[c].plane >= 4) return 0;
    return bytes;
}

} // namespace

PlaneHalving::Planes PlaneHalving::reduced(const AVFrame& frame, int leastWidth, int leastHeight) {
    Planes planes{.width = frame.width, .height = frame.height};
    std::copy_n(frame.data, planes.data.size(), planes.data.begin());
    std::copy_n(frame.linesize, planes.stride.size(), planes.stride.begin());
    const AVPixFmtDescriptor* const format = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    const int bytes = sampleBytes(format);
    if (bytes == 0) return planes;
    for (std::size_t step = 0; planes.width / 2 >= leastWidth && planes.height / 2 >= leastHeight; ++step) {
        if (step == m_memory.size()) m_memory.emplace_back();
        planes = halved(planes, *format, bytes, m_memory[step]);
    }
    return planes;
}

PlaneHalving::Planes PlaneHalving::halved(const Planes& from, const AVPixFmtDescriptor& format, int bytes,
                                          std::vector<std::uint8_t>& memory) {
    constexpr int alignment = 64;
    Planes to{.width = (from.width + 1) / 2, .height = (from.height + 1) / 2};
    std::array<Plane, 4> sources{};
    std::array<std::size_t, 4> places{};
    std::size_t size = 0;
    for (std::size_t p = 0; p < sources.size() && from.data[p]; ++p) {
        const bool colour = p == 1 || p == 2;
        sources[p] = {from.data[p], from.stride[p], AV_CEIL_RSHIFT(from.width, colour ? format.log2_chroma_w : 0),
                      AV_CEIL_RSHIFT(from.height, colour ? format.log2_chroma_h : 0)};
        to.stride[p] = FFALIGN((sources[p].width + 1) / 2 * bytes, alignment);
        places[p] = size;
        size += static_cast<std::size_t>(to.stride[p]) * static_cast<std::size_t>((sources[p].height + 1) / 2);
    }
    if (memory.size() < size + alignment) memory.resize(size + alignment);
    for (std::size_t p = 0; p < sources.size() && from.data[p]; ++p) {
        std::uint8_t* const out = memory.data() + places[p];
        to.data[p] = out;
        if (bytes == 1)
            halve<std::uint8_t>(sources[p], to.stride[p], out, halveBytes);
        else
            halve<std::uint16_t>(sources[p], to.stride[p], out, halveWords);
    }
    return to;
}

} // namespace quillary::media
