#include "samples/Media.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <memory>
#include <numbers>
#include <random>
#include <stdexcept>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace quillary::test {

namespace {

void must(int result, const char* what) {
    if (result < 0) throw std::runtime_error(std::string(what) + ": " + std::to_string(result));
}
template <typename T>
T* must(T* pointer, const char* what) {
    if (!pointer) throw std::runtime_error(what);
    return pointer;
}

const bool quiet = (av_log_set_level(AV_LOG_QUIET), true);

/// A muxer with its tracks, written to the end when it goes.
class Muxer {
public:
    Muxer(const std::filesystem::path& file, const std::string& name) {
        must(avformat_alloc_output_context2(&m_context, nullptr, name.c_str(), file.c_str()), "muxer");
        must(avio_open(&m_context->pb, ("file:" + file.string()).c_str(), AVIO_FLAG_WRITE), "output");
    }
    ~Muxer() {
        av_write_trailer(m_context);
        avio_closep(&m_context->pb);
        avformat_free_context(m_context);
    }

    /// A track for what the codec writes, which is opened here.
    AVStream* add(AVCodecContext* codec) {
        if (m_context->oformat->flags & AVFMT_GLOBALHEADER) codec->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        must(avcodec_open2(codec, nullptr, nullptr), "encoder");
        AVStream* const stream = must(avformat_new_stream(m_context, nullptr), "stream");
        stream->time_base = codec->time_base;
        must(avcodec_parameters_from_context(stream->codecpar, codec), "parameters");
        return stream;
    }
    void begin(const std::vector<std::pair<std::string, std::string>>& options = {}) {
        AVDictionary* dictionary = nullptr;
        for (const auto& [key, value] : options) av_dict_set(&dictionary, key.c_str(), value.c_str(), 0);
        must(avformat_write_header(m_context, &dictionary), "header");
        av_dict_free(&dictionary);
    }
    /// Null ends the track.
    void write(AVCodecContext* codec, AVStream* stream, AVFrame* frame) {
        must(avcodec_send_frame(codec, frame), "encode");
        AVPacket* packet = av_packet_alloc();
        while (avcodec_receive_packet(codec, packet) >= 0) {
            packet->stream_index = stream->index;
            av_packet_rescale_ts(packet, codec->time_base, stream->time_base);
            must(av_interleaved_write_frame(m_context, packet), "write");
        }
        av_packet_free(&packet);
    }

private:
    AVFormatContext* m_context = nullptr;
};

struct Free {
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
using Codec = std::unique_ptr<AVCodecContext, Free>;
using Frame = std::unique_ptr<AVFrame, Free>;

Codec encoder(const std::string& name) {
    const AVCodec* const codec = must(avcodec_find_encoder_by_name(name.c_str()), name.c_str());
    return Codec(avcodec_alloc_context3(codec));
}

double clipped(double value) {
    return std::min(1.0, std::max(-1.0, value));
}

void put(AVFrame& frame, int i, int c, double value) {
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const bool planar = av_sample_fmt_is_planar(format);
    std::uint8_t* const plane = frame.extended_data[planar ? c : 0];
    const int at = planar ? i : i * frame.ch_layout.nb_channels + c;
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_U8:
        plane[at] = static_cast<std::uint8_t>(std::lround(clipped(value) * 127) + 128);
        break;
    case AV_SAMPLE_FMT_S16:
        reinterpret_cast<std::int16_t*>(plane)[at] = static_cast<std::int16_t>(std::lround(clipped(value) * 32767));
        break;
    case AV_SAMPLE_FMT_S32:
        reinterpret_cast<std::int32_t*>(plane)[at] = static_cast<std::int32_t>(clipped(value) * 2147483000.0);
        break;
    case AV_SAMPLE_FMT_FLT:
        reinterpret_cast<float*>(plane)[at] = static_cast<float>(value);
        break;
    default:
        throw std::runtime_error("sample format");
    }
}

void little(std::string& out, std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i));
}

} // namespace

Sound wobblingTone(double hertz, int rate) {
    return [=](std::int64_t frame, int channel) {
        const double t = static_cast<double>(frame) / rate;
        const double loudness = 0.45 + 0.4 * std::sin(t * 1.7 + channel);
        return loudness * std::sin(2 * std::numbers::pi * hertz * t);
    };
}

