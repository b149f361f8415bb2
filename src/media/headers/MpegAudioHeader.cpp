#include "media/headers/MpegAudioHeader.h"

#include <algorithm>
#include <array>

namespace quillary::media {

namespace {

using Bytes = std::span<const std::uint8_t>;

struct Frame {
    std::uint32_t bytes; ///< with its header
    std::uint32_t samples;
    std::uint32_t rate;
    std::uint32_t kind; ///< what all frames of a stream have in common
};

constexpr std::size_t headerBytes = 7;
/// How far into a file a stream may begin.
constexpr std::uint64_t junkBefore = 64 * 1024;

std::optional<Frame> mpegFrame(Bytes b) {
    static constexpr std::array<std::array<std::uint16_t, 15>, 5> kilobits{{
        {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
        {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
    }};
    static constexpr std::array<std::uint32_t, 3> rates{44100, 48000, 32000};
    if (b.size() < headerBytes || b[0] != 0xFF || (b[1] & 0xE0) != 0xE0) return {};
    const unsigned version = b[1] >> 3 & 3; // 3: MPEG 1, 2: MPEG 2, 0: MPEG 2.5
    const unsigned layer = 4 - (b[1] >> 1 & 3);
    const unsigned rateCode = b[2] >> 2 & 3;
    const unsigned bitCode = b[2] >> 4;
    if (version == 1 || layer == 4 || rateCode == 3 || bitCode == 0 || bitCode == 15) return {};
    const bool half = version != 3;
    const std::size_t table = !half ? layer - 1 : layer == 1 ? 3 : 4;
    const std::uint32_t rate = rates[rateCode] >> (version == 3 ? 0 : version == 2 ? 1 : 2);
    const std::uint32_t bits = kilobits[table][bitCode] * 1000u;
    const std::uint32_t padding = b[2] >> 1 & 1;
    const std::uint32_t samples = layer == 1 ? 384 : layer == 3 && half ? 576 : 1152;
    const std::uint32_t bytes = layer == 1 ? (12 * bits / rate + padding) * 4 : samples / 8 * bits / rate + padding;
    if (bytes < headerBytes) return {};
    return Frame{bytes, samples, rate, (b[1] & 0xFEu) << 8 | rateCode};
}

std::optional<Frame> adtsFrame(Bytes b) {
    static constexpr std::array<std::uint32_t, 13> rates{96000, 88200, 64000, 48000, 44100, 32000, 24000,
                                                         22050, 16000, 12000, 11025, 8000,  7350};
    if (b.size() < headerBytes || b[0] != 0xFF || (b[1] & 0xF6) != 0xF0) return {};
    const unsigned rateCode = b[2] >> 2 & 15;
    const std::uint32_t bytes = (b[3] & 3u) << 11 | unsigned(b[4]) << 3 | b[5] >> 5;
    if (rateCode >= rates.size() || bytes <= headerBytes) return {};
    return Frame{bytes, 1024u * ((b[6] & 3u) + 1), rates[rateCode], (b[1] & 0xF8u) << 8 | rateCode};
}

template <auto frameOf>
std::optional<Frame> frameAt(const HeaderFile& file, std::uint64_t at) {
    return frameOf(file.bytes(at, headerBytes));
}

/// After the tags that may stand before a stream.
std::uint64_t afterTags(const HeaderFile& file) {
    std::uint64_t at = 0;
    while (file.holds(at, "ID3")) {
        const auto size = file.be32(at + 6);
        const bool footer = file.u8(at + 5) & 0x10;
        at += 10 + ((size >> 24 & 0x7F) << 21 | (size >> 16 & 0x7F) << 14 | (size >> 8 & 0x7F) << 7 | (size & 0x7F)) +
              (footer ? 10u : 0u);
    }
    return at;
}

/// Where three frames of one kind follow each other, or as many as there are until the end.
template <auto frameOf>
std::optional<std::uint64_t> firstFrame(const HeaderFile& file) {
    const std::uint64_t begin = afterTags(file);
    for (std::uint64_t at = begin; at < std::min(begin + junkBefore, file.size()); ++at) {
        const auto first = frameAt<frameOf>(file, at);
        if (!first) continue;
        bool follows = true;
        std::uint64_t next = at + first->bytes;
        for (int i = 0; i < 2 && follows && next < file.size(); ++i) {
            const auto frame = frameAt<frameOf>(file, next);
            follows = frame && frame->kind == first->kind;
            if (follows) next += frame->bytes;
        }
        if (follows) return at;
    }
    return {};
}

/// What holds no frame for so long is no sound any more.
constexpr std::uint64_t damageAtMost = 16 * 1024 * 1024;

/// Walks through frames of one kind. Where one is damaged, goes on at the next place where two follow each other.
template <auto frameOf>
std::optional<double> walked(const HeaderFile& file, std::uint64_t at, std::stop_token stop) {
    const std::uint32_t kind = frameAt<frameOf>(file, at)->kind;
    double seconds = 0;
    std::uint64_t samples = 0;
    std::uint32_t rate = 1;
    std::uint64_t damaged = 0; // bytes since the last frame
    while (at < file.size() && damaged < damageAtMost) {
        if (stop.stop_requested()) return {};
        const Bytes window = file.bytes(at, HeaderFile::capacity);
        std::size_t i = 0;
        while (i + headerBytes <= window.size()) {
            const auto frame = frameOf(window.subspan(i));
            if (!frame || frame->kind != kind) {
                ++i;
                ++damaged;
                continue;
            }
            damaged = 0;
            if (frame->rate != rate) {
                seconds += static_cast<double>(samples) / rate;
                samples = 0;
                rate = frame->rate;
            }
            if (at + i + frame->bytes <= file.size()) samples += frame->samples;
            i += frame->bytes;
        }
        if (i == 0) break;
        at += i;
    }
    return seconds + static_cast<double>(samples) / rate;
}

/// The length that the encoder left, if the file is as long as it says.
std::optional<double> counted(const HeaderFile& file, std::uint64_t at, const Frame& frame) {
    const Bytes head = file.bytes(at, 4);
    const bool half = (head[1] >> 3 & 3) != 3;
    const bool mono = head[3] >> 6 == 3;
    const std::uint64_t tag = at + 4 + (half ? (mono ? 9 : 17) : (mono ? 17 : 32));
    if (!file.holds(tag, "Xing") && !file.holds(tag, "Info")) return {};
    const std::uint32_t flags = file.be32(tag + 4);
    constexpr std::uint32_t hasFrames = 1, hasBytes = 2, hasToc = 4, hasQuality = 8;
    if (!(flags & hasFrames) || !(flags & hasBytes)) return {};
    const std::uint64_t frames = file.be32(tag + 8);
    const std::uint64_t bytes = file.be32(tag + 12);
    constexpr std::uint64_t slack = 4096;
    const std::uint64_t rest = file.size() - at;
    if (bytes > rest + slack || bytes / frame.samples > frames * 16) return {};
    // Frames have at least a header each.
    if (frames * headerBytes > rest) return {};

    const std::uint64_t encoder = tag + 16 + (flags & hasToc ? 100 : 0) + (flags & hasQuality ? 4 : 0);
    const std::uint32_t delays = file.be32(encoder + 21) >> 8;
    const bool known = file.holds(encoder, "LAME") || file.holds(encoder, "Lavf") || file.holds(encoder, "Lavc");
    constexpr std::uint64_t decoderDelay = 529;
    std::uint64_t samples = frames * frame.samples;
    if (known) {
        const std::uint64_t before = (delays >> 12) + decoderDelay;
        const std::uint64_t after = delays & 0xFFF;
        samples -= std::min(samples, before + (after > decoderDelay ? after - decoderDelay : 0));
    }
    return static_cast<double>(samples) / frame.rate;
}

} // namespace

std::optional<double> mpegAudioSeconds(const HeaderFile& file, std::stop_token stop) {
    const auto begin = firstFrame<mpegFrame>(file);
    if (!begin) return {};
    const auto frame = frameAt<mpegFrame>(file, *begin);
    if (const auto seconds = counted(file, *begin, *frame)) return seconds;
    return walked<mpegFrame>(file, *begin, stop);
}

std::optional<double> adtsSeconds(const HeaderFile& file, std::stop_token stop) {
    const auto begin = firstFrame<adtsFrame>(file);
    if (!begin) return {};
    return walked<adtsFrame>(file, *begin, stop);
}

} // namespace quillary::media
