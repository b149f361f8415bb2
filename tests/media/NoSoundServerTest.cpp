#include "media/PreviewTest.h"

namespace quillary::test {

namespace {

class NoSoundServerTest : public PreviewTest {
protected:
    NoSoundServerTest()
        : PreviewTest([this] {
            const QByteArray place = QByteArray::fromStdString(folder.path().string());
            qputenv("PULSE_SERVER", "unix:" + place + "/nobody");
            qputenv("XDG_RUNTIME_DIR", place);
            return platform::systemAudioOutput();
        }) {}
};

TEST_F(NoSoundServerTest, PlayingSaysThatThereIsNoOutputAndWaveformsAreThere) {
    const auto file = writeFile(folder / "a.wav", waveFile({.frames = 44100}, wobblingTone(440, 44100)));
    for (int attempt = 0; attempt < 2; ++attempt) EXPECT_EQ(problemOf(file), "There is no sound output.");
    std::size_t peaks = 0;
    preview.peaks(file, 100, {}, [&](const auto& read) { peaks = read ? read->size() : 0; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return peaks == 100; }, 20'000));
}

} // namespace

} // namespace quillary::test
