#include "media/ffmpeg/Demuxer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quillary::media {

namespace {

constexpr int readAhead = 256 * 1024;

/// Containers that sounds and clips come in. The library knows hundreds more; some of them stand for other places, such as
/// a session description, for which it opens sockets by itself.
constexpr const char* containers = "mov,wav,w64,aiff,caf,flac,mp3,aac,ac3,eac3,au,amr,avi,mxf,hevc,h264,dv,matroska,"
                                   "ogg,mpegts,mpeg,mpegvideo,asf,flv";

class Options {
public:
    Options() {
        av_dict_set(&m_entries, "format_whitelist", containers, 0);
        av_dict_set(&m_entries, "protocol_whitelist", "none", 0);
    }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    ~Options() { av_dict_free(&m_entries); }
    AVDictionary** entries() { return &m_entries; }

private:
    AVDictionary* m_entries = nullptr;
};

/// Playlists and the like name other files, which are never opened.
int refuseToOpen(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
    return AVERROR(EPERM);
}

bool isCover(const AVStream* stream) {
    return stream->disposition & AV_DISPOSITION_ATTACHED_PIC;
}

/// The first track of a kind, a marked default before others. Pictures that come with a sound are none.
AVStream* trackOf(AVFormatContext* context, AVMediaType type) {
    AVStream* found = nullptr;
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        AVStream* const stream = context->streams[i];
        if (stream->codecpar->codec_type != type || isCover(stream)) continue;
        const bool marked = stream->disposition & AV_DISPOSITION_DEFAULT;
        if (!found || (marked && !(found->disposition & AV_DISPOSITION_DEFAULT))) found = stream;
    }
    return found;
}

bool needsProbing(const AVFormatContext* context, const AVStream* track) {
    if (!track || track->codecpar->codec_id == AV_CODEC_ID_NONE) return true;
    const bool named = std::string_view(context->iformat->name).starts_with("mov,");
    return track->codecpar->codec_type == AVMEDIA_TYPE_VIDEO && !(named && track->codecpar->width > 0);
}

} // namespace

Demuxer::Demuxer(int descriptor) : m_descriptor(descriptor) {}

Demuxer::~Demuxer() {
    if (m_context) avformat_close_input(&m_context);
    if (m_io) av_freep(&m_io->buffer);
    avio_context_free(&m_io);
    ::close(m_descriptor);
}

std::expected<std::unique_ptr<Demuxer>, MediaError> Demuxer::open(const std::filesystem::path& file, TrackKind kind) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return std::unexpected(MediaError::unreadable);
    std::unique_ptr<Demuxer> demuxer(new Demuxer(descriptor));
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return std::unexpected(MediaError::unreadable);
    if (status.st_size == 0) return std::unexpected(MediaError::empty);
    if (const auto opened = demuxer->openInput(kind); !opened) return std::unexpected(opened.error());
    return demuxer;
}

std::expected<void, MediaError> Demuxer::openInput(TrackKind kind) {
    auto* const buffer = static_cast<std::uint8_t*>(av_malloc(readAhead));
    m_io = buffer ? avio_alloc_context(buffer, readAhead, 0, this, readBytes, nullptr, seekBytes) : nullptr;
    if (!m_io && buffer) av_free(buffer);
    m_context = m_io ? avformat_alloc_context() : nullptr;
    if (!m_context) return std::unexpected(MediaError::unreadable);
    m_context->pb = m_io;
    m_context->io_open = refuseToOpen;
    m_context->interrupt_callback = {overdue, this};
    m_context->flags |= AVFMT_FLAG_CUSTOM_IO;
    restartClock();
    Options options;
    // A failure frees the context.
    if (const int error = avformat_open_input(&m_context, nullptr, nullptr, options.entries()); error < 0)
        return std::unexpected(brokeOff(error) ? MediaError::unreadable : MediaError::unknownKind);
    const AVMediaType type = kind == TrackKind::sound ? AVMEDIA_TYPE_AUDIO : AVMEDIA_TYPE_VIDEO;
    m_track = trackOf(m_context, type);
    if (needsProbing(m_context, m_track)) {
        restartClock();
        avformat_find_stream_info(m_context, nullptr);
        m_track = trackOf(m_context, type);
    }
    if (!m_track)
        return std::unexpected(kind == TrackKind::sound ? MediaError::noAudioTrack : MediaError::noVideoTrack);
    for (unsigned i = 0; i < m_context->nb_streams; ++i)
        m_context->streams[i]->discard = m_context->streams[i] == m_track ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    return {};
}

std::expected<Codec, MediaError> Demuxer::decoder() const {
    const AVCodec* const codec = avcodec_find_decoder(m_track->codecpar->codec_id);
    if (!codec) return std::unexpected(MediaError::noDecoder);
    Codec context(avcodec_alloc_context3(codec));
    if (!context || avcodec_parameters_to_context(context.get(), m_track->codecpar) < 0)
        return std::unexpected(MediaError::noDecoder);
    context->pkt_timebase = m_track->time_base;
    context->thread_count = 1;
    return context;
}

std::optional<double> Demuxer::seconds() const {
    if (m_context->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE) return {};
    if (m_track->duration > 0) return static_cast<double>(m_track->duration) * av_q2d(m_track->time_base);
    if (m_context->duration > 0) return static_cast<double>(m_context->duration) / AV_TIME_BASE;
    return {};
}

std::expected<bool, MediaError> Demuxer::read(AVPacket* packet) {
    restartClock();
    while (true) {
        av_packet_unref(packet);
        const int error = av_read_frame(m_context, packet);
        if (brokeOff(error)) return std::unexpected(MediaError::unreadable);
        if (error == AVERROR(EAGAIN)) continue;
        // What is damaged ends the track: everything before it counts.
        if (error < 0) return false;
        if (packet->stream_index == m_track->index) return true;
    }
}

bool Demuxer::seek(std::int64_t timestamp) {
    restartClock();
    return av_seek_frame(m_context, m_track->index, timestamp, AVSEEK_FLAG_BACKWARD) >= 0;
}

bool Demuxer::rewind() {
    restartClock();
    return av_seek_frame(m_context, m_track->index, 0, AVSEEK_FLAG_BYTE) >= 0;
}

int Demuxer::readBytes(void* self, std::uint8_t* into, int size) {
    auto& demuxer = *static_cast<Demuxer*>(self);
    if (overdue(self)) return AVERROR_EXIT;
    ssize_t read = 0;
    do read = pread(demuxer.m_descriptor, into, static_cast<std::size_t>(size), demuxer.m_position);
    while (read < 0 && errno == EINTR);
    if (read < 0) demuxer.m_failed = true;
    if (read < 0) return AVERROR(EIO);
    if (read == 0) return AVERROR_EOF;
    demuxer.m_position += read;
    return static_cast<int>(read);
}

std::int64_t Demuxer::seekBytes(void* self, std::int64_t offset, int whence) {
    auto& demuxer = *static_cast<Demuxer*>(self);
    struct stat status {};
    if (fstat(demuxer.m_descriptor, &status) != 0) return AVERROR(EIO);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return status.st_size;
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += demuxer.m_position;
        break;
    case SEEK_END:
        offset += status.st_size;
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0) return AVERROR(EINVAL);
    return demuxer.m_position = offset;
}

int Demuxer::overdue(void* self) {
    const auto started = static_cast<Demuxer*>(self)->m_started;
    return std::chrono::steady_clock::now() - started > std::chrono::seconds(operationSeconds);
}

} // namespace quillary::media
