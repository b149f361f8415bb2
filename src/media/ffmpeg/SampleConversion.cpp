#include "media/ffmpeg/SampleConversion.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <bit>
#include <type_traits>

extern "C" {
#include <libavutil/frame.h>
}

namespace quillary::media {

namespace {

// Clipped, then rounded by an addition whose sum has no room for a fraction: both are steps that processors do on many
// samples at once.
inline std::int16_t sample(float value) {
    constexpr float roomless = 0x1.8p23f;
    const float scaled = std::min(std::max(value * 32768.0f, -32768.0f), 32767.0f);
    return static_cast<std::int16_t>(std::bit_cast<std::int32_t>(scaled + roomless));
}
inline std::int16_t sample(double value) {
    constexpr double roomless = 0x1.8p52;
    const double scaled = std::min(std::max(value * 32768.0, -32768.0), 32767.0);
    return static_cast<std::int16_t>(std::bit_cast<std::int64_t>(scaled + roomless));
}
inline std::int16_t sample(std::uint8_t value) {
    return static_cast<std::int16_t>((value - 0x80) * 256);
}
inline std::int16_t sample(std::int16_t value) {
    return value;
}
inline std::int16_t sample(std::int32_t value) {
    return static_cast<std::int16_t>(value >> 16);
}
inline std::int16_t sample(std::int64_t value) {
    return static_cast<std::int16_t>(value >> 48);
}

/// What most compressed sounds are decoded to.
QUILLARY_MULTIVERSION void interleave(const float* left, const float* right, std::size_t count, std::int16_t* out) {
    for (std::size_t i = 0; i < count; ++i) {
        out[2 * i] = sample(left[i]);
        out[2 * i + 1] = sample(right[i]);
    }
}

template <typename T>
void convert(const AVFrame& frame, std::size_t skipped, bool planar, std::int16_t* out) {
    const auto channels = static_cast<std::size_t>(frame.ch_layout.nb_channels);
    const std::size_t count = static_cast<std::size_t>(frame.nb_samples) - skipped;
    const auto plane = [&](std::size_t c) { return reinterpret_cast<const T*>(frame.extended_data[c]); };
    if (!planar || channels == 1) {
        const T* const in = plane(0) + skipped * channels;
        for (std::size_t i = 0; i < count * channels; ++i) out[i] = sample(in[i]);
    } else if (channels == 2) {
        const T* const left = plane(0) + skipped;
        const T* const right = plane(1) + skipped;
        if constexpr (std::is_same_v<T, float>) return interleave(left, right, count, out);
        for (std::size_t i = 0; i < count; ++i) {
            out[2 * i] = sample(left[i]);
            out[2 * i + 1] = sample(right[i]);
        }
    } else {
        for (std::size_t c = 0; c < channels; ++c) {
            const T* const in = plane(c) + skipped;
            for (std::size_t i = 0; i < count; ++i) out[i * channels + c] = sample(in[i]);
        }
    }
}

} // namespace

bool convertSamples(const AVFrame& frame, std::size_t skippedFrames, std::vector<std::int16_t>& into) {
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const bool planar = av_sample_fmt_is_planar(format);
    const auto channels = static_cast<std::size_t>(frame.ch_layout.nb_channels);
    into.resize((static_cast<std::size_t>(frame.nb_samples) - skippedFrames) * channels);
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_U8:
        convert<std::uint8_t>(frame, skippedFrames, planar, into.data());
        return true;
    case AV_SAMPLE_FMT_S16:
        convert<std::int16_t>(frame, skippedFrames, planar, into.data());
        return true;
    case AV_SAMPLE_FMT_S32:
        convert<std::int32_t>(frame, skippedFrames, planar, into.data());
        return true;
    case AV_SAMPLE_FMT_S64:
        convert<std::int64_t>(frame, skippedFrames, planar, into.data());
        return true;
    case AV_SAMPLE_FMT_FLT:
        convert<float>(frame, skippedFrames, planar, into.data());
        return true;
    case AV_SAMPLE_FMT_DBL:
        convert<double>(frame, skippedFrames, planar, into.data());
        return true;
    default:
        return false;
    }
}

} // namespace quillary::media
