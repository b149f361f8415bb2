#include "media/ClipFrames.h"
#include "media/VideoScrubber.h"
#include "samples/Media.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace quillary {

namespace {

using namespace test;

/// Which frame of a test clip a picture shows.
int numberOf(const QImage& frame) {
    const int grey = qGreen(frame.pixel(frame.width() - 4, frame.height() - 4));
    return static_cast<int>(std::lround(grey * 219.0 / 255)); // video levels begin at 16
}

class FramesTest : public testing::Test {
protected:
    std::filesystem::path clip(const std::string& name, const ClipFile& kind) {
        encode(folder / name, kind);
        return folder / name;
    }
    TemporaryFolder folder;
};

TEST_F(FramesTest, LieWithinTheTolerances) {
    struct Case {
        const char* name;
        ClipFile kind;
    };
    // A key frame every 4 seconds: some times have one close by, others none.
    for (const auto& [name, kind] : {
             Case{"a.mp4", {.muxer = "mp4", .encoder = "libx264", .frames = 150, .keyEvery = 100}},
             Case{"a.mov", {.muxer = "mov", .encoder = "mpeg4", .frames = 150, .keyEvery = 100}},
             Case{"a.avi", {.muxer = "avi", .encoder = "mpeg4", .frames = 150, .keyEvery = 100}},
             Case{"hevc.mp4", {.muxer = "mp4", .encoder = "libx265", .frames = 150, .keyEvery = 100}},
         }) {
        auto frames = media::ClipFrames::open(clip(name, kind));
        ASSERT_TRUE(frames) << name;
        EXPECT_NEAR(frames->seconds(), 6, 0.1) << name;
        for (const double at : {0.0, 0.5, 2.0, 3.5, 4.0, 5.5, 1.0, 3.9}) {
            const auto frame = frames->frame(at, 0.8, 0.8, 320);
            ASSERT_TRUE(frame) << name << at;
            EXPECT_EQ(frame->size(), QSize(320, 180));
            EXPECT_NEAR(numberOf(*frame) / 25.0, at, 0.8 + 0.1) << name;
        }
        EXPECT_TRUE(frames->frame(1e9, 0.8, 0.8, 320)) << name;
    }
}

TEST_F(FramesTest, OfUnevenLengthAreFoundByTheirTime) {
    auto frames = media::ClipFrames::open(
        clip("uneven.mp4", {.muxer = "mp4", .encoder = "libx264", .frames = 60, .keyEvery = 10, .uneven = true}));
    ASSERT_TRUE(frames);
    std::vector<double> times{0};
    for (int n = 0; n < 59; ++n) times.push_back(times.back() + (1 + n % 3) / 25.0);
    for (const double at : {0.0, 1.0, 2.4, 4.1}) {
        const auto frame = frames->frame(at, 0.8, 0.8, 320);
        ASSERT_TRUE(frame) << at;
        EXPECT_NEAR(times.at(static_cast<std::size_t>(numberOf(*frame))), at, 0.9) << at;
    }
}

TEST_F(FramesTest, OfBareStreamsAreTheNearestKeyFrames) {
    auto frames =
        media::ClipFrames::open(clip("a.hevc", {.muxer = "hevc", .encoder = "libx265", .frames = 100, .keyEvery = 20}));
    ASSERT_TRUE(frames);
    for (const auto& [at, number] : {std::pair{0.0, 0}, {1.7, 40}, {0.9, 20}, {3.9, 80}})
        EXPECT_NEAR(numberOf(frames->frame(at, 0.8, 0.8, 320).value_or(QImage(9, 9, QImage::Format_RGB32))), number, 2);
}

TEST_F(FramesTest, AreReducedWhateverTheirShapeAndDepth) {
    struct Case {
        const char* name;
        ClipFile kind;
        QSize size;
    };
    for (const auto& [name, kind, size] : {
             Case{"hd.mp4", {.muxer = "mp4", .encoder = "libx264", .width = 1920, .height = 1080}, {320, 180}},
             Case{"smooth.mp4",
                  {.muxer = "mp4", .encoder = "libx264", .width = 1280, .height = 720, .smooth = true},
                  {320, 180}},
             Case{"odd.mov",
                  {.muxer = "mov", .encoder = "libx264", .width = 1367, .height = 773, .pixels = "yuv444p"},
                  {320, 181}},
             Case{"deep.mov",
                  {.muxer = "mov", .encoder = "prores_ks", .width = 1442, .height = 2162, .pixels = "yuv422p10le"},
                  {213, 320}},
             Case{"thin.mov",
                  {.muxer = "mov", .encoder = "mjpeg", .width = 4000, .height = 8, .pixels = "yuvj420p"},
                  {320, 1}},
         }) {
        auto small = kind;
        small.frames = 3;
        const QImage picture = media::clipThumbnail(clip(name, small), 320);
        ASSERT_EQ(picture.size(), size) << name;
        if (size.height() == 1) continue;
        // The white quarter ends in the middle; everything is grey.
        for (int x = 4; x < size.width() - 4; ++x) {
            for (int y = 4; y < size.height() - 4; ++y) {
                if (std::abs(2 * x - size.width()) < 8 || std::abs(2 * y - size.height()) < 8) continue;
                const QRgb pixel = picture.pixel(x, y);
                const bool white = 2 * x < size.width() && 2 * y < size.height();
                ASSERT_NEAR(qGreen(pixel), white ? 253 : 3, 6) << name << ' ' << x << ' ' << y;
                ASSERT_NEAR(qRed(pixel), qBlue(pixel), 4) << name << ' ' << x << ' ' << y;
            }
        }
    }
}

TEST_F(FramesTest, StandUpright) {
    // The white quarter is at the top left of the stored picture.
    struct Case {
        int turn;
        QSize size;
        QPoint white;
    };
    for (const auto& [turn, size, white] : {Case{0, {320, 180}, {20, 20}}, Case{90, {180, 320}, {160, 20}},
                                            Case{180, {320, 180}, {300, 160}}, Case{270, {180, 320}, {20, 300}}}) {
        const auto file = clip("turned.mp4", {.muxer = "mp4", .encoder = "libx264", .frames = 5, .turn = turn});
        const QImage picture = media::clipThumbnail(file, 512);
        ASSERT_EQ(picture.size(), size) << turn;
        EXPECT_GT(qGreen(picture.pixel(white)), 200) << turn;
        const QPoint opposite(size.width() - 1 - white.x(), size.height() - 1 - white.y());
        EXPECT_LT(qGreen(picture.pixel(opposite)), 100) << turn;
    }
}

TEST_F(FramesTest, ScrubbingMakesOneFrameOfAFileAtATime) {
    const auto file = clip("a.mp4", {.muxer = "mp4", .encoder = "libx264"});
    writeFile(folder / "none.mp4", "no clip");
    QThreadPool pool;
    VideoScrubber scrubber(pool);
    int answers = 0;
    QImage last;
    const auto take = [&](const QImage& frame) {
        ++answers;
        last = frame;
    };
    pool.setMaxThreadCount(1);
    EXPECT_TRUE(scrubber.frame(file, 0, take));
    EXPECT_FALSE(scrubber.frame(file, 1, take));
    EXPECT_TRUE(scrubber.frame(folder / "none.mp4", 0, [&](const QImage& frame) {
        EXPECT_TRUE(frame.isNull());
        ++answers;
    }));
    pool.waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(answers, 2);
    EXPECT_EQ(last.size(), QSize(320, 180));

    // Another clip under the same name is opened anew.
    clip("a.mp4", {.muxer = "mp4", .encoder = "libx264", .width = 100, .height = 200});
    EXPECT_TRUE(scrubber.frame(file, 1, take));
    pool.waitForDone();
    QCoreApplication::processEvents();
    EXPECT_EQ(last.size(), QSize(100, 200));
}

} // namespace

} // namespace quillary
