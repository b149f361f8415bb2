#pragma once

#include "media/MediaError.h"
#include "media/ffmpeg/MediaModule.h"

#include <chrono>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace quillary::media {

struct Freed {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
using Packet = std::unique_ptr<AVPacket, Freed>;
using DecodedFrame = std::unique_ptr<AVFrame, Freed>;
using Codec = std::unique_ptr<AVCodecContext, Freed>;

/// An opened file and the one track of it that is wanted; packets of the others are passed over. One thread at a time.
class Demuxer {
public:
    /// Reads the header; the content is probed only where that does not name the codec.
    static std::expected<std::unique_ptr<Demuxer>, MediaError> open(const std::filesystem::path& file, TrackKind kind);
    ~Demuxer();
    Demuxer(const Demuxer&) = delete;
    Demuxer& operator=(const Demuxer&) = delete;

    AVFormatContext* context() { return m_context; }
    AVStream* track() { return m_track; }
    /// A decoder for the track, set up but not opened: its owner may still say how it is to work.
    std::expected<Codec, MediaError> decoder() const;
    /// What the header says of the length of the track, else of the file.
    std::optional<double> seconds() const;

    /// The track's next packet; false at the end.
    std::expected<bool, MediaError> read(AVPacket* packet);
    /// To the last place at or before a time of the track from which decoding can begin. False when the format cannot.
    bool seek(std::int64_t timestamp);
    /// To the beginning of a bare stream, which knows no times.
    bool rewind();

private:
    explicit Demuxer(int descriptor);
    std::expected<void, MediaError> openInput(TrackKind kind);
    static int readBytes(void* self, std::uint8_t* into, int size);
    static std::int64_t seekBytes(void* self, std::int64_t offset, int whence);
    static int overdue(void* self);
    /// Formats call it an input error, too, when a file ends too early.
    bool brokeOff(int error) const { return error == AVERROR_EXIT || (error == AVERROR(EIO) && m_failed); }
    void restartClock() { m_started = std::chrono::steady_clock::now(); }

    int m_descriptor;
    std::int64_t m_position = 0;
    bool m_failed = false; ///< the file could not be read
    AVIOContext* m_io = nullptr;
    AVFormatContext* m_context = nullptr;
    AVStream* m_track = nullptr;
    std::chrono::steady_clock::time_point m_started;
};

} // namespace quillary::media
