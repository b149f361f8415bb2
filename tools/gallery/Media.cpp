#include "samples/Media.h"
#include "Chapter.h"

#include <QMouseEvent>
#include <cmath>

namespace quillary::gallery {

namespace {

using namespace test;

class Media : public Chapter {
public:
    using Chapter::Chapter;

    void takeAll() {
        takeSounds();
        takeClips();
    }

private:
    void point(QPointF at) {
        for (const double step : {0.0, 2.0}) {
            QMouseEvent move(QEvent::MouseMove, at + QPointF(step, 0), at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&stage.window, &move);
        }
    }

    void takeSounds() {
        AudioShelf& audio = *stage.model.audioShelf();
        stage.model.setTab(PanelModel::Tab::library);
        stage.model.setLibraryKind(PanelModel::LibraryKind::audio);
        audio.refreshAudio();
        take("audio-empty");
        const auto shelf = stage.root() / "Library" / "Audio";
        const auto add = [&](const char* name, double seconds, double fade) {
            constexpr int rate = 22050;
            const auto frames = static_cast<std::int64_t>(seconds * rate);
            writeFile(shelf / name, waveFile({.rate = rate, .channels = 1, .frames = frames},
                                             [=, tone = wobblingTone(90, rate)](std::int64_t i, int) {
                                                 const double t = static_cast<double>(i) / static_cast<double>(frames);
                                                 return tone(i, 0) * std::sin(t * 3.14) * std::exp(-fade * t) *
                                                        (0.6 + 0.4 * std::sin(t * 300));
                                             }));
        };
        add("Whoosh deep.wav", 2.4, 2);
        add("Whoosh short.wav", 0.6, 5);
        add("Whoosh metal.wav", 1.1, 1);
        add("Whoosh reverse long with a name that does not fit.wav", 14, -2);
        add("Ambience/Rain on a roof.wav", 95, 0);
        writeFile(shelf / "Broken.wav", "no sound");
        audio.refreshAudio();
        comesTrue([&] { return audio.audioDurations().size() == 5; });
        audio.setAudioSort(AudioShelf::AudioSort::name);
        take("audio");
        const auto urlOf = [&](const char* name) {
            return audio.visibleModel()->urlAt(audio.visibleModel()->rowNamed(QString::fromUtf8(name), 0));
        };
        audio.toggleFavorite(urlOf("Whoosh metal"));
        audio.play(urlOf("Whoosh rev"), 0);
        comesTrue([&] { return audio.preview()->progress() > 0.4; }, 4000);
        take("audio-playing");
        audio.preview()->stop();
        audio.setSearch(QStringLiteral("whoosh"));
        take("audio-search");
        audio.setSearch(QStringLiteral("zzz"));
        take("audio-no-match");
        audio.setSearch({});
        audio.setNote(QStringLiteral("Added 2 sounds"));
        audio.selection()->toggle(1, 0);
        take("audio-selected");
        take("audio-small", small);
        take("audio-large", large);
        audio.selection()->clear();
        sound.failure = platform::AudioOutput::Failure::noDevice;
        audio.play(urlOf("Whoosh metal"), 0);
        take("audio-no-output");
    }

    void takeClips() {
        VideoShelf& videos = *stage.model.videoShelf();
        stage.model.setLibraryKind(PanelModel::LibraryKind::videos);
        videos.refreshVideos();
        take("videos-empty");
        const auto shelf = stage.root() / "Library" / "Videos";
        const auto add = [&](const char* name, const ClipFile& kind) {
            std::filesystem::create_directories((shelf / name).parent_path());
            encode(shelf / name, kind);
        };
        add("Harbour pass.mp4", {.muxer = "mp4", .encoder = "libx264", .width = 640, .height = 360, .frames = 200});
        add("Portrait.mov", {.muxer = "mov", .encoder = "mpeg4", .width = 640, .height = 360, .turn = 90});
        add("Drone/Cliffs at dusk.mp4", {.muxer = "mp4", .encoder = "libx264", .width = 640, .height = 272});
        writeFile(shelf / "River 4K.mp4", "no clip");
        videos.refreshVideos();
        comesTrue([&] { return videos.count() == 4; });
        take("videos");
        point({280, 200});
        take("videos-scrub");
        point({5, 5});
        videos.selection()->toggle(0, 0);
        videos.setNote(QStringLiteral("Added 1 video"));
        take("videos-selected");
        take("videos-small", small);
        take("videos-large", large);
        stage.view->setProperty("dark", false);
        take("light-videos");
        stage.model.setLibraryKind(PanelModel::LibraryKind::audio);
        take("light-audio");
    }
};

} // namespace

void takeMedia(const QString& folder) {
    Media(folder).takeAll();
}

} // namespace quillary::gallery