std::string waveFile(const Pcm& pcm, const Sound& sound) {
    std::string data;
    for (std::int64_t i = 0; i < pcm.frames; ++i) {
        for (int c = 0; c < pcm.channels; ++c) {
            const double value = clipped(sound(i, c));
            if (pcm.floating) {
                const auto number = static_cast<float>(value);
                std::uint32_t bits = 0;
                std::memcpy(&bits, &number, sizeof bits);
                little(data, bits, 4);
            } else {
                little(data, static_cast<std::uint64_t>(std::llround(value * (std::pow(2, pcm.bits - 1) - 1))),
                       pcm.bits / 8);
            }
        }
    }
    std::string file = "RIFF";
    little(file, 36 + data.size(), 4);
    file += "WAVEfmt ";
    little(file, 16, 4);
    little(file, pcm.floating ? 3 : 1, 2);
    little(file, static_cast<std::uint64_t>(pcm.channels), 2);
    little(file, static_cast<std::uint64_t>(pcm.rate), 4);
    const int frameBytes = pcm.channels * pcm.bits / 8;
    little(file, static_cast<std::uint64_t>(pcm.rate) * static_cast<std::uint64_t>(frameBytes), 4);
    little(file, static_cast<std::uint64_t>(frameBytes), 2);
    little(file, static_cast<std::uint64_t>(pcm.bits), 2);
    file += "data";
    little(file, data.size(), 4);
    return file + data;
}

void encode(const std::filesystem::path& file, const SoundFile& kind, const Sound& sound) {
    Muxer muxer(file, kind.muxer);
    const Codec codec = encoder(kind.encoder);
    codec->sample_rate = kind.pcm.rate;
    codec->time_base = {1, kind.pcm.rate};
    codec->sample_fmt = codec->codec->sample_fmts[0];
    codec->bit_rate = 128'000;
    av_channel_layout_default(&codec->ch_layout, kind.pcm.channels);
    AVStream* const stream = muxer.add(codec.get());

    Codec coverCodec;
    AVStream* cover = nullptr;
    if (kind.cover) {
        coverCodec = encoder("png");
        coverCodec->width = coverCodec->height = 64;
        coverCodec->pix_fmt = AV_PIX_FMT_RGB24;
        coverCodec->time_base = {1, 25};
        cover = muxer.add(coverCodec.get());
        cover->disposition = AV_DISPOSITION_ATTACHED_PIC;
    }
    muxer.begin(kind.muxerOptions);
    if (cover) {
        const Frame picture(av_frame_alloc());
        picture->format = AV_PIX_FMT_RGB24;
        picture->width = picture->height = 64;
        must(av_frame_get_buffer(picture.get(), 0), "picture");
        std::memset(picture->data[0], 200, static_cast<std::size_t>(picture->linesize[0]) * 64);
        muxer.write(coverCodec.get(), cover, picture.get());
    }

    const int most = codec->frame_size > 0 ? codec->frame_size : 1024;
    for (std::int64_t done = 0; done < kind.pcm.frames;) {
        const Frame frame(av_frame_alloc());
        frame->format = codec->sample_fmt;
        frame->sample_rate = kind.pcm.rate;
        frame->pts = done;
        frame->nb_samples = static_cast<int>(std::min<std::int64_t>(most, kind.pcm.frames - done));
        av_channel_layout_default(&frame->ch_layout, kind.pcm.channels);
        must(av_frame_get_buffer(frame.get(), 0), "samples");
        for (int i = 0; i < frame->nb_samples; ++i)
            for (int c = 0; c < kind.pcm.channels; ++c) put(*frame, i, c, sound(done + i, c));
        muxer.write(codec.get(), stream, frame.get());
        done += frame->nb_samples;
    }
    muxer.write(codec.get(), stream, nullptr);
}

