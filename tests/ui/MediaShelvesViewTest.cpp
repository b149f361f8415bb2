#include "samples/Media.h"
#include "ui/ShelfRows.h"
#include "ui/ShownPanel.h"

namespace quillary::test {

namespace {

class MediaShelvesViewTest : public ShownPanel {
protected:
    MediaShelvesViewTest() { stage.model.setTab(PanelModel::Tab::library); }
    std::filesystem::path shelf(const char* name) { return stage.root() / "Library" / name; }
    /// The grid of the page that is shown.
    QQuickItem* grid() {
        for (auto* grid : stage.view->findChildren<QQuickItem*>(QStringLiteral("tiles")))
            if (grid->isVisible()) return grid;
        return nullptr;
    }
    QQuickItem* row(const QString& name) {
        for (auto* item : itemsBelow(grid()))
            if (item->property("grid").isValid() && item->property("name") == name) return item;
        return nullptr;
    }
    template <typename Part>
    static Part* named(const QList<Part*>& parts, const char* className) {
        for (auto* part : parts)
            if (QByteArray(part->metaObject()->className()).contains(className)) return part;
        return nullptr;
    }
    static QObject* scrubOf(QQuickItem* tile) { return named(tile->findChildren<QObject*>(), "ClipScrub"); }
    static QStringList textsIn(QQuickItem* item) {
        QStringList texts;
        for (auto* part : itemsBelow(item))
            if (part->isVisible() && part->property("text").isValid()) texts << part->property("text").toString();
        return texts;
    }
    QPoint inside(QQuickItem* item, double fraction) {
        return item->mapToScene({item->width() * fraction, item->height() / 2}).toPoint();
    }
};

class SoundRowsTest : public MediaShelvesViewTest {
protected:
    SoundRowsTest() {
        // A sample tells where it lies.
        const Pcm pcm{.rate = 8000, .channels = 1, .frames = 8000 * 30};
        for (const char* name : {"a.wav", "b.wav"})
            writeFile(shelf("Audio") / name,
                      waveFile(pcm, [](std::int64_t i, int) { return static_cast<double>(i / 10) / 32767.0; }));
        writeFile(shelf("Audio") / "broken.wav", "nothing to hear");
        stage.model.setLibraryKind(PanelModel::LibraryKind::audio);
        audio.setAudioSort(AudioShelf::AudioSort::name);
        audio.refreshAudio();
        EXPECT_TRUE(
            comesTrue([this] { return audio.durationsRemaining() == 0 && audio.audioDurations().size() == 2; }));
        const auto read = [this](const char* name) {
            return row(QString::fromLatin1(name)) && wave(name)->property("ready").toBool();
        };
        EXPECT_TRUE(comesTrue([&] { return grid() && read("a") && read("b"); }));
    }
    QQuickItem* wave(const char* name) { return named(itemsBelow(row(QString::fromLatin1(name))), "Waveform"); }
    int current() { return grid()->property("currentIndex").toInt(); }
    AudioShelf& audio = *stage.model.audioShelf();
    AudioPreview& preview = *audio.preview();
};

TEST_F(SoundRowsTest, AreMovedInAndPlayedByKeyboard) {
    grid()->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
    press(Qt::Key_Space);
    ASSERT_TRUE(comesTrue([&] { return preview.isPlaying() && preview.progress() > 0; }));
    EXPECT_EQ(preview.url(), shelf("Audio") / "a.wav");
    press(Qt::Key_Space);
    EXPECT_FALSE(preview.isPlaying());

    press(Qt::Key_Down);
    EXPECT_EQ(current(), 1);
    press(Qt::Key_Right);
    ASSERT_TRUE(comesTrue([&] { return preview.isPlaying() && preview.progress() > 0.1; }));
    EXPECT_EQ(preview.url(), shelf("Audio") / "b.wav");
    // Once more, from the beginning.
    const int starts = sound.starts;
    press(Qt::Key_Right);
    EXPECT_LT(preview.progress(), 0.1);
    ASSERT_TRUE(comesTrue([&] { return sound.starts > starts && sound.firstSample == 0; }));
    EXPECT_EQ(current(), 1);
    press(Qt::Key_Left);
    EXPECT_FALSE(preview.isPlaying());
    EXPECT_EQ(current(), 1);
    press(Qt::Key_Up);
    EXPECT_EQ(current(), 0);
}

TEST_F(SoundRowsTest, PlayWhereTheyAreClickedAndFollowTheHand) {
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, inside(wave("b"), 0.5));
    EXPECT_TRUE(preview.isPlaying());
    EXPECT_NEAR(preview.progress(), 0.5, 0.05);
    EXPECT_EQ(preview.url(), shelf("Audio") / "b.wav");
    preview.stop();

