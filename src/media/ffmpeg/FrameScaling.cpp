#include "media/ffmpeg/FrameScaling.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <span>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

namespace quillary::media {

FrameScaling::~FrameScaling() {
    sws_freeContext(m_context);
}

bool FrameScaling::scale(const AVFrame& from, int longestSide, Frame& into) {
    const AVRational aspect = from.sample_aspect_ratio;
    const double pixelAspect = aspect.num > 0 && aspect.den > 0 ? std::clamp(av_q2d(aspect), 0.1, 10.0) : 1;
    const double width = from.width * pixelAspect;
    const double shrink = std::min(1.0, longestSide / std::max(width, static_cast<double>(from.height)));
    into.width = std::max(1, static_cast<int>(std::lround(width * shrink)));
    into.height = std::max(1, static_cast<int>(std::lround(from.height * shrink)));

    const auto reduced = m_halving.reduced(from, into.width, into.height);
    m_context = sws_getCachedContext(m_context, reduced.width, reduced.height, static_cast<AVPixelFormat>(from.format),
                                     into.width, into.height, AV_PIX_FMT_BGRA, SWS_AREA, nullptr, nullptr, nullptr);
    if (!m_context) return false;
    const int matrix = from.colorspace == AVCOL_SPC_UNSPECIFIED ? (from.height > 576 ? SWS_CS_ITU709 : SWS_CS_ITU601)
                                                                : static_cast<int>(from.colorspace);
    const int* const coefficients = sws_getCoefficients(matrix);
    constexpr int one = 1 << 16;
    sws_setColorspaceDetails(m_context, coefficients, from.color_range == AVCOL_RANGE_JPEG, coefficients, 1, 0, one,
                             one);

    // Vector code writes some bytes beyond a row.
    constexpr std::size_t margin = 64;
    const std::size_t stride = static_cast<std::size_t>(into.width) * 4;
    const std::size_t size = stride * static_cast<std::size_t>(into.height);
    into.pixels = std::make_unique_for_overwrite<std::uint8_t[]>(size + margin);
    std::uint8_t* const planes[4] = {into.pixels.get()};
    const int strides[4] = {static_cast<int>(stride)};
    return sws_scale(m_context, reduced.data.data(), reduced.stride.data(), 0, reduced.height, planes, strides) ==
           into.height;
}

namespace {

/// Side data of a track, which newer libraries keep with its codec's parameters.
std::span<const std::uint8_t> sideData(const AVStream& track, AVPacketSideDataType type) {
#if LIBAVCODEC_VERSION_INT >= AV_VERSION_INT(60, 31, 100)
    const AVCodecParameters& codec = *track.codecpar;
    const auto* const data = av_packet_side_data_get(codec.coded_side_data, codec.nb_coded_side_data, type);
    return data ? std::span<const std::uint8_t>(data->data, data->size) : std::span<const std::uint8_t>();
#else
    std::size_t size = 0;
    const std::uint8_t* const data = av_stream_get_side_data(&track, type, &size);
    return {data, data ? size : 0};
#endif
}

} // namespace

void readTurn(const AVStream& track, int (&turn)[4]) {
    std::array<std::int32_t, 9> matrix{};
    const auto data = sideData(track, AV_PKT_DATA_DISPLAYMATRIX);
    if (data.size() < sizeof matrix) return;
    std::memcpy(matrix.data(), data.data(), sizeof matrix);
    constexpr std::int32_t one = 1 << 16;
    constexpr std::int32_t tolerance = one / 100;
    const std::array<std::int32_t, 4> entries{matrix[0], matrix[1], matrix[3], matrix[4]};
    std::array<int, 4> unit{};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (std::abs(std::int64_t(entries[i])) > tolerance) unit[i] = entries[i] > 0 ? 1 : -1;
    }
    const bool upright = unit[0] != 0 && unit[3] != 0 && unit[1] == 0 && unit[2] == 0;
    const bool onItsSide = unit[0] == 0 && unit[3] == 0 && unit[1] != 0 && unit[2] != 0;
    if (upright || onItsSide) std::ranges::copy(unit, turn);
}

} // namespace quillary::media
