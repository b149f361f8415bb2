#include "media/ffmpeg/FrameGrabber.h"

#include "media/ffmpeg/FrameScaling.h"

#include <algorithm>
#include <cmath>

namespace quillary::media {

namespace {

using Clock = std::chrono::steady_clock;

class FrameGrabber final : public FrameReader {
public:
    FrameGrabber(std::unique_ptr<Demuxer> demuxer, Codec codec)
        : m_demuxer(std::move(demuxer))
        , m_codec(std::move(codec))
        , m_packet(av_packet_alloc())
        , m_frame(av_frame_alloc())
        , m_last(av_frame_alloc()) {
        readTurn(*m_demuxer->track(), m_turn);
    }

    std::optional<double> seconds() override { return m_demuxer->seconds(); }

    std::expected<Frame, MediaError> frame(const Request& request, std::stop_token stop) override {
        if (!m_packet || !m_frame || !m_last) return std::unexpected(MediaError::unreadable);
        m_stop = std::move(stop);
        m_deadline = Clock::now() + std::chrono::seconds(operationSeconds);
        av_frame_unref(m_last.get());
        const auto found = hasTimes() ? findByTime(request) : findByPlace(request);
        if (!found) return std::unexpected(found.error());
        if (!m_last->buf[0]) return std::unexpected(m_sawPacket ? MediaError::unknownKind : MediaError::noSamples);
        Frame result;
        if (!m_scaling.scale(*m_last, request.longestSide, result)) return std::unexpected(MediaError::noDecoder);
        std::ranges::copy(m_turn, result.turn);
        if (m_last->best_effort_timestamp != AV_NOPTS_VALUE)
            result.seconds = static_cast<double>(m_last->best_effort_timestamp - start()) * timeBase();
        return result;
    }

private:
    using Done = std::expected<void, MediaError>;

    double timeBase() const { return av_q2d(m_demuxer->track()->time_base); }
    std::int64_t start() const {
        const auto time = m_demuxer->track()->start_time;
        return time == AV_NOPTS_VALUE ? 0 : time;
    }
    /// A bare stream of coded pictures has no times to seek by.
    bool hasTimes() const {
        constexpr int bare = AVFMT_NOTIMESTAMPS | AVFMT_GENERIC_INDEX;
        return !(m_demuxer->context()->iformat->flags & bare) || m_demuxer->seconds();
    }

    Done findByTime(const Request& request) {
        double wanted = std::max(0.0, request.seconds);
        if (const auto length = seconds()) wanted = std::min(wanted, *length);
        const auto ticks = [&](double time) { return start() + std::llround(time / timeBase()); };
        const std::int64_t earliest = ticks(wanted - request.before);
        const std::int64_t latest = ticks(wanted + request.after);
        const auto key = keyNear(ticks(wanted), earliest, latest);
        // What cannot seek can still be read from where it stands.
        if (!m_demuxer->seek(key ? within(*key) : ticks(wanted))) m_demuxer->seek(start());
        avcodec_flush_buffers(m_codec.get());
        smoothEdges(!key || !vanishIn(request.longestSide));
        return decodeUntil(earliest, key.has_value());
    }

    /// Whether the edges of a coder's blocks are smaller than the pixels of the picture that is wanted.
    bool vanishIn(int longestSide) const {
        const AVCodecParameters& coded = *m_demuxer->track()->codecpar;
        return std::max(coded.width, coded.height) >= 2 * longestSide;
    }
    /// Frames that others are made of need it.
    void smoothEdges(bool smooth) { m_codec->skip_loop_filter = smooth ? AVDISCARD_NONREF : AVDISCARD_ALL; }

    /// The time of the key frame that is nearest within the tolerances, where the clip has a table of them.
    std::optional<std::int64_t> keyNear(std::int64_t wanted, std::int64_t earliest, std::int64_t latest) const {
        AVStream* const track = m_demuxer->track();
        std::optional<std::int64_t> nearest;
        for (const int direction : {AVSEEK_FLAG_BACKWARD, 0}) {
            const AVIndexEntry* const entry = avformat_index_get_entry_from_timestamp(track, wanted, direction);
            if (!entry || entry->timestamp < earliest || entry->timestamp > latest) continue;
            if (!nearest || std::abs(entry->timestamp - wanted) < std::abs(*nearest - wanted))
                nearest = entry->timestamp;
        }
        return nearest;
    }