void encode(const std::filesystem::path& file, const ClipFile& kind) {
    Muxer muxer(file, kind.muxer);
    const Codec codec = encoder(kind.encoder);
    codec->width = kind.width;
    codec->height = kind.height;
    codec->pix_fmt = av_get_pix_fmt(kind.pixels.c_str());
    codec->time_base = {1, kind.rate};
    codec->framerate = {kind.rate, 1};
    codec->gop_size = kind.keyEvery;
    codec->bit_rate = kind.grain ? 12'000'000 : 1'000'000;
    if (codec->priv_data) av_opt_set(codec->priv_data, "preset", kind.smooth ? "superfast" : "ultrafast", 0);
    if (kind.encoder == "libx265") av_opt_set(codec->priv_data, "x265-params", "log-level=none", 0);
    AVStream* const stream = muxer.add(codec.get());
    stream->avg_frame_rate = {kind.rate, 1};
    if (kind.turn != 0) {
        auto* const matrix = reinterpret_cast<std::int32_t*>(
            av_stream_new_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(std::int32_t)));
        av_display_rotation_set(matrix, kind.turn);
    }
    muxer.begin();
    std::int64_t time = 0;
    std::minstd_rand random(3);
    for (int n = 0; n < kind.frames; ++n) {
        const Frame frame(av_frame_alloc());
        frame->format = codec->pix_fmt;
        frame->width = kind.width;
        frame->height = kind.height;
        must(av_frame_get_buffer(frame.get(), 0), "frame");
        const AVPixFmtDescriptor& format = *av_pix_fmt_desc_get(codec->pix_fmt);
        const int deeper = format.comp[0].depth - 8;
        for (int plane = 0; plane < 3; ++plane) {
            const int rows = AV_CEIL_RSHIFT(kind.height, plane ? format.log2_chroma_h : 0);
            const int columns = AV_CEIL_RSHIFT(kind.width, plane ? format.log2_chroma_w : 0);
            for (int y = 0; y < rows; ++y) {
                std::uint8_t* const row = frame->data[plane] + y * frame->linesize[plane];
                for (int x = 0; x < columns; ++x) {
                    const bool white = !plane && y < rows / 2 && x < columns / 2;
                    int value = plane ? 128 : white ? 235 : 16 + n % 200;
                    if (kind.grain) value ^= static_cast<int>(random() & 15);
                    if (deeper > 0)
                        reinterpret_cast<std::uint16_t*>(row)[x] = static_cast<std::uint16_t>(value << deeper);
                    else
                        row[x] = static_cast<std::uint8_t>(value);
                }
            }
        }
        frame->pts = time;
        time += kind.uneven ? 1 + n % 3 : 1;
        muxer.write(codec.get(), stream, frame.get());
    }
    muxer.write(codec.get(), stream, nullptr);
}

Decoded decodePlainly(const std::filesystem::path& file) {
    AVFormatContext* context = nullptr;
    must(avformat_open_input(&context, ("file:" + file.string()).c_str(), nullptr, nullptr), "open");
    must(avformat_find_stream_info(context, nullptr), "probe");
    const AVCodec* decoder = nullptr;
    const int track = av_find_best_stream(context, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    must(track, "no sound");
    const Codec codec(avcodec_alloc_context3(decoder));
    must(avcodec_parameters_to_context(codec.get(), context->streams[track]->codecpar), "parameters");
    codec->pkt_timebase = context->streams[track]->time_base;
    must(avcodec_open2(codec.get(), decoder, nullptr), "decoder");

    Decoded result;
    SwrContext* converter = nullptr;
    AVPacket* packet = av_packet_alloc();
    const Frame frame(av_frame_alloc());
    for (bool end = false; !end;) {
        end = av_read_frame(context, packet) < 0;
        if (!end && packet->stream_index != track) {
            av_packet_unref(packet);
            continue;
        }
        avcodec_send_packet(codec.get(), end ? nullptr : packet);
        av_packet_unref(packet);
        while (avcodec_receive_frame(codec.get(), frame.get()) >= 0) {
            if (!converter) {
                result.rate = frame->sample_rate;
                result.channels = frame->ch_layout.nb_channels;
                must(swr_alloc_set_opts2(&converter, &frame->ch_layout, AV_SAMPLE_FMT_S16, frame->sample_rate,
                                         &frame->ch_layout, static_cast<AVSampleFormat>(frame->format),
                                         frame->sample_rate, 0, nullptr),
                     "converter");
                must(swr_init(converter), "converter");
            }
            const std::size_t before = result.samples.size();
            result.samples.resize(before + static_cast<std::size_t>(frame->nb_samples * result.channels));
            auto* out = reinterpret_cast<std::uint8_t*>(result.samples.data() + before);
            swr_convert(converter, &out, frame->nb_samples, const_cast<const std::uint8_t**>(frame->extended_data),
                        frame->nb_samples);
        }
    }
    av_packet_free(&packet);
    swr_free(&converter);
    avformat_close_input(&context);
    return result;
}

} // namespace quillary::test
