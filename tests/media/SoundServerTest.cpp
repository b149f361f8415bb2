#include "media/PreviewTest.h"

#include <QProcess>
#include <cmath>
#include <numbers>

namespace quillary {

namespace {

using namespace test;
using namespace Qt::StringLiterals;

constexpr int recordedRate = 48000;

/// What came out of a sink: where it was not silent.
struct Heard {
    std::vector<std::int16_t> samples; ///< from the first to the last that is no silence
    int peak = 0;

    double seconds() const { return static_cast<double>(samples.size()) / recordedRate; }
    double hertz() const {
        constexpr int clear = 800;
        int waves = 0;
        bool low = false;
        for (const int sample : samples) {
            waves += low && sample > clear;
            low = sample < -clear || (low && sample <= clear);
        }
        return waves / seconds();
    }
};

/// A sound server of the test's own, with two sinks that nobody hears.
class SoundServerTest : public PreviewTest {
protected:
    SoundServerTest() : PreviewTest(platform::systemAudioOutput) {}
    static void SetUpTestSuite() {
        s_folder = new TemporaryFolder;
        const QString folder = QString::fromStdString(s_folder->path().string());
        qputenv("PULSE_SERVER", "unix:" + folder.toUtf8() + "/native");
        qputenv("XDG_RUNTIME_DIR", folder.toUtf8());
        qputenv("PULSE_COOKIE", folder.toUtf8() + "/cookie");
        s_server = new QProcess;
        s_server->start(u"pulseaudio"_s,
                        {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"-L"_s,
                         u"module-native-protocol-unix auth-anonymous=1 socket=%1/native"_s.arg(folder), u"-L"_s,
                         u"module-null-sink sink_name=first rate=48000"_s, u"-L"_s,
                         u"module-null-sink sink_name=second rate=48000"_s});
        ASSERT_TRUE(s_server->waitForStarted());
        ASSERT_TRUE(QTest::qWaitFor([] { return tell({u"info"_s}); }, 10000));
        tell({u"set-default-sink"_s, u"first"_s});
    }
    static void TearDownTestSuite() {
        s_server->terminate();
        s_server->waitForFinished(5000);
        delete s_server;
        delete s_folder;
    }
    static bool tell(const QStringList& words) { return QProcess::execute(u"pactl"_s, words) == 0; }

    static QProcess* recorder(const QString& sink) {
        auto* const process = new QProcess;
        process->start(u"parec"_s, {u"-d"_s, sink + u".monitor"_s, u"--raw"_s, u"--format=s16le"_s, u"--channels=1"_s,
                                    u"--rate=%1"_s.arg(recordedRate), u"--latency-msec=20"_s});
        // It records as soon as the first bytes come.
        EXPECT_TRUE(process->waitForReadyRead(10000));
        return process;
    }
    static Heard heardBy(QProcess* process) {
        QTest::qWait(300);
        process->terminate();
        process->waitForFinished(5000);
        const QByteArray bytes = process->readAll();
        delete process;
        const auto* const all = reinterpret_cast<const std::int16_t*>(bytes.constData());
        const auto count = static_cast<std::size_t>(bytes.size()) / sizeof(std::int16_t);
        constexpr int audible = 100;
        Heard heard;
        std::size_t first = count, last = 0;
        for (std::size_t i = 0; i < count; ++i) {
            heard.peak = std::max<int>(heard.peak, std::abs(all[i]));
            if (std::abs(all[i]) < audible) continue;
            first = std::min(first, i);
            last = i + 1;
        }
        if (first < last) heard.samples.assign(all + first, all + last);
        return heard;
    }

    std::filesystem::path tone(const std::string& name, const SoundFile& kind) {
        const Sound sound = [rate = kind.pcm.rate](std::int64_t i, int) {
            return 0.5 * std::sin(2 * std::numbers::pi * 440 * static_cast<double>(i) / rate);
        };
        encode(folder / name, kind, sound);
        return folder / name;
    }
    /// On a machine that has too much to do the recorder misses a part now and then, but it never makes anything up:
    /// of some recordings the longest is the true one.
    Heard playedFrom(const std::filesystem::path& file, double fraction, double expected) {
        constexpr int attempts = 4;
        Heard best;
        for (int i = 0; i < attempts && best.seconds() < expected - 0.005; ++i) {
            QProcess* const process = recorder(u"first"_s);
            preview.play(file, fraction);
            waitForTheEnd();
            EXPECT_EQ(preview.problem(), QString());
            Heard heard = heardBy(process);
            if (heard.seconds() > best.seconds()) best = std::move(heard);
        }
        return best;
    }

    static inline TemporaryFolder* s_folder = nullptr;
    static inline QProcess* s_server = nullptr;
};

TEST_F(SoundServerTest, ATonePlaysWholeAtItsPitchAndVolume) {
    const auto file = tone("a.wav", {"wav", "pcm_s16le", {44100, 2, 44100 * 3 / 2}});
    preview.setVolume(1);
    const Heard loud = playedFrom(file, 0, 1.5);
    EXPECT_NEAR(loud.seconds(), 1.5, 0.03);
    EXPECT_NEAR(loud.hertz(), 440, 2);
    EXPECT_NEAR(loud.peak, 16384, 500);
    preview.setVolume(0.25);
    EXPECT_NEAR(playedFrom(file, 0.5, 0.75).peak, 4096, 200);
}

TEST_F(SoundServerTest, SeekingIsExactInEveryFormat) {
    preview.setVolume(0.7);
    const Pcm pcm{44100, 2, 44100 * 4};
    for (const auto& [name, muxer, encoder] : {std::tuple{"a.wav", "wav", "pcm_s16le"},
                                               {"a.mp3", "mp3", "libmp3lame"},
                                               {"a.m4a", "ipod", "aac"},
                                               {"a.flac", "flac", "flac"},
                                               {"a.aac", "adts", "aac"}}) {
        const Heard heard = playedFrom(tone(name, {muxer, encoder, pcm}), 0.75, 1);
        EXPECT_NEAR(heard.seconds(), 1, 0.03) << name;
        EXPECT_NEAR(heard.hertz(), 440, 3) << name;
    }
}

TEST_F(SoundServerTest, ThePlaybackFollowsTheDefaultOutput) {
    const auto file = tone("a.wav", {"wav", "pcm_s16le", {48000, 1, 48000 * 3}});
    QProcess* const second = recorder(u"second"_s);
    preview.play(file, 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return preview.progress() > 0.3; }, 10000));
    ASSERT_TRUE(tell({u"set-default-sink"_s, u"second"_s}));
    waitForTheEnd();
    EXPECT_EQ(preview.problem(), QString());
    const Heard heard = heardBy(second);
    EXPECT_GT(heard.seconds(), 1);
    EXPECT_LT(heard.seconds(), 2.4);
    tell({u"set-default-sink"_s, u"first"_s});
}

} // namespace

} // namespace quillary
