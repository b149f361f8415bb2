#include "PlainReading.h"

#include <fstream>
#include <numeric>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace quillary::benchmark {

namespace {

/// A file with a decoder for its best track of a kind, as a program would open it.
class Opened {
public:
    Opened(const std::filesystem::path& file, AVMediaType type, bool probe) {
        if (avformat_open_input(&context, file.c_str(), nullptr, nullptr) < 0) return;
        if (probe) avformat_find_stream_info(context, nullptr);
        const AVCodec* decoder = nullptr;
        track = av_find_best_stream(context, type, -1, -1, &decoder, 0);
        if (track < 0) return;
        codec = avcodec_alloc_context3(decoder);
        avcodec_parameters_to_context(codec, context->streams[track]->codecpar);
        codec->pkt_timebase = context->streams[track]->time_base;
        codec->thread_count = 1;
        avcodec_open2(codec, decoder, nullptr);
    }
    ~Opened() {
        av_packet_free(&packet);
        av_frame_free(&frame);
        avcodec_free_context(&codec);
        avformat_close_input(&context);
    }

    AVFormatContext* context = nullptr;
    AVCodecContext* codec = nullptr;
    int track = -1;
    AVPacket* packet = av_packet_alloc();
    AVFrame* frame = av_frame_alloc();
};

} // namespace

unsigned long passOver(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<unsigned long> piece(32 * 1024);
    unsigned long sum = 0;
    while (in.read(reinterpret_cast<char*>(piece.data()), static_cast<std::streamsize>(piece.size() * sizeof(long))))
        sum = std::accumulate(piece.begin(), piece.end(), sum);
    return sum;
}

long decode(const std::filesystem::path& file) {
    const Opened opened(file, AVMEDIA_TYPE_AUDIO, true);
    long samples = 0;
    for (bool end = false; !end;) {
        end = av_read_frame(opened.context, opened.packet) < 0;
        if (!end && opened.packet->stream_index != opened.track) {
            av_packet_unref(opened.packet);
            continue;
        }
        avcodec_send_packet(opened.codec, end ? nullptr : opened.packet);
        av_packet_unref(opened.packet);
        while (avcodec_receive_frame(opened.codec, opened.frame) >= 0) samples += opened.frame->nb_samples;
    }
    return samples;
}

double probedLength(const std::filesystem::path& file) {
    AVFormatContext* context = nullptr;
    if (avformat_open_input(&context, file.c_str(), nullptr, nullptr) < 0) return 0;
    avformat_find_stream_info(context, nullptr);
    const double seconds = static_cast<double>(context->duration) / AV_TIME_BASE;
    avformat_close_input(&context);
    return seconds;
}

bool decodeKeyFrame(const std::filesystem::path& file, double seconds) {
    const Opened opened(file, AVMEDIA_TYPE_VIDEO, false);
    const AVRational base = opened.context->streams[opened.track]->time_base;
    av_seek_frame(opened.context, opened.track, static_cast<std::int64_t>(seconds / av_q2d(base)),
                  AVSEEK_FLAG_BACKWARD);
    while (av_read_frame(opened.context, opened.packet) >= 0) {
        const bool wanted = opened.packet->stream_index == opened.track;
        if (wanted) avcodec_send_packet(opened.codec, opened.packet);
        av_packet_unref(opened.packet);
        if (!wanted) continue;
        avcodec_send_packet(opened.codec, nullptr);
        return avcodec_receive_frame(opened.codec, opened.frame) >= 0;
    }
    return false;
}

} // namespace quillary::benchmark
