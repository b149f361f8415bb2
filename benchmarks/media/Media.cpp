#include "samples/Media.h"
#include "PlainReading.h"
#include "media/ClipFrames.h"
#include "media/MediaLength.h"
#include "media/Peaks.h"
#include "media/VideoScrubber.h"
#include "support/Rounds.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <cmath>
#include <cstdio>
#include <random>

#ifdef HAVE_TAGLIB
#include <fileref.h>
#endif

using namespace quillary;
using namespace quillary::benchmark;
using quillary::test::ClipFile;
using quillary::test::Pcm;
using quillary::test::SoundFile;

namespace {

/// Music to an encoder: some tones and some noise.
test::Sound busySound() {
    auto random = std::make_shared<std::minstd_rand>(5);
    return [random, tone = test::wobblingTone(220, 44100), high = test::wobblingTone(1730, 44100)](std::int64_t i,
                                                                                                   int channel) {
        const double noise = static_cast<double>((*random)()) / std::minstd_rand::max() - 0.5;
        return 0.6 * tone(i, channel) + 0.3 * high(i, channel) + 0.05 * noise;
    };
}

void peaks(const test::TemporaryFolder& folder, const Rounds::Options& options) {
    constexpr std::int64_t tenMinutes = 44100 * 600;
    for (const auto& [name, muxer, encoder] : {std::tuple{"long.wav", "wav", "pcm_s16le"},
                                               {"long.mp3", "mp3", "libmp3lame"},
                                               {"long.flac", "flac", "flac"},
                                               {"long.m4a", "ipod", "aac"}}) {
        const auto file = folder / name;
        test::encode(file, SoundFile{muxer, encoder, Pcm{44100, 2, tenMinutes}}, busySound());
        Rounds rounds(std::string("Peaks of 10 minutes, ") + name, options);
        if (file.extension() == ".wav")
            rounds.add("one pass over the file", [file] { passOver(file); });
        else
            rounds.add("libavcodec, decoded and dropped", [file] { decode(file); });
        rounds.add("readPeaks", [file] { static_cast<void>(media::readPeaks(file, media::waveformPeaks)); });
        rounds.print();
    }
}

void lengths(const test::TemporaryFolder& folder, const Rounds::Options& options) {
    std::vector<std::filesystem::path> files;
    for (const auto& [ending, muxer, encoder] :
         {std::tuple{".wav", "wav", "pcm_s16le"}, {".mp3", "mp3", "libmp3lame"}, {".m4a", "ipod", "aac"}}) {
        const auto first = folder / (std::string("short") + ending);
        test::encode(first, SoundFile{muxer, encoder, Pcm{44100, 2, 44100 * 2}}, busySound());
        for (int i = 0; i < 667; ++i) {
            files.push_back(folder / ("shorts/" + std::to_string(i) + ending));
            std::filesystem::create_directories(files.back().parent_path());
            std::filesystem::copy_file(first, files.back());
        }
    }
    files.resize(2000);
    Rounds rounds("Lengths of 2,000 short sounds", options);
#ifdef HAVE_TAGLIB
    rounds.add("TagLib, fast", [&] {
        for (const auto& file : files) TagLib::FileRef(file.c_str(), true, TagLib::AudioProperties::Fast);
    });
#endif
    rounds.add("libavformat with stream info", [&] {
        for (const auto& file : files) probedLength(file);
    });
    rounds.add("audioLength", [&] {
        for (const auto& file : files) static_cast<void>(media::audioLength(file));
    });
    rounds.print();
}

void frames(const test::TemporaryFolder& folder, const Rounds::Options& options) {
    const auto clip = folder / "clip.mp4";
    ClipFile kind{.muxer = "mp4",
                  .encoder = "libx264",
                  .width = 1920,
                  .height = 1080,
                  .frames = 500,
                  .rate = 25,
                  .keyEvery = 50,
                  .grain = true};
    for (const bool smooth : {true, false}) {
        kind.smooth = smooth;
        test::encode(clip, kind);
        Rounds thumbnails(smooth ? "Thumbnail of a 1080p clip" : "The same without smoothed block edges", options);
        thumbnails.add("one key frame, decoded without probing", [&] { decodeKeyFrame(clip, 2); });
        thumbnails.add("clipThumbnail", [&] { media::clipThumbnail(clip, 512); });
        thumbnails.print();
    }

    auto opened = media::ClipFrames::open(clip);
    if (!opened) return;
    std::vector<double> steps;
    for (int i = 0; i < 200; ++i) {
        const double at = std::fmod(i * 7.31, 20);
        steps.push_back(measured([&] {
                            static_cast<void>(opened->frame(at, VideoScrubber::tolerance, VideoScrubber::tolerance,
                                                            VideoScrubber::longestSide));
                        }).processor);
    }
    std::printf("\nScrub step over 1080p, a key frame every 2 s: median %.1f ms of processor time\n", median(steps));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto options = Rounds::options(argc, argv);
    const test::TemporaryFolder folder;
    lengths(folder, options);
    frames(folder, options);
    peaks(folder, options);
    return 0;
}
