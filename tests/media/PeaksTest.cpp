#include "media/Peaks.h"

#include "media/MediaLength.h"
#include "media/PeakLoop.h"
#include "samples/Media.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace quillary::media {

namespace {

using namespace test;

/// The definition, sample by sample.
std::vector<float> plainPeaks(const std::vector<std::int16_t>& samples, std::int64_t total, int count) {
    const std::int64_t perBucket = std::max<std::int64_t>(std::max<std::int64_t>(total, count) / count, 1);
    std::vector<float> peaks(static_cast<std::size_t>(count));
    int running = 0;
    std::int64_t n = 0;
    for (const int sample : samples) {
        running = std::max(running, sample == -32768 ? 32767 : std::abs(sample));
        if (++n % perBucket == 0) {
            float& bucket = peaks[static_cast<std::size_t>(std::min<std::int64_t>(count - 1, n / perBucket - 1))];
            bucket = std::max(bucket, static_cast<float>(running) / 32767);
            running = 0;
        }
    }
    if (n == 0) return {};
    peaks.resize(static_cast<std::size_t>(std::max<std::int64_t>(1, std::min<std::int64_t>(count, n / perBucket))));
    const float top = *std::ranges::max_element(peaks);
    if (top > 0.01f)
        for (float& peak : peaks) peak /= top;
    return peaks;
}

class PeaksTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(PeaksTest, TheLoopIsTheDefinitionForAnyLengthAndAnyPieces) {
    std::mt19937 random(7);
    for (const std::int64_t length : {0, 1, 2, 5, 1999, 2000, 2001, 3999, 4000, 4001, 88200, 123457}) {
        for (const std::int64_t expected : {length, length / 2, length * 3}) {
            for (const int count : {1, 7, 2000}) {
                std::vector<std::int16_t> samples(static_cast<std::size_t>(length));
                for (auto& sample : samples) sample = static_cast<std::int16_t>(random());
                if (length > 4) samples[3] = -32768;
                PeakLoop loop(expected, count);
                for (std::size_t at = 0; at < samples.size();) {
                    const std::size_t piece = std::min<std::size_t>(1 + random() % 5000, samples.size() - at);
                    loop.add({samples.data() + at, piece});
                    at += piece;
                }
                EXPECT_EQ(loop.finish(), plainPeaks(samples, expected, count))
                    << length << ' ' << expected << ' ' << count;
            }
        }
    }
}

TEST_F(PeaksTest, FloatingPointCountsAsRoundedTo16Bits) {
    std::mt19937 random(11);
    constexpr float half = 0.5f / 32768;
    const float beyond = std::numeric_limits<float>::infinity();
    for (const std::size_t channels : {1, 2, 6}) {
        for (const std::size_t length : {1, 3, 1000, 40'000}) {
            std::vector<std::vector<float>> planes(channels, std::vector<float>(length));
            for (auto& plane : planes)
                for (float& sample : plane)
                    // Halves of a 16-bit step among them, and what is too loud.
                    sample = half * static_cast<float>(static_cast<int>(random() % 140'001) - 70'000);
            if (length > 3) planes[0][2] = -beyond;
            std::vector<std::int16_t> samples;
            for (std::size_t i = 0; i < length; ++i)
                for (const auto& plane : planes)
                    samples.push_back(static_cast<std::int16_t>(
                        std::lrint(std::clamp(static_cast<double>(plane[i]) * 32768, -32768.0, 32767.0))));
            // Stretches that are no whole number of turns of the channels too.
            for (const int count : {1, 7, 2000}) {
                const std::int64_t total = std::ssize(samples);
                PeakLoop loop(total, count);
                for (std::size_t at = 0; at < length;) {
                    const std::size_t piece = std::min<std::size_t>(1 + random() % 3000, length - at);
                    std::vector<const float*> heads;
                    for (const auto& plane : planes) heads.push_back(plane.data() + at);
                    loop.add(heads, piece);
                    at += piece;
                }
                EXPECT_EQ(loop.finish(), plainPeaks(samples, total, count))
                    << channels << ' ' << length << ' ' << count;
            }
        }
    }
    PeakLoop loop(3, 3);
    const std::vector<float> broken{0.5f, std::nanf(""), 0.25f};
    const float* const plane = broken.data();
    loop.add({&plane, 1}, broken.size());
    EXPECT_EQ(loop.finish(), (std::vector<float>{1, 0, 0.5f}));
}

TEST_F(PeaksTest, NearlySilentSoundsStayFlat) {
    PeakLoop loop(4, 4);
    loop.add(std::vector<std::int16_t>{300, -327, 0, 1});
    EXPECT_EQ(loop.finish(), (std::vector<float>{300 / 32767.f, 327 / 32767.f, 0, 1 / 32767.f}));
}

TEST_F(PeaksTest, EqualThePlainReadingInEveryFormatAndSoDoLengths) {
    const Pcm stereo{44100, 2, 44100 * 5 + 321};
    const Pcm mono{48000, 1, 48000 * 2 + 12345};
    const Pcm high{192000, 2, 192000};
    const Pcm surround{48000, 8, 48000};
    const Pcm longer{44100, 2, 44100 * 40};
    const Pcm low{22050, 1, 22050 * 5};
    struct Case {
        std::string name;
        SoundFile kind;
    };
    for (const auto& [name, kind] : std::vector<Case>{
             {"a.wav", {"wav", "pcm_s16le", stereo}},
             {"8.wav", {"wav", "pcm_u8", stereo}},
             {"24.wav", {"wav", "pcm_s24le", mono}},
             {"loud.wav", {"wav", "pcm_f32le", high}},
             {"surround.wav", {"wav", "pcm_s16le", surround}},
             {"adpcm.wav", {"wav", "adpcm_ms", stereo}},
             {"large.wav", {"wav", "pcm_s16le", stereo, {{"rf64", "always"}}}},
             {"one.wav", {"wav", "pcm_s16le", {44100, 1, 1}}},
             {"a.aiff", {"aiff", "pcm_s16be", stereo}},
             {"a.caf", {"caf", "pcm_s24le", surround}},
             {"a.flac", {"flac", "flac", longer}},
             {"96.flac", {"flac", "flac", high}},
             {"xing.mp3", {"mp3", "libmp3lame", longer}},
             {"bare.mp3", {"mp3", "libmp3lame", longer, {{"write_xing", "0"}}}},
             {"low.mp3", {"mp3", "libmp3lame", low, {{"write_xing", "0"}, {"id3v2_version", "0"}}}},
             {"cover.mp3", {"mp3", "libmp3lame", mono, {}, true}},
             {"a.aac", {"adts", "aac", longer}},
             {"a.m4a", {"ipod", "aac", longer}},
             {"surround.m4a", {"ipod", "aac", {48000, 6, 48000 * 3}}},
             {"fast.m4a", {"ipod", "aac", stereo, {{"movflags", "faststart"}}}},
             {"pieces.m4a",
              {"mp4", "aac", longer, {{"movflags", "frag_keyframe+empty_moov"}, {"frag_duration", "1000000"}}}},
             {"disguised.wav", {"ogg", "libvorbis", longer}},
         }) {
        const double loudness = name == "loud.wav" ? 3 : 1;
        encode(folder / name, kind,
               [&, tone = wobblingTone(330, kind.pcm.rate)](std::int64_t i, int c) { return loudness * tone(i, c); });
        const Decoded plain = decodePlainly(folder / name);
        const auto length = audioLength(folder / name);
        ASSERT_TRUE(length) << name << ' ' << description(length.error()).toStdString();
        EXPECT_NEAR(*length, plain.seconds(), 0.1) << name;
        std::vector<std::uint64_t> told;
        std::uint64_t ofAll = 0;
        const auto peaks = readPeaks(folder / name, waveformPeaks, {}, [&](std::uint64_t done, std::uint64_t all) {
            told.push_back(done);
            ofAll = all;
        });
        ASSERT_TRUE(peaks) << name;
        EXPECT_TRUE(std::ranges::is_sorted(told)) << name;
        EXPECT_TRUE(!told.empty() && told.back() <= ofAll && told.back() > ofAll * 9 / 10) << name << ' ' << ofAll;
        const auto total = static_cast<std::int64_t>(*length * plain.rate + 1e-6) * plain.channels;
        EXPECT_EQ(*peaks, plainPeaks(plain.samples, total, waveformPeaks)) << name;
    }
}

TEST_F(PeaksTest, OfNextToNothingAreFew) {
    writeFile(folder / "none.wav", waveFile({.frames = 0}, {}));
    EXPECT_EQ(readPeaks(folder / "none.wav", 10).value_or(std::vector<float>{1}), std::vector<float>());
    writeFile(folder / "one.wav", waveFile({.channels = 1, .frames = 1}, [](auto...) { return 1; }));
    EXPECT_EQ(readPeaks(folder / "one.wav", 2000).value_or(std::vector<float>()), std::vector<float>{1});
}

} // namespace

} // namespace quillary::media