    /// A time that leads to this key frame and no other: tables know when a frame is decoded, and a search asks when it
    /// is shown, which may be some frames later.
    std::int64_t within(std::int64_t key) const {
        constexpr double reordering = 0.3;
        auto margin = std::llround(reordering / timeBase());
        AVStream* const track = m_demuxer->track();
        if (const AVIndexEntry* next = avformat_index_get_entry_from_timestamp(track, key + 1, 0))
            margin = std::clamp<long long>((next->timestamp - key) / 2, 0, margin);
        return key + margin;
    }

    /// Reads on until a frame is not too early; `m_last` is then that frame, or the last one before the end. A key
    /// frame that will do is asked for at once, without the frames that its decoder would like to see behind it.
    Done decodeUntil(std::int64_t earliest, bool keyWillDo) {
        bool atEnd = false;
        while (true) {
            const int received = avcodec_receive_frame(m_codec.get(), m_frame.get());
            if (received >= 0) {
                std::swap(m_frame, m_last);
                const auto time = m_last->best_effort_timestamp;
                if (keyWillDo || time == AV_NOPTS_VALUE || time >= earliest) return {};
                continue;
            }
            if (received != AVERROR(EAGAIN) && !keyWillDo) return {};
            if (received == AVERROR_EOF) {
                avcodec_flush_buffers(m_codec.get());
                smoothEdges(true);
                keyWillDo = false;
            }
            if (atEnd) return {};
            if (Clock::now() > m_deadline) return std::unexpected(MediaError::unreadable);
            const auto more = readPacket();
            if (!more) return std::unexpected(more.error());
            atEnd = !*more;
            avcodec_send_packet(m_codec.get(), atEnd ? nullptr : m_packet.get());
            if (keyWillDo && !atEnd) avcodec_send_packet(m_codec.get(), nullptr);
        }
    }

    Done findByPlace(const Request& request) {
        if (const auto listed = listKeys(); !listed) return listed;
        const AVRational rate = m_demuxer->track()->avg_frame_rate;
        const double wanted = request.seconds * (rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 25);
        const auto nearest = std::ranges::min_element(
            m_keys, {}, [&](std::int64_t number) { return std::abs(static_cast<double>(number) - wanted); });
        if (nearest == m_keys.end()) return std::unexpected(MediaError::noSamples);
        // The places of packets are not known to the byte: whoever wants one reads up to it.
        m_demuxer->rewind();
        avcodec_flush_buffers(m_codec.get());
        for (std::int64_t number = 0; number < *nearest; ++number)
            if (const auto more = readPacket(); !more || !*more) return more ? Done() : std::unexpected(more.error());
        return decodeUntil(AV_NOPTS_VALUE, true);
    }

    /// Walks through the packets once and notes which are key frames.
    Done listKeys() {
        if (m_keysListed) return {};
        m_keys.clear();
        m_demuxer->rewind();
        for (std::int64_t number = 0;; ++number) {
            const auto more = readPacket();
            if (!more) return std::unexpected(more.error());
            if (!*more) break;
            if (m_packet->flags & AV_PKT_FLAG_KEY) m_keys.push_back(number);
        }
        m_keysListed = true;
        return {};
    }

    std::expected<bool, MediaError> readPacket() {
        if (m_stop.stop_requested()) return std::unexpected(MediaError::stopped);
        const auto more = m_demuxer->read(m_packet.get());
        m_sawPacket = m_sawPacket || more.value_or(false);
        return more;
    }

    std::unique_ptr<Demuxer> m_demuxer;
    Codec m_codec;
    Packet m_packet;
    DecodedFrame m_frame;
    DecodedFrame m_last;
    FrameScaling m_scaling;
    int m_turn[4] = {1, 0, 0, 1};
    std::vector<std::int64_t> m_keys; ///< numbers of the packets that are key frames
    bool m_keysListed = false;
    bool m_sawPacket = false;
    std::stop_token m_stop;
    Clock::time_point m_deadline;
};

} // namespace

std::expected<std::unique_ptr<FrameReader>, MediaError> openFrameGrabber(const std::filesystem::path& file) {
    auto demuxer = Demuxer::open(file, TrackKind::video);
    if (!demuxer) return std::unexpected(demuxer.error());
    auto codec = (*demuxer)->decoder();
    if (!codec) return std::unexpected(codec.error());
    AVCodecContext& context = **codec;
    constexpr std::int64_t mostPixels = 16384LL * 16384;
    context.max_pixels = mostPixels;
    context.flags2 |= AV_CODEC_FLAG2_FAST;
    if (avcodec_open2(&context, nullptr, nullptr) < 0) return std::unexpected(MediaError::noDecoder);
    return std::make_unique<FrameGrabber>(std::move(*demuxer), std::move(*codec));
}

} // namespace quillary::media
