#include "media/ClipFrames.h"
#include "media/MediaLength.h"
#include "media/Peaks.h"
#include "samples/Media.h"
#include "support/TemporaryFolder.h"

#include <QElapsedTimer>
#include <QTest>
#include <atomic>
#include <ctime>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

namespace quillary::media {

namespace {

namespace fs = std::filesystem;
using namespace test;
using Error = MediaError;

/// What an operation came to, as a table can hold it.
template <typename T>
std::string outcome(const std::expected<T, Error>& result) {
    return result ? "fine" : description(result.error()).toStdString();
}

std::string text(Error error) {
    return description(error).toStdString();
}

std::string replaced(std::string bytes, const std::string& what, const std::string& by) {
    for (auto at = bytes.find(what); at != std::string::npos; at = bytes.find(what, at + by.size()))
        bytes.replace(at, what.size(), by);
    return bytes;
}

class BadInputTest : public testing::Test {
protected:
    fs::path made(const std::string& name, const SoundFile& kind) {
        encode(folder / name, kind, wobblingTone(330, kind.pcm.rate));
        return folder / name;
    }
    fs::path made(const std::string& name, const ClipFile& kind) {
        encode(folder / name, kind);
        return folder / name;
    }
    fs::path written(const std::string& name, const std::string& bytes) { return writeFile(folder / name, bytes); }
    /// A file that claims to be as long, its bytes zeros that take no place.
    fs::path sparse(const std::string& name, const std::string& head, std::uint64_t size) {
        writeFile(folder / name, head);
        fs::resize_file(folder / name, size);
        return folder / name;
    }

