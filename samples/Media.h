#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillary::test {

/// Samples from -1 to 1: the value of a channel at a sample frame.
using Sound = std::function<double(std::int64_t frame, int channel)>;

/// A sine of this many hertz that gets louder and quieter, so that no two stretches of it are alike.
Sound wobblingTone(double hertz, int rate);

struct Pcm {
    int rate = 44100;
    int channels = 2;
    std::int64_t frames = 44100;
    int bits = 16;
    bool floating = false;
};
/// A WAV file of linear samples, without help of any library.
std::string waveFile(const Pcm& pcm, const Sound& sound);

/// Encodes a sound. The muxer is named as libavformat names it, the encoder likewise.
struct SoundFile {
    std::string muxer;
    std::string encoder;
    Pcm pcm = {};
    std::vector<std::pair<std::string, std::string>> muxerOptions = {};
    bool cover = false; ///< with a picture that belongs to the sound
};
void encode(const std::filesystem::path& file, const SoundFile& kind, const Sound& sound);

/// Encodes a clip whose frame number n is a plain grey of the brightness 16 + n % 200, with a white top left quarter.
struct ClipFile {
    std::string muxer;
    std::string encoder;
    int width = 320;
    int height = 180;
    int frames = 50;
    int rate = 25;
    int keyEvery = 25;
    int turn = 0;        ///< degrees that a player is to turn it clockwise
    bool uneven = false; ///< frames last 1, 2, 3 … ticks in turn
    bool grain = false;  ///< with the noise of a camera, which costs a decoder more
    bool smooth = false; ///< with smoothed block edges, as nearly all clips are
    std::string pixels = "yuv420p";
};
void encode(const std::filesystem::path& file, const ClipFile& kind);

/// Every sample of a file as libavcodec decodes it, made 16-bit by libswresample: the plain reading that the product is
/// held against.
struct Decoded {
    std::vector<std::int16_t> samples;
    int rate = 0;
    int channels = 0;
    double seconds() const { return static_cast<double>(samples.size()) / channels / rate; }
};
Decoded decodePlainly(const std::filesystem::path& file);

} // namespace quillary::test
