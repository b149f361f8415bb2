#include "media/PreviewTest.h"

#include <sys/stat.h>

namespace quillary {

namespace {

using namespace test;

TEST(AsyncSemaphoreTest, ServesInTheOrderOfArrivalAndPassesOverWhoLeft) {
    AsyncSemaphore semaphore(3);
    std::string order;
    const auto waiter = [&](char name, bool stays = true) {
        return [&order, name, stays] {
            order += name;
            return stays;
        };
    };
    for (const char name : {'a', 'b', 'c', 'd'}) semaphore.wait(waiter(name));
    semaphore.wait(waiter('e', false));
    semaphore.wait(waiter('f'));
    EXPECT_EQ(order, "abc");
    semaphore.signal();
    EXPECT_EQ(order, "abcd");
    semaphore.signal();
    EXPECT_EQ(order, "abcdef");
    semaphore.signal();
    EXPECT_EQ(semaphore.permits(), 1);
    semaphore.wait(waiter('g', false));
    EXPECT_EQ(semaphore.permits(), 1);
}

class AudioPreviewTest : public PreviewTest {
protected:
    std::filesystem::path sound(const char* name, std::int64_t frames, int rate = 8000) {
        // The sample tells where it lies.
        const Pcm pcm{.rate = rate, .channels = 1, .frames = frames};
        return writeFile(folder / name,
                         waveFile(pcm, [](std::int64_t i, int) { return static_cast<double>(i % 30000) / 32767; }));
    }
};

TEST_F(AudioPreviewTest, PlaysFromAFractionToTheEnd) {
    const auto file = sound("a.wav", 16000);
    preview.play(file, 0.5);
    EXPECT_TRUE(preview.isPlaying());
    waitForTheEnd();
    EXPECT_EQ(log.starts, 1);
    EXPECT_EQ(log.rate, 8000);
    EXPECT_NEAR(log.firstSample, 8000, 8);
    EXPECT_EQ(preview.progress(), 1);
    EXPECT_EQ(preview.duration(), 2);
    EXPECT_EQ(preview.problem(), QString());

    preview.play(file, -3, 2.0);
    EXPECT_EQ(preview.progress(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.starts == 2; }, 5000));
    preview.stop();
    EXPECT_FALSE(preview.isPlaying());
    QTest::qWait(60);
    EXPECT_FALSE(preview.isPlaying());
}

TEST_F(AudioPreviewTest, ScrubbingHearsTheLastPlace) {
    const auto file = sound("a.wav", 80000);
    for (const double fraction : {0.1, 0.2, 0.3, 0.25}) preview.scrub(file, fraction, 10.0);
    EXPECT_EQ(preview.progress(), 0.25);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.starts == 2 && log.firstSample > 15000; }, 5000));
    EXPECT_NEAR(log.firstSample, 20000, 8);
}

TEST_F(AudioPreviewTest, SaysWhyItCannotPlay) {
    const auto pipe = folder / "pipe.wav";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(problemOf(pipe), "The file couldn’t be read.");
    EXPECT_EQ(problemOf(writeFile(folder / "text.wav", "no sound")), "The file is damaged or of an unknown kind.");
    EXPECT_EQ(problemOf(sound("none.wav", 0)), "The file holds nothing to play.");
    const auto whole = writeFile(folder / "whole.wav", waveFile({.frames = 8000}, wobblingTone(300, 44100)));
    log.failure = platform::AudioOutput::Failure::noDevice;
    EXPECT_EQ(problemOf(whole), "There is no sound output.");
    log.failure = platform::AudioOutput::Failure::none;
    EXPECT_EQ(problemOf(whole), "");
    // Cut off while it plays: what was read is heard, and then it is over.
    const auto growing = writeFile(folder / "a.wav", waveFile({.frames = 44100 * 30}, wobblingTone(300, 44100)));
    preview.play(growing, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.starts > 0; }, 8000));
    std::filesystem::resize_file(growing, 44 + 44100);
    waitForTheEnd();
}

TEST_F(AudioPreviewTest, WaveformsAreReadOnceAndSurviveARestart) {
    const auto file = sound("a.wav", 8000);
    const auto peaksOf = [&](AudioPreview& from, const std::filesystem::path& url) {
        std::optional<AudioPreview::PeakList> answer;
        from.peaks(url, 100, {}, [&](const auto& peaks) { answer = peaks; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 5000));
        return answer.value();
    };
    const auto first = peaksOf(preview, file);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->size(), 100u);
    // The same date and size: what is known is not read again.
    const auto date = std::filesystem::last_write_time(file);
    writeFile(file, std::string(std::filesystem::file_size(file), 'x'));
    std::filesystem::last_write_time(file, date);
    EXPECT_EQ(peaksOf(preview, file), first);
    AudioPreview restarted({settings, pool, folder / "cache", [] { return nullptr; }});
    EXPECT_EQ(peaksOf(restarted, file), first);
    writeFile(file, "another size");
    EXPECT_EQ(peaksOf(restarted, file).error(), media::MediaError::unknownKind);

    // Rows that went are not answered, those after them are.
    std::stop_source gone;
    int answers = 0;
    for (int i = 0; i < 500; ++i)
        preview.peaks(sound("b.wav", 8000), 2000, gone.get_token(), [&](const auto&) { ++answers; });
    gone.request_stop();
    EXPECT_TRUE(peaksOf(preview, sound("c.wav", 8000)));
    EXPECT_EQ(answers, 0);
}

} // namespace

} // namespace quillary