    TemporaryFolder folder;
};

TEST_F(BadInputTest, EveryFileHasItsReason) {
    const Pcm pcm{44100, 2, 44100 * 2};
    const auto m4a = made("a.m4a", SoundFile{"ipod", "aac", pcm});
    const auto mp4 = made("a.mp4", ClipFile{"mp4", "libx264"});
    const auto flac = made("a.flac", SoundFile{"flac", "flac", pcm});
    const std::string wave = waveFile({.frames = 4410}, wobblingTone(300, 44100));
    const auto pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::string unknownWave = wave;
    unknownWave.replace(20, 2, "\x99\x99");

    const std::string fine = "fine";
    const std::string unreadable = text(Error::unreadable), unknown = text(Error::unknownKind),
                      noSound = text(Error::noAudioTrack), noVideo = text(Error::noVideoTrack),
                      noDecoder = text(Error::noDecoder), empty = text(Error::empty);
    struct Case {
        fs::path file;
        std::string length, peaks, clipLength, frame;
    };
    for (const auto& [file, length, peaks, clipLength, frame] : std::vector<Case>{
             {pipe, unreadable, unreadable, unreadable, unreadable},
             {folder / "missing.wav", unreadable, unreadable, unreadable, unreadable},
             {folder.path(), unreadable, unreadable, unreadable, unreadable},
             {written("empty.mp3", ""), empty, empty, empty, empty},
             {written("text.m4v", std::string(100'000, 'x')), unknown, unknown, unknown, unknown},
             // A list of other files is no sound: none of them is opened.
             {written("list.wav", "ffconcat version 1.0\nfile flac.wav\n"), unknown, unknown, unknown, unknown},
             {written("list.mp3", "#EXTM3U\n#EXTINF:1,\nflac.wav\n"), unknown, unknown, unknown, unknown},
             // Nor is a session on the network, for which sockets would be opened.
             {written("session.mp3", "v=0\r\no=- 0 0 IN IP4 127.0.0.1\r\ns=x\r\nc=IN IP4 127.0.0.1\r\nt=0 0\r\n"
                                     "m=audio 5004 RTP/AVP 0\r\n"),
              unknown, unknown, unknown, unknown},
             // Codecs that nobody knows.
             {written("codec.m4a", replaced(replaced(readFile(m4a), "mp4a", "zzza"), "esds", "zzzz")), fine, noDecoder,
              noVideo, noVideo},
             {written("codec.mp4", replaced(readFile(mp4), "avc1", "zzz1")), noSound, noSound, fine, noDecoder},
             {written("codec.wav", unknownWave), fine, noDecoder, noVideo, noVideo},
             // The wrong extension, and the wrong shelf.
             {written("wave.mp4", wave), fine, fine, noVideo, noVideo},
             {written("flac.wav", readFile(flac)), fine, fine, noVideo, noVideo},
             {written("clip.wav", readFile(mp4)), noSound, noSound, fine, fine},
             {made("cover.m4a", SoundFile{"ipod", "aac", pcm, {}, true}), fine, fine, noVideo, noVideo},
             // Cut short, with and without what is needed.
             {written("cut.mp4", readFile(mp4).substr(0, 3000)), unknown, unknown, unknown, unknown},
             {written("head.wav", wave.substr(0, 44)), fine, fine, noVideo, noVideo},
             {written("chip.wav", wave.substr(0, 20)), unknown, unknown, unknown, unknown},
             {written("head.flac", readFile(flac).substr(0, 60)), unknown, unknown, unknown, unknown},
         }) {
        const auto name = file.filename();
        EXPECT_EQ(outcome(audioLength(file)), length) << name;
        EXPECT_EQ(outcome(readPeaks(file, 10)), peaks) << name;
        EXPECT_EQ(outcome(videoLength(file)), clipLength) << name;
        auto opened = ClipFrames::open(file);
        EXPECT_EQ(opened ? outcome(opened->frame(0, 1, 1, 320)) : text(opened.error()), frame) << name;
        EXPECT_EQ(clipThumbnail(file, 320).isNull(), frame != fine) << name;
    }
}

TEST_F(BadInputTest, LongAndEndlessFilesCostNothingOfWhatTheyClaim) {
    const auto worked = [from = std::clock()] { return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC; };
    // Twelve hours, and how long they are is known at once.
    constexpr int hours = 12 * 3600;
    std::string head = waveFile({.rate = 8000, .channels = 1, .frames = 0}, {});
    const auto size = static_cast<std::uint32_t>(hours * 8000 * 2);
    for (int i = 0; i < 4; ++i) head[40 + static_cast<std::size_t>(i)] = static_cast<char>(size >> (8 * i));
    const auto day = sparse("day.wav", head, 44 + std::uint64_t(size));
    EXPECT_EQ(audioLength(day).value_or(-1), hours);
    EXPECT_LT(worked(), 0.5);
    const auto peaks = readPeaks(day, waveformPeaks);
    ASSERT_TRUE(peaks);
    EXPECT_EQ(*peaks, std::vector<float>(waveformPeaks));
    const Pcm slow{8000, 1, 8000LL * 600};
    const auto mp3 = made("long.mp3", SoundFile{"mp3", "libmp3lame", slow});

    // Who does not wait any longer is not kept.
    std::stop_source stop;
    std::jthread impatient([&] {
        QTest::qSleep(5);
        stop.request_stop();
    });
    EXPECT_EQ(readPeaks(mp3, waveformPeaks, stop.get_token()).error(), Error::stopped);

    // Gigabytes of empty chunks.
    constexpr std::uint64_t huge = 8ULL << 30;
    const double before = worked();
    for (const auto& [name, magic] : {std::pair{"zeros.wav", std::string("RIFF\0\0\0\0WAVE", 12)},
                                      {"zeros.aiff", std::string("FORM\0\0\0\0AIFF", 12)},
                                      {"zeros.caf", std::string("caff\0\1\0\0", 8)},
                                      {"zeros.mp4", std::string("\0\0\0\x10"
                                                                "ftypisom\0\0\0\0",
                                                                16)},
                                      {"zeros.mp3", std::string("\xff\xfb\x90\x64", 4)},
                                      {"zeros.hevc", std::string()}}) {
        const auto file = sparse(name, magic, huge);
        EXPECT_FALSE(audioLength(file) && *audioLength(file) > 1) << name;
        EXPECT_FALSE(ClipFrames::open(file)) << name;
    }
    EXPECT_LT(worked() - before, 40);
}

TEST_F(BadInputTest, ClaimsOfAThousandMillionSecondsAreNotBelieved) {
    std::string bytes = readFile(made("a.mp4", ClipFile{"mp4", "libx264"}));
    for (const char* box : {"mvhd", "mdhd"}) bytes.replace(bytes.find(box) + 20, 4, "\x7f\xff\xff\xff", 4);
    const auto clip = written("claims.mp4", bytes);
    EXPECT_LT(videoLength(clip).value_or(-1), 100);
    EXPECT_FALSE(clipThumbnail(clip, 320).isNull());
    auto frames = ClipFrames::open(clip);
    ASSERT_TRUE(frames);
    EXPECT_TRUE(frames->frame(9e8, 0.8, 0.8, 320));
}

/// Cut, grown, rewritten and replaced while somebody reads: whatever comes of it, nothing hangs, crashes or is kept as
/// the truth about the file that stands there in the end.
TEST_F(BadInputTest, FilesMayChangeWhileTheyAreRead) {
    const Pcm pcm{44100, 2, 44100 * 20};
    for (const auto& file :
         {written("a.wav", waveFile(pcm, wobblingTone(300, 44100))), made("a.mp3", SoundFile{"mp3", "libmp3lame", pcm}),
          made("a.m4a", SoundFile{"ipod", "aac", pcm}),
          made("a.mp4", ClipFile{.muxer = "mp4", .encoder = "libx264", .frames = 100})}) {
        const std::string whole = readFile(file);
        std::atomic<bool> over = false;
        std::jthread meddler([&] {
            for (unsigned round = 0; !over; ++round) {
                std::error_code ignored;
                switch (round % 4) {
                case 0:
                    fs::resize_file(file, whole.size() / 3, ignored);
                    break;
                case 1:
                    writeFile(file, whole);
                    break;
                case 2:
                    fs::resize_file(file, whole.size() * 2, ignored);
                    break;
                default:
                    writeFile(folder / "next", std::string(5000, 'x'));
                    fs::rename(folder / "next", file, ignored);
                }
            }
        });
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < 60 && clock.elapsed() < 4000; ++i) {
            EXPECT_LE(readPeaks(file, 100).value_or(std::vector<float>()).size(), 100u);
            EXPECT_LT(audioLength(file).value_or(0), 100);
            EXPECT_LT(videoLength(file).value_or(0), 100);
            static_cast<void>(clipThumbnail(file, 320));
        }
        EXPECT_LT(clock.elapsed(), 60'000) << file;
        over = true;
        meddler.join();
        writeFile(file, whole);
        EXPECT_TRUE(file.extension() == ".mp4" ? videoLength(file).has_value() : readPeaks(file, 100).has_value());
    }
}

} // namespace

} // namespace quillary::media
