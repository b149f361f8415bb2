#include "media/ffmpeg/SoundDecoder.h"

#include "media/ffmpeg/SampleConversion.h"

#include <algorithm>
#include <cmath>

namespace quillary::media {

namespace {

using Samples = std::span<const std::int16_t>;

class SoundDecoder final : public SoundReader {
public:
    SoundDecoder(std::unique_ptr<Demuxer> demuxer, Codec codec)
        : m_demuxer(std::move(demuxer))
        , m_codec(std::move(codec))
        , m_packet(av_packet_alloc())
        , m_frame(av_frame_alloc()) {}

    /// Decodes the first frame, which tells what the samples are like.
    std::expected<void, MediaError> begin() {
        if (!m_packet || !m_frame) return std::unexpected(MediaError::unreadable);
        const auto first = nextFrame();
        if (!first) return std::unexpected(first.error());
        if (!*first) return std::unexpected(m_damaged ? MediaError::unknownKind : MediaError::noSamples);
        m_rate = m_frame->sample_rate;
        m_channels = m_frame->ch_layout.nb_channels;
        if (m_rate <= 0 || m_channels <= 0) return std::unexpected(MediaError::unknownKind);
        m_pending = true;
        return {};
    }

    int channels() const override { return m_channels; }
    int rate() const override { return m_rate; }

    std::expected<Samples, MediaError> read() override {
        const auto skipped = nextSamples();
        if (!skipped) return std::unexpected(skipped.error());
        if (!*skipped) return Samples();
        if (!convertSamples(*m_frame, **skipped, m_samples)) return std::unexpected(MediaError::noDecoder);
        return m_samples;
    }

    std::expected<DecodedSamples, MediaError> readDecoded() override {
        const auto skipped = nextSamples();
        if (!skipped) return std::unexpected(skipped.error());
        if (!*skipped) return DecodedSamples();
        const auto length = static_cast<std::size_t>(m_frame->nb_samples) - **skipped;
        const auto channels = static_cast<std::size_t>(m_channels);
        if (m_frame->format == AV_SAMPLE_FMT_FLTP) {
            m_planes.clear();
            for (std::size_t c = 0; c < channels; ++c)
                m_planes.push_back(reinterpret_cast<const float*>(m_frame->extended_data[c]) + **skipped);
            return DecodedSamples{.planes = m_planes, .planeLength = length};
        }
        if (m_frame->format == AV_SAMPLE_FMT_FLT) {
            m_planes.assign(1, reinterpret_cast<const float*>(m_frame->extended_data[0]) + **skipped * channels);
            return DecodedSamples{.planes = m_planes, .planeLength = length * channels};
        }
        if (!convertSamples(*m_frame, **skipped, m_samples)) return std::unexpected(MediaError::noDecoder);
        return DecodedSamples{.integers = m_samples};
    }

    std::expected<void, MediaError> seek(double seconds) override {
        const AVStream* const track = m_demuxer->track();
        const auto start = track->start_time == AV_NOPTS_VALUE ? 0 : track->start_time;
        m_wanted = start + std::llround(seconds / av_q2d(track->time_base));
        // Decoders of coded sound need some frames before they give what the encoder meant.
        constexpr double warmUp = 0.1;
        const std::int64_t from =
            std::max<std::int64_t>(start, m_wanted - std::llround(warmUp / av_q2d(track->time_base)));
        m_atEnd = m_pending = false;
        const bool sought = m_demuxer->seek(from);
        avcodec_flush_buffers(m_codec.get());
        if (!sought) return std::unexpected(MediaError::unreadable);
        return {};
    }

private:
    /// Decodes up to a frame that holds something to hear, and tells how many of its first sample frames are to be left
    /// out; nothing at the end.
    std::expected<std::optional<std::size_t>, MediaError> nextSamples() {
        while (true) {
            if (!m_pending) {
                const auto more = nextFrame();
                if (!more) return std::unexpected(more.error());
                if (!*more) return std::nullopt;
            }
            m_pending = false;
            if (m_frame->ch_layout.nb_channels != m_channels || m_frame->nb_samples <= 0) continue;
            const auto skipped = skippedOf(*m_frame);
            if (skipped < static_cast<std::size_t>(m_frame->nb_samples)) return skipped;
        }
    }

    /// False at the end.
    std::expected<bool, MediaError> nextFrame() {
        while (true) {
            const int received = avcodec_receive_frame(m_codec.get(), m_frame.get());
            if (received >= 0) return true;
            if (received == AVERROR_EOF || (received != AVERROR(EAGAIN) && m_atEnd)) return false;
            if (m_atEnd) return false;
            const auto more = m_demuxer->read(m_packet.get());
            if (!more) return std::unexpected(more.error());
            m_atEnd = !*more;
            const int sent = avcodec_send_packet(m_codec.get(), m_atEnd ? nullptr : m_packet.get());
            m_damaged = m_damaged || sent == AVERROR_INVALIDDATA;
            if (sent == AVERROR(ENOMEM)) return std::unexpected(MediaError::unreadable);
        }
    }

    /// After a seek: how many sample frames of the decoded ones come before the time that is wanted.
    std::size_t skippedOf(const AVFrame& frame) {
        if (m_wanted == AV_NOPTS_VALUE) return 0;
        if (frame.best_effort_timestamp == AV_NOPTS_VALUE) {
            m_wanted = AV_NOPTS_VALUE;
            return 0;
        }
        const auto ahead =
            av_rescale_q(m_wanted - frame.best_effort_timestamp, m_demuxer->track()->time_base, {1, frame.sample_rate});
        if (ahead < frame.nb_samples) m_wanted = AV_NOPTS_VALUE;
        return static_cast<std::size_t>(std::clamp<std::int64_t>(ahead, 0, frame.nb_samples));
    }

    std::unique_ptr<Demuxer> m_demuxer;
    Codec m_codec;
    Packet m_packet;
    DecodedFrame m_frame;
    std::vector<std::int16_t> m_samples;
    std::vector<const float*> m_planes;
    std::int64_t m_wanted = AV_NOPTS_VALUE; ///< of a seek that has not arrived yet
    int m_rate = 0;
    int m_channels = 0;
    bool m_pending = false; ///< `m_frame` is decoded and not yet read
    bool m_atEnd = false;
    bool m_damaged = false;
};

} // namespace

std::expected<std::unique_ptr<SoundReader>, MediaError> openSoundDecoder(const std::filesystem::path& file) {
    auto demuxer = Demuxer::open(file, TrackKind::sound);
    if (!demuxer) return std::unexpected(demuxer.error());
    auto codec = (*demuxer)->decoder();
    if (!codec) return std::unexpected(codec.error());
    if (avcodec_open2(codec->get(), nullptr, nullptr) < 0) return std::unexpected(MediaError::noDecoder);
    auto decoder = std::make_unique<SoundDecoder>(std::move(*demuxer), std::move(*codec));
    if (const auto begun = decoder->begin(); !begun) return std::unexpected(begun.error());
    return decoder;
}

} // namespace quillary::media
