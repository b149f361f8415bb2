#include "library/AppSettings.h"
#include "media/AudioPreview.h"
#include "media/TestMedia.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QTest>
#include <gtest/gtest.h>

namespace quillary::test {

namespace {

TEST(NoSoundServerTest, PlayingSaysThatThereIsNoOutputAndWaveformsAreThere) {
    const TemporaryFolder folder;
    qputenv("PULSE_SERVER", "unix:" + QByteArray::fromStdString((folder / "nobody").string()));
    qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(folder.path().string()));
    writeFile(folder / "a.wav", waveFile({.frames = 44100}, wobblingTone(440, 44100)));
    FakeSettingsStore store;
    AppSettings settings(store);
    QThreadPool pool;
    AudioPreview preview({settings, pool, folder / "cache", platform::systemAudioOutput});
    for (int attempt = 0; attempt < 2; ++attempt) {
        preview.play(folder / "a.wav", 0);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !preview.isPlaying(); }, 20'000));
        EXPECT_EQ(preview.problem(), QStringLiteral("There is no sound output."));
    }
    std::size_t peaks = 0;
    preview.peaks(folder / "a.wav", 100, {}, [&](const auto& read) { peaks = read ? read->size() : 0; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return peaks == 100; }, 20'000));
}

} // namespace

} // namespace quillary::test