    QTest::mousePress(&stage.window, Qt::LeftButton, {}, inside(wave("a"), 0.2));
    for (const double at : {0.25, 0.4, 0.6, 0.8}) QTest::mouseMove(&stage.window, inside(wave("a"), at));
    EXPECT_NEAR(preview.progress(), 0.8, 0.02);
    EXPECT_EQ(preview.url(), shelf("Audio") / "a.wav");
    QTest::mouseRelease(&stage.window, Qt::LeftButton, {}, inside(wave("a"), 0.8));
    EXPECT_TRUE(preview.isPlaying());
    preview.stop();

    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, inside(row(QStringLiteral("a")), 0.04));
    EXPECT_TRUE(preview.isPlaying());
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, inside(row(QStringLiteral("a")), 0.04));
    EXPECT_FALSE(preview.isPlaying());
}

TEST_F(SoundRowsTest, SayWhatIsWrongAndWhatTheyAre) {
    const QString damaged = QStringLiteral("The file is damaged or of an unknown kind.");
    ASSERT_TRUE(comesTrue([&] { return textsIn(row(QStringLiteral("broken"))).contains(damaged); }));
    EXPECT_TRUE(textsIn(row(QStringLiteral("a"))).contains(QStringLiteral("0:30")));
    const auto spoken = [&](const char* name, QAccessible::Text what) {
        return QAccessible::queryAccessibleInterface(row(QString::fromLatin1(name)))->text(what);
    };
    EXPECT_EQ(spoken("a", QAccessible::Name), u"a");
    EXPECT_EQ(spoken("a", QAccessible::Description), u"0:30");
    EXPECT_EQ(spoken("broken", QAccessible::Description), damaged);

    sound.failure = platform::AudioOutput::Failure::noDevice;
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, inside(wave("b"), 0.5));
    EXPECT_TRUE(comesTrue(
        [&] { return textsIn(row(QStringLiteral("b"))).contains(QStringLiteral("There is no sound output.")); }));
}

TEST_F(MediaShelvesViewTest, ClipsShowTheFrameUnderThePointer) {
    encode(shelf("Videos") / "clip.mp4", ClipFile{.muxer = "mp4", .encoder = "libx264", .frames = 200});
    writeFile(shelf("Videos") / "broken.mp4", "no clip");
    VideoShelf& videos = *stage.model.videoShelf();
    stage.model.setLibraryKind(PanelModel::LibraryKind::videos);
    videos.refreshVideos();
    ASSERT_TRUE(comesTrue([&] { return grid() && row(QStringLiteral("clip")); }));
    auto* const tile = row(QStringLiteral("clip"));
    ASSERT_TRUE(comesTrue([&] { return textsIn(tile).contains(QStringLiteral("0:08")); }));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(tile)->text(QAccessible::Description), u"0:08");
    QObject* const scrub = scrubOf(tile);
    ASSERT_TRUE(scrub);
    const auto brightness = [&] {
        const auto frame = scrub->property("scrubFrame").value<QImage>();
        return frame.isNull() ? -1 : qGreen(frame.pixel(frame.width() * 3 / 4, frame.height() / 2));
    };
    // Later frames are brighter.
    QTest::mouseMove(&stage.window, inside(tile, 0.1));
    ASSERT_TRUE(comesTrue([&] { return brightness() >= 0; }));
    wait(200);
    const int early = brightness();
    QTest::mouseMove(&stage.window, inside(tile, 0.9));
    ASSERT_TRUE(comesTrue([&] { return brightness() > early + 50; }));
    QTest::mouseMove(&stage.window, {5, 5});
    ASSERT_TRUE(comesTrue([&] { return brightness() == -1; }));

    // A broken one stays as it is.
    QTest::mouseMove(&stage.window, inside(row(QStringLiteral("broken")), 0.5));
    wait(100);
    EXPECT_TRUE(scrubOf(row(QStringLiteral("broken")))->property("scrubFrame").value<QImage>().isNull());
}

} // namespace

} // namespace quillary::test
