#include "media/MediaLength.h"

#include "media/TestMedia.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>

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
    std::filesystem::path written(const std::string& name, const std::string& bytes) {
        writeFile(folder / name, bytes);
        return folder / name;
    }
    TemporaryFolder folder;
};

TEST_F(MediaLengthTest, IsThatOfTheDecodedSoundInEveryFormat) {
    const Pcm shortStereo{44100, 2, 44100 * 3 + 777};
    const Pcm mono48{48000, 1, 48000 * 2 + 12345};
    const Pcm longer{44100, 2, 44100 * 40};
    const Pcm low{22050, 1, 22050 * 5};
    const Pcm high{192000, 2, 192000 * 2};
    const Pcm surround{48000, 8, 48000};
    struct Case {
        std::string name;
        SoundFile kind;
    };
    const std::vector<Case> cases{
        {"a.wav", {"wav", "pcm_s16le", shortStereo}},
        {"24.wav", {"wav", "pcm_s24le", mono48}},
        {"float.wav", {"wav", "pcm_f32le", high}},
        {"surround.wav", {"wav", "pcm_s16le", surround}},
        {"adpcm.wav", {"wav", "adpcm_ms", shortStereo}},
        {"large.wav", {"wav", "pcm_s16le", shortStereo, {{"rf64", "always"}}}},
        {"a.aiff", {"aiff", "pcm_s16be", mono48}},
        {"a.caf", {"caf", "pcm_s16le", mono48}},
        {"a.flac", {"flac", "flac", longer}},
        {"96.flac", {"flac", "flac", high}},
        {"xing.mp3", {"mp3", "libmp3lame", longer}},
        {"bare.mp3", {"mp3", "libmp3lame", longer, {{"write_xing", "0"}}}},
        {"low.mp3", {"mp3", "libmp3lame", low, {{"write_xing", "0"}, {"id3v2_version", "0"}}}},
        {"cover.mp3", {"mp3", "libmp3lame", shortStereo, {}, true}},
        {"a.aac", {"adts", "aac", longer}},
        {"a.m4a", {"ipod", "aac", longer}},
        {"fast.m4a", {"ipod", "aac", shortStereo, {{"movflags", "faststart"}}}},
        {"pieces.m4a",
         {"mp4", "aac", longer, {{"movflags", "frag_keyframe+empty_moov"}, {"frag_duration", "1000000"}}}},
        {"disguised.wav", {"ogg", "libvorbis", longer}},
        {"one.wav", {"wav", "pcm_s16le", {44100, 1, 1}}},
    };
    for (const auto& [name, kind] : cases) {
        const auto file = made(name, kind);
        const auto seconds = audioLength(file);
        ASSERT_TRUE(seconds) << name << ' ' << description(seconds.error()).toStdString();
        EXPECT_NEAR(*seconds, decodePlainly(file).seconds(), asClose) << name;
    }
}

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
    written("a.flac", bytes);
    EXPECT_NEAR(audioLength(flac).value_or(-1), 4, asClose);
    // Of unknown length.
    bytes.replace(21, 5, std::string{static_cast<char>(bytes[21] & 0xF0), 0, 0, 0, 0});
    written("a.flac", bytes);
    EXPECT_NEAR(audioLength(flac).value_or(-1), 4, asClose);

    const auto m4a = made("a.m4a", {"ipod", "aac", {44100, 2, 44100 * 4}});
    bytes = readFile(m4a);
    for (const char* box : {"mvhd", "mdhd"}) bytes.replace(bytes.find(box) + 20, 4, "\x7f\xff\xff\xff", 4);
    const auto times = bytes.find("stts") + 12;
    bytes.replace(times + 4, 4, "\x7f\xff\xff\xff", 4);
    written("a.m4a", bytes);
    EXPECT_LT(audioLength(m4a).value_or(-1), 100);

    const auto wave = written("a.wav", waveFile({.frames = 44100}, wobblingTone(440, 44100)));
    bytes = readFile(wave);
    bytes.replace(40, 4, "\xff\xff\xff\x7f", 4);
    written("a.wav", bytes);
    EXPECT_NEAR(audioLength(wave).value_or(-1), 1, 0.001);
}

TEST_F(MediaLengthTest, TellsWhyThereIsNone) {
    EXPECT_EQ(audioLength(folder / "missing.wav").error(), MediaError::unreadable);
    EXPECT_EQ(audioLength(folder.path()).error(), MediaError::unreadable);
    EXPECT_EQ(audioLength(written("empty.wav", "")).error(), MediaError::empty);
    EXPECT_EQ(audioLength(written("text.wav", std::string(5000, 'x'))).error(), MediaError::unknownKind);
    const auto pipe = folder / "pipe.wav";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(audioLength(pipe).error(), MediaError::unreadable);
    encode(folder / "mute.mp4", ClipFile{"mp4", "libx264"});
    EXPECT_EQ(audioLength(folder / "mute.mp4").error(), MediaError::noAudioTrack);
    const auto sound = made("cover.m4a", {"ipod", "aac", {}, {}, true});
    EXPECT_EQ(videoLength(sound).error(), MediaError::noVideoTrack);
    EXPECT_EQ(audioLength(written("none.wav", waveFile({.frames = 0}, wobblingTone(1, 1)))).value_or(-1), 0);
    // A list of other files is no sound: none of them is opened.
    const auto target = written("target.wav", waveFile({.frames = 44100}, wobblingTone(440, 44100)));
    EXPECT_FALSE(audioLength(written("list.wav", "ffconcat version 1.0\nfile " + target.string() + "\n")));
    EXPECT_FALSE(audioLength(written("list.mp3", "#EXTM3U\n#EXTINF:1,\n" + target.string() + "\n")));
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
