#include "media/MediaLength.h"

#include "samples/Media.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillary::media {

namespace {

using namespace test;

constexpr double asClose = 0.1;

class MediaLengthTest : public testing::Test {
protected:
    std::filesystem::path made(const std::string& name, const SoundFile& kind) {
        encode(folder / name, kind, wobblingTone(330, kind.pcm.rate));
        return folder / name;
    }
    TemporaryFolder folder;
};

TEST_F(MediaLengthTest, FollowsWhatIsLeftOfFilesThatWereCutShort) {
    const Pcm pcm{44100, 2, 44100 * 30};
    for (const auto& [name, muxer, encoder] : {std::tuple{"a.wav", "wav", "pcm_s16le"},
                                               {"a.flac", "flac", "flac"},
                                               {"a.mp3", "mp3", "libmp3lame"},
                                               {"a.aac", "adts", "aac"},
                                               {"fast.m4a", "ipod", "aac"}}) {
        const auto file = made(name, {muxer, encoder, pcm, {{"movflags", "faststart"}}});
        std::filesystem::resize_file(file, std::filesystem::file_size(file) * 2 / 5);
        const auto seconds = audioLength(file);
        ASSERT_TRUE(seconds) << name;
        EXPECT_NEAR(*seconds, decodePlainly(file).seconds(), asClose) << name;
        EXPECT_LT(*seconds, 20) << name;
    }
}

TEST_F(MediaLengthTest, DoesNotBelieveHeadersThatClaimTooMuch) {
    const auto flac = made("a.flac", {"flac", "flac", {44100, 2, 44100 * 4}});
    std::string bytes = readFile(flac);
    bytes[21] = static_cast<char>(bytes[21] | 0x0F);
    writeFile(flac, bytes);
    EXPECT_NEAR(audioLength(flac).value_or(-1), 4, asClose);
    // Of unknown length.
    bytes.replace(21, 5, std::string{static_cast<char>(bytes[21] & 0xF0), 0, 0, 0, 0});
    writeFile(flac, bytes);
    EXPECT_NEAR(audioLength(flac).value_or(-1), 4, asClose);

    const auto m4a = made("a.m4a", {"ipod", "aac", {44100, 2, 44100 * 4}});
    bytes = readFile(m4a);
    for (const char* box : {"mvhd", "mdhd"}) bytes.replace(bytes.find(box) + 20, 4, "\x7f\xff\xff\xff", 4);
    const auto times = bytes.find("stts") + 12;
    bytes.replace(times + 4, 4, "\x7f\xff\xff\xff", 4);
    writeFile(m4a, bytes);
    EXPECT_LT(audioLength(m4a).value_or(-1), 100);

    const auto wave = folder / "a.wav";
    bytes = waveFile({.frames = 44100}, wobblingTone(440, 44100));
    bytes.replace(40, 4, "\xff\xff\xff\x7f", 4);
    writeFile(wave, bytes);
    EXPECT_NEAR(audioLength(wave).value_or(-1), 1, 0.001);
}

TEST_F(MediaLengthTest, IsKnownForClips) {
    struct Case {
        const char* name;
        ClipFile kind;
        double seconds;
    };
    for (const auto& [name, kind, seconds] :
         {Case{"a.mp4", {"mp4", "libx264"}, 2},
          {"a.mov", {"mov", "mpeg4"}, 2},
          {"a.avi", {"avi", "mpeg4"}, 2},
          {"a.mxf", {"mxf", "mpeg2video"}, 2},
          {"a.hevc", {"hevc", "libx265"}, 2},
          {"uneven.mp4", {.muxer = "mp4", .encoder = "libx264", .uneven = true}, 4}}) {
        encode(folder / name, kind);
        EXPECT_NEAR(videoLength(folder / name).value_or(-1), seconds, asClose) << name;
    }
}

} // namespace

} // namespace quillary::media
