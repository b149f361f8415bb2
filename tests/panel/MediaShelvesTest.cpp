#include "media/LengthLabel.h"
#include "panel/PanelModelFixture.h"
#include "samples/Clips.h"
#include "samples/Media.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

class MediaShelvesTest : public PanelModelTest {
protected:
    MediaShelvesTest() {
        model->setTab(PanelModel::Tab::library);
        model->setLibraryKind(PanelModel::LibraryKind::audio);
    }

    VideoShelf& videos() { return *model->videoShelf(); }
    fs::path shelf(const char* name) { return root() / "Library" / name; }

    fs::path sound(const fs::path& file, double seconds) {
        const auto frames = static_cast<std::int64_t>(seconds * 8000);
        return writeFile(file, waveFile({.rate = 8000, .channels = 1, .frames = frames}, wobblingTone(200, 8000)));
    }
    void drop(const std::vector<fs::path>& files) {
        std::vector<platform::ItemProvider> items;
        for (const auto& file : files) items.push_back(platform::ItemProvider::file(file));
        model->handleDrop(items);
    }
    std::string names() {
        std::string names;
        for (const LibraryItem& item : audio().visibleAudio()) names += item.url.path().stem().string() + ' ';
        return names;
    }
    QString note(const Shelf& of) { return of.noteText(); }
};

TEST_F(MediaShelvesTest, LengthsAreReadInBatchesAndKept) {
    for (int i = 0; i < 301; ++i) sound(shelf("Audio") / (std::to_string(i) + ".wav"), 0.01);
    std::vector<int> remaining;
    QObject::connect(&audio(), &AudioShelf::durationsRemainingChanged, [&] {
        if (remaining.empty() || remaining.back() != audio().durationsRemaining())
            remaining.push_back(audio().durationsRemaining());
    });
    audio().refreshAudio();
    ASSERT_TRUE(comesTrue([&] { return audio().audioDurations().size() == 301; }));
    settle();
    EXPECT_EQ(remaining, (std::vector<int>{0, 301, 1, 0}));
    const fs::path kept = shelf("Audio") / ".audio-durations.json";
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(kept))).object().size(), 301);

    // Another start knows them; a file that changed is read again.
    make();
    sound(shelf("Audio") / "7.wav", 2);
    fs::last_write_time(shelf("Audio") / "7.wav", fs::file_time_type::clock::now() + std::chrono::hours(1));
    audio().refreshAudio();
    ASSERT_TRUE(comesTrue([&] { return audio().audioDurations().size() == 301; }));
    settle();
    EXPECT_EQ(audio().durationsWanted(), 1);
    EXPECT_EQ(audio().audioDurations().at(shelf("Audio") / "7.wav"), 2);
    EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(readFile(kept))).object().size(), 301);
}

TEST_F(MediaShelvesTest, SoundsAreSortedByLengthUnknownOnesLast) {
    sound(shelf("Audio/Hits") / "two.wav", 2);
    sound(shelf("Audio") / "half.wav", 0.5);
    writeFile(shelf("Audio") / "broken.wav", "nothing");
    sound(shelf("Audio") / "one.wav", 1);
    audio().refreshAudio();
    ASSERT_TRUE(comesTrue([&] { return audio().audioDurations().size() == 3; }));
    audio().setAudioSort(AudioShelf::AudioSort::shortest);
    EXPECT_EQ(names(), "half one two broken ");
    audio().setSearch(QStringLiteral("O"));
    EXPECT_EQ(names(), "one two broken ");

    audio().rename(urlOf(shelf("Audio") / "one.wav"), QStringLiteral("eno"));
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Renamed to “eno”"; }));
    EXPECT_EQ(audio().audioDurations().at(shelf("Audio") / "eno.wav"), 1);
}

TEST_F(MediaShelvesTest, LabelsOfLengths) {
    for (const auto& [seconds, label] : {std::pair{0.0, ""},
                                         {0.04, "0.0s"},
                                         {2.44, "2.4s"},
                                         {10.0, "0:10"},
                                         {14.9, "0:14"},
                                         {72.0, "1:12"},
                                         {43200.0, "720:00"}})
        EXPECT_EQ(lengthLabel(seconds), QLatin1String(label));
}

TEST_F(MediaShelvesTest, DropsAddWhatIsOfTheShelfsKind) {
    writeFile(folder / "text.txt", "no sound");
    audio().setCollectionFilter(CollectionFilter::named(QStringLiteral("Hits")));
    drop({sound(folder / "in/one.wav", 1), folder / "text.txt"});
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Added 1 sound"; }));
    EXPECT_TRUE(fs::exists(shelf("Audio") / "Hits/one.wav"));
    sound(folder / "in/two.wav", 1);
    drop({folder / "in"});
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Added 2 sounds"; }));
    EXPECT_TRUE(model->importQueue()->offersFolders());
    EXPECT_TRUE(model->importQueue()->summary().isEmpty()) << "the note says it already";
    drop({folder / "text.txt"});
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Those aren’t audio files"; }));
    platform::ItemProvider nothing;
    nothing.registerData(QStringLiteral("application/x-other"), "x");
    model->handleDrop({nothing});
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Nothing readable in that drop"; }));

    model->setLibraryKind(PanelModel::LibraryKind::videos);
    writeFile(folder / "clip.MP4", "any bytes");
    drop({folder / "clip.MP4", folder / "in/one.wav"});
    ASSERT_TRUE(comesTrue([&] { return note(videos()) == u"Added 1 video"; }));
    drop({folder / "in/one.wav"});
    ASSERT_TRUE(comesTrue([&] { return note(videos()) == u"Those aren’t video files"; }));
    model->handleDrop({nothing});
    ASSERT_TRUE(comesTrue([&] { return note(videos()) == u"That drag carried no Final Cut clip"; }));
}

TEST_F(MediaShelvesTest, ASingleClipIsReducedToItsFile) {
    const auto dropClip = [this](const fs::path& media) {
        platform::ItemProvider clip;
        clip.registerData(QStringLiteral("com.apple.finalcutpro.xml"), singleClip({.file = media}));
        model->handleDrop({clip});
    };
    const fs::path media = sound(folder / "Wind & rain.wav", 1);
    dropClip(media);
    ASSERT_TRUE(comesTrue([&] { return audio().count() == 1; }));
    EXPECT_EQ(note(audio()).toStdString(), "Added 1 sound");
    EXPECT_EQ(readFile(audio().audio().front().url), readFile(media));

    // Of another kind it is refused, and stored nowhere.
    writeFile(folder / "clip.mov", "frames");
    dropClip(folder / "clip.mov");
    ASSERT_TRUE(comesTrue([&] { return note(audio()) == u"Those aren’t audio files"; }));
    EXPECT_FALSE(fs::exists(shelf("Videos") / "clip.mov"));
    EXPECT_EQ(model->libraryKind(), PanelModel::LibraryKind::audio);
    // A document as a file is no sound either.
    writeFile(folder / "clip.fcpxml", singleClip({.file = folder / "clip.mov"}).toStdString());
    drop({folder / "clip.fcpxml"});
    settle();
    EXPECT_EQ(note(audio()), u"Those aren’t audio files");
}

} // namespace

} // namespace quillary::test
