#include "blocks/BlockFiles.h"
#include "samples/Clips.h"
#include "samples/Media.h"
#include "ui/ShelfRows.h"
#include "ui/ShownPanel.h"

namespace quillary::test {

namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using Kind = PanelModel::LibraryKind;

/// What a user does to the files of a shelf, and what is seen afterwards.
class ShelfCareTest : public ShownPanel {
protected:
    ShelfCareTest() {
        qputenv("XDG_DATA_HOME", QByteArray((stage.folder / "data").c_str()));
        stage.resize({380, 700});
        stage.model.setTab(PanelModel::Tab::library);
    }
    ~ShelfCareTest() override { qunsetenv("XDG_DATA_HOME"); }

    void open(Kind kind) {
        stage.model.setLibraryKind(kind);
        shelf = kind == Kind::images   ? static_cast<Shelf*>(stage.model.imagesShelf())
                : kind == Kind::videos ? static_cast<Shelf*>(stage.model.videoShelf())
                : kind == Kind::audio  ? static_cast<Shelf*>(stage.model.audioShelf())
                                       : static_cast<Shelf*>(stage.model.blocksShelf());
        shelf->refresh();
        EXPECT_TRUE(comesTrue([this] { return shelf->upToDate(); }));
    }
    fs::path on(const char* below) { return stage.root() / "Library" / below; }
    bool shows(const QString& name) { return shownRow(stage.view.get(), name) != nullptr; }
    bool comes(const QString& name) {
        return comesTrue([&] { return shows(name); }, 5'000);
    }
    bool goes(const QString& name) {
        return comesTrue([&] { return !shows(name); }, 5'000);
    }
    void click(const QString& name, Qt::KeyboardModifiers held = {}) {
        auto* row = shownRow(stage.view.get(), name);
        ASSERT_TRUE(row) << name.toStdString();
        QTest::mouseClick(&stage.window, Qt::LeftButton, held, row->mapToScene({row->width() / 2, 8}).toPoint());
    }
    QQuickItem* shownItem(const char* objectName) {
        for (auto* item : itemsBelow(stage.window.contentItem()))
            if (item->objectName() == QLatin1String(objectName) && item->isVisible()) return item;
        return nullptr;
    }
    std::string noteShown() {
        for (auto* item : itemsBelow(stage.view.get()))
            if (item->isVisible() && item->property("text") == shelf->noteText() && !shelf->noteText().isEmpty())
                return shelf->noteText().toStdString();
        return {};
    }
    fs::path sound(const char* name, int seconds = 600) {
        const Pcm pcm{.rate = 8000, .channels = 1, .frames = 8000 * seconds};
        return writeFile(on("Audio") / name, waveFile(pcm, wobblingTone(200, 8000)));
    }

    Shelf* shelf = nullptr;
};

TEST_F(ShelfCareTest, ARemovalNamesItsFileAndIsTakenBackOnEveryShelf) {
    const std::pair<Kind, fs::path> files[] = {
        {Kind::images, stage.file("library/Quillary/Library/Images/it.png", picture(40, 30))},
        {Kind::videos, writeFile(on("Videos/it.mp4"), "a clip")},
        {Kind::audio, sound("it.wav", 1)},
        {Kind::blocks, writeFile(on("Blocks/it.fcpxml"), richCompound(stage.folder / "media"))}};
    writeFile(posterPath(on("Blocks/it.fcpxml")), readFile(stage.file("poster.png", picture(20, 20))));
    for (const auto& [kind, file] : files) {
        SCOPED_TRACE(file.native());
        open(kind);
        ASSERT_TRUE(comes(u"it"_s));
        const std::string bytes = readFile(file);
        stage.model.favorites()->set(std::array{file}, true);
        click(u"it"_s);
        press(Qt::Key_Delete);
        ASSERT_TRUE(goes(u"it"_s));
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(noteShown(), "Removed “it” · Ctrl+Z undoes it");
        press(Qt::Key_Z, Qt::ControlModifier);
        ASSERT_TRUE(comes(u"it"_s));
        EXPECT_EQ(noteShown(), "Undid removing “it”");
        EXPECT_EQ(readFile(file), bytes);
        EXPECT_TRUE(shownRow(stage.view.get(), u"it"_s)->property("star").toBool());
        press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(goes(u"it"_s));
        press(Qt::Key_Z, Qt::ControlModifier);
        ASSERT_TRUE(comes(u"it"_s));
    }
    EXPECT_TRUE(fs::exists(posterPath(on("Blocks/it.fcpxml"))));
}

TEST_F(ShelfCareTest, ASelectionGoesAndComesAsOne) {
    for (const char* name : {"a.mp4", "b.mp4", "c.mp4"}) writeFile(on("Videos") / name, name);
    open(Kind::videos);
    ASSERT_TRUE(comes(u"a"_s) && comes(u"b"_s) && comes(u"c"_s));
    click(u"a"_s);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    ASSERT_TRUE(goes(u"a"_s) && goes(u"b"_s) && goes(u"c"_s));
    EXPECT_EQ(noteShown(), "Removed 3 files · Ctrl+Z undoes it");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(comes(u"a"_s) && comes(u"b"_s) && comes(u"c"_s));
}

TEST_F(ShelfCareTest, WhatIsTooLargeToComeBackIsAskedAbout) {
    const fs::path large = writeFile(on("Videos/large.mp4"), "");
    fs::resize_file(large, std::uintmax_t(3) << 30U); // a hole
    open(Kind::videos);
    ASSERT_TRUE(comes(u"large"_s));
    const auto ask = [&] {
        click(u"large"_s);
        press(Qt::Key_Delete);
        return comesTrue([&] { return shownItem("removeForGood") != nullptr; }, 5'000);
    };
    ASSERT_TRUE(ask());
    press(Qt::Key_Escape);
    EXPECT_TRUE(comesTrue([&] { return !shownItem("removeForGood"); }));
    EXPECT_TRUE(shows(u"large"_s) && fs::exists(large)) << "given up";
    ASSERT_TRUE(ask());
    QMetaObject::invokeMethod(shownItem("removeForGood"), "clicked");
    ASSERT_TRUE(goes(u"large"_s));
    EXPECT_EQ(noteShown(), "Removed “large” for good");
}

TEST_F(ShelfCareTest, TheTrashStandsBeforeARemovalInEveryMenu) {
    const std::pair<Kind, fs::path> files[] = {
        {Kind::images, stage.file("library/Quillary/Library/Images/it.png", picture(40, 30))},
        {Kind::videos, writeFile(on("Videos/it.mp4"), "a clip")},
        {Kind::audio, sound("it.wav", 1)},
        {Kind::blocks, writeFile(on("Blocks/it.fcpxml"), richCompound(stage.folder / "media"))}};
    for (const auto& [kind, file] : files) {
        SCOPED_TRACE(file.native());
        open(kind);
        ASSERT_TRUE(comes(u"it"_s));
        click(u"it"_s);
        press(Qt::Key_Menu);
        QStringList entries;
        ASSERT_TRUE(comesTrue([&] {
            entries.clear();
            std::set<qreal> heights;
            QList<std::pair<qreal, QString>> found;
            for (auto* item : itemsBelow(stage.window.contentItem()))
                if (item->isVisible() && item->inherits("QQuickMenuItem"))
                    found.emplace_back(item->mapToScene({0, 0}).y(), item->property("text").toString());
            std::ranges::sort(found);
            for (const auto& [y, text] : found) {
                entries << text;
                heights.insert(y);
            }
            return heights.size() > 4;
        }));
        const auto trash = entries.indexOf(u"Move to Trash"_s);
        const auto removal = std::max(entries.indexOf(u"Delete"_s), entries.indexOf(u"Remove from Library"_s));
        EXPECT_TRUE(trash >= 0 && trash + 1 == removal) << entries.join(u", ").toStdString();
        press(Qt::Key_Escape);
    }
}

TEST_F(ShelfCareTest, ASearchFindsCollectionsToGoInto) {
    stage.file("library/Quillary/Library/Images/Client Logos/Old/red.png", picture(8, 8));
    stage.file("library/Quillary/Library/Images/Maps/city.png", picture(8, 8));
    fs::create_directory_symlink(stage.folder / "away/Logos on a drive", on("Images/Logos on a drive"));
    open(Kind::images);
    ASSERT_TRUE(comes(u"red"_s) && comes(u"city"_s));
    const auto folderRow = [&](const QString& label) -> QQuickItem* {
        for (auto* item : itemsBelow(stage.view.get()))
            if (item->isVisible() && item->property("accented").isValid() && item->property("label") == label)
                return item;
        return nullptr;
    };
    stage.model.imagesShelf()->setSearch(u" logos "_s);
    ASSERT_TRUE(goes(u"red"_s) && goes(u"city"_s));
    ASSERT_TRUE(comesTrue([&] { return folderRow(u"Client Logos"_s) && folderRow(u"Client Logos / Old"_s); }));
    ASSERT_TRUE(folderRow(u"Logos on a drive"_s));
    EXPECT_EQ(folderRow(u"Logos on a drive"_s)->property("symbol"), u"folder.badge.questionmark"_s);
    EXPECT_FALSE(folderRow(u"Maps"_s) || folderRow(u"Unfiled"_s));
    auto* found = folderRow(u"Client Logos"_s);
    QTest::mouseClick(&stage.window, Qt::LeftButton, {}, found->mapToScene({20, found->height() / 2}).toPoint());
    EXPECT_TRUE(comes(u"red"_s)) << "what lies in it shows, whatever it is called";
    EXPECT_FALSE(shows(u"city"_s));
    EXPECT_EQ(shelf->placePath(), u"Client Logos"_s);
    EXPECT_EQ(shelf->search(), QString());
}

TEST_F(ShelfCareTest, BuiltInIconsSayThatTheyAreNotEdited) {
    writeFile(stage.folder / "BuiltIn/Arrows/Arrow.svg",
              "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>");
    open(Kind::images);
    ASSERT_TRUE(comesTrue([&] { return stage.model.imagesShelf()->builtInCount() == 1; }));
    shelf->pick(Shelf::Place::BuiltIn, u"Arrows"_s);
    ASSERT_TRUE(comes(u"Arrow"_s));
    const QString arrow = urlOf(stage.folder / "BuiltIn/Arrows/Arrow.svg");
    const std::function<void()> tries[] = {[&] { press(Qt::Key_F2); }, [&] { press(Qt::Key_Delete); },
                                           [&] { press(Qt::Key_Backspace, Qt::ControlModifier); },
                                           [&] { stage.model.imagesShelf()->transform({arrow}, u"rotateLeft"_s); }};
    for (const auto& edit : tries) {
        shelf->setNote(std::nullopt);
        click(u"Arrow"_s);
        edit();
        EXPECT_EQ(noteShown(), "Built-in icons can’t be edited — save a copy first");
        EXPECT_TRUE(shows(u"Arrow"_s));
    }
}

TEST_F(ShelfCareTest, ASoundThatPlaysFollowsItsFile) {
    const fs::path a = sound("a.wav");
    sound("b.wav");
    open(Kind::audio);
    AudioPreview& preview = *stage.model.audioShelf()->preview();
    ASSERT_TRUE(comes(u"a"_s) && comes(u"b"_s));
    const auto play = [&](const fs::path& file) {
        stage.model.audioShelf()->play(urlOf(file), 0.1);
        return comesTrue([&] { return preview.isPlaying() && preview.progress() > 0.1; }, 5'000);
    };
    ASSERT_TRUE(play(a));
    shelf->rename(urlOf(a), u"renamed"_s);
    ASSERT_TRUE(comes(u"renamed"_s));
    const fs::path renamed = on("Audio/renamed.wav");
    EXPECT_TRUE(preview.isPlaying());
    EXPECT_EQ(preview.url(), renamed);
    shelf->move({urlOf(renamed)}, u"Filed"_s);
    ASSERT_TRUE(comesTrue([&] { return preview.url() == on("Audio/Filed/renamed.wav"); }, 5'000));
    EXPECT_TRUE(preview.isPlaying());
    // Its row is out of sight: there is a stop all the same.
    shelf->setSearch(u"b"_s);
    ASSERT_TRUE(goes(u"renamed"_s));
    ASSERT_TRUE(shownItem("stopSound"));
    QMetaObject::invokeMethod(shownItem("stopSound"), "clicked");
    EXPECT_FALSE(preview.isPlaying());
    EXPECT_FALSE(shownItem("stopSound"));
    shelf->setSearch({});

    ASSERT_TRUE(comes(u"renamed"_s) && play(on("Audio/Filed/renamed.wav")));
    shelf->remove({urlOf(on("Audio/Filed/renamed.wav"))});
    EXPECT_TRUE(comesTrue([&] { return !preview.isPlaying(); }, 5'000));
    ASSERT_TRUE(goes(u"renamed"_s));
    shelf->undo();
    ASSERT_TRUE(comes(u"renamed"_s) && play(on("Audio/Filed/renamed.wav")));
    shelf->trash({urlOf(on("Audio/Filed/renamed.wav"))});
    EXPECT_TRUE(comesTrue([&] { return !preview.isPlaying(); }, 5'000));
    ASSERT_TRUE(goes(u"renamed"_s) && play(on("Audio/b.wav")));
    fs::remove(on("Audio/b.wav"));
    EXPECT_TRUE(comesTrue([&] { return !preview.isPlaying(); }, 5'000)) << "another program removed it";

    sound("c.wav");
    ASSERT_TRUE(comes(u"c"_s) && play(on("Audio/c.wav")));
    stage.model.setTab(PanelModel::Tab::intake);
    EXPECT_FALSE(preview.isPlaying()) << "nothing plays where no button stops it";
}

} // namespace

} // namespace quillary::test
