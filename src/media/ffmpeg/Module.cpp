#include "media/ffmpeg/FrameGrabber.h"
#include "media/ffmpeg/SoundDecoder.h"

#include <cstdlib>

namespace quillary::media {

namespace {

/// How long a packet plays, in ticks of its track; 0 when nobody knows.
std::int64_t ticksOf(const AVPacket& packet, AVStream& track) {
    if (track.codecpar->codec_type != AVMEDIA_TYPE_AUDIO) return packet.duration;
    const auto coded = av_get_audio_frame_duration2(track.codecpar, packet.size);
    if (coded <= 0 || track.codecpar->sample_rate <= 0) return packet.duration;
    // A table may claim anything; a packet of sound is short.
    const std::int64_t second = av_rescale_q(1, {1, 1}, track.time_base);
    if (packet.duration > 0 && packet.duration <= second) return packet.duration;
    return av_rescale_q(coded, {1, track.codecpar->sample_rate}, track.time_base);
}

class Module final : public MediaModule {
public:
    Module() { av_log_set_level(AV_LOG_QUIET); }

    std::expected<std::unique_ptr<SoundReader>, MediaError> openSound(const std::filesystem::path& file) override {
        return openSoundDecoder(file);
    }

    std::expected<std::unique_ptr<FrameReader>, MediaError> openClip(const std::filesystem::path& file) override {
        return openFrameGrabber(file);
    }

    std::expected<double, MediaError> scannedSeconds(const std::filesystem::path& file, TrackKind kind,
                                                     std::stop_token stop) override {
        const auto opened = Demuxer::open(file, kind);
        if (!opened) return std::unexpected(opened.error());
        Demuxer& demuxer = **opened;
        AVStream& track = *demuxer.track();
        const Packet packet(av_packet_alloc());
        if (!packet) return std::unexpected(MediaError::unreadable);
        std::int64_t ticks = 0;
        std::int64_t packets = 0;
        std::int64_t untimed = 0;
        while (true) {
            if (stop.stop_requested()) return std::unexpected(MediaError::stopped);
            const auto more = demuxer.read(packet.get());
            if (!more) return std::unexpected(more.error());
            if (!*more) break;
            const auto length = ticksOf(*packet, track);
            ++packets;
            ticks += std::max<std::int64_t>(length, 0);
            untimed += length <= 0;
        }
        if (packets == 0) return std::unexpected(MediaError::noSamples);
        const AVRational rate = track.avg_frame_rate;
        const double frame = rate.num > 0 && rate.den > 0 ? 1 / av_q2d(rate) : 0;
        const double seconds =
            static_cast<double>(ticks) * av_q2d(track.time_base) + static_cast<double>(untimed) * frame;
        if (seconds <= 0) return demuxer.seconds().value_or(0);
        return seconds;
    }
};

} // namespace

} // namespace quillary::media

extern "C" __attribute__((visibility("default"))) quillary::media::MediaModule* quillaryMedia() {
    static quillary::media::Module module;
    return &module;
}
