#pragma once

#include "library/AppSettings.h"
#include "media/AudioPreview.h"
#include "samples/Media.h"
#include "support/FakeAudioOutput.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QTest>
#include <gtest/gtest.h>

namespace quillary::test {

/// A preview that plays through the system's output, or through one whose log can be read.
class PreviewTest : public testing::Test {
protected:
    PreviewTest() : PreviewTest([this] { return std::make_unique<FakeAudioOutput>(log); }) {}
    explicit PreviewTest(SoundPlayer::MakeOutput output)
        : preview({settings, pool, folder / "cache", std::move(output)}) {}

    void waitForTheEnd() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return !preview.isPlaying(); }, 20'000));
    }
    /// Why it could not be played; empty when it could.
    std::string problemOf(const std::filesystem::path& file) {
        preview.play(file, 0);
        waitForTheEnd();
        return preview.problem().toStdString();
    }

    TemporaryFolder folder;
    FakeSettingsStore store;
    AppSettings settings{store};
    QThreadPool pool;
    FakeAudioOutput::Log log;
    AudioPreview preview;
};

} // namespace quillary::test
