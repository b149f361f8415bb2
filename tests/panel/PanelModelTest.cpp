#include "panel/PanelModelFixture.h"

#include <QBuffer>
#include <QSignalSpy>

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

QByteArray png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST_F(PanelModelTest, StartsFromTheSettings) {
    EXPECT_EQ(model->tab(), PanelModel::Tab::intake);
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty);
    EXPECT_TRUE(model->showCutout());
    EXPECT_DOUBLE_EQ(model->edgeRefine(), 0.3);
    store.setValue(SettingsKey::openOnLibrary, true);
    store.setValue(SettingsKey::favouritesOnly, true);
    store.setValue(SettingsKey::favouritePaths, QStringList{u"Library/Images/a.png"_s});
    make();
    EXPECT_EQ(model->tab(), PanelModel::Tab::library);
    EXPECT_TRUE(model->favorites()->only());
    EXPECT_EQ(model->favorites()->keys(), QSet<QString>{u"Library/Images/a.png"_s});
}

TEST_F(PanelModelTest, NotifiesAboutALocationOnlyWhenItChanges) {
    const QSignalSpy audio(model->audioShelf(), &AudioShelf::selectedAudioChanged);
    model->audioShelf()->setSelectedAudio(fs::path("/a.wav"));
    model->audioShelf()->setSelectedAudio(fs::path("/a.wav"));
    model->audioShelf()->setSelectedAudio({});
    model->audioShelf()->setSelectedAudio({});
    EXPECT_EQ(audio.count(), 2);
    const QSignalSpy tab(model.get(), &PanelModel::tabChanged);
    model->setTab(model->tab());
    EXPECT_EQ(tab.count(), 1);
}

TEST_F(PanelModelTest, PastesWhatTheClipboardHolds) {
    clipboard.board->put(u"image/png"_s, png(picture(30, 20)));
    model->handlePaste();
    EXPECT_TRUE(model->staging());
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty) << "the old state stays until the new one is there";
    settle();
    EXPECT_EQ(model->stage(), PanelModel::Stage::loaded);
    EXPECT_EQ(model->stagedDimensions(), u"30 × 20"_s);
    EXPECT_EQ(model->stagedProvenance(), u"Clipboard bitmap · image/png"_s);
    EXPECT_EQ(model->displayImage().size(), QSize(30, 20));

    clipboard.board = std::make_shared<FakePasteboard>();
    model->paste();
    settle();
    EXPECT_EQ(message(), u"No image on the clipboard."_s);
    EXPECT_EQ(model->failureHint(),
              u"Copy an image — from a browser, a screenshot, Figma, Slack — then paste again."_s);

    clipboard.board->put(FCPXMLPasteboard::flexoType, "clip");
    model->paste();
    settle();
    EXPECT_EQ(message(), u"Final Cut clips can’t be pasted"_s);
    EXPECT_EQ(model->failureHint(), u"Drag the compound clip from the browser instead."_s);
    EXPECT_TRUE(model->displayImage().isNull());
}

TEST_F(PanelModelTest, ANewerImageOrAClearMakesTheOlderOneVoid) {
    const auto big = file("big.png", picture(2000, 2000));
    const auto small = file("small.png", picture(3, 3));
    model->load(big);
    model->load(small);
    settle();
    EXPECT_EQ(model->stagedName(), u"small"_s);
    model->load(big);
    model->clear();
    settle();
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty);
    EXPECT_FALSE(model->staging());
}

TEST_F(PanelModelTest, RenamesTheStagedImage) {
    stage(file("logo.png", picture(4, 4)));
    model->renameCurrent(u"  a/b:c \n"_s);
    EXPECT_EQ(model->stagedName(), u"a-b-c"_s);
    model->renameCurrent(u"   "_s);
    EXPECT_EQ(model->stagedName(), u"a-b-c"_s);

    const auto first = model->fileOnDisk();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->filename(), "a-b-c.png");
    EXPECT_EQ(model->fileOnDisk(), first) << "repeated drags reuse the file";
    model->renameCurrent(u"other"_s);
    EXPECT_EQ(model->staged(), std::nullopt);
    settle();
    EXPECT_EQ(model->fileOnDisk()->filename(), "other.png");
    EXPECT_EQ(namesIn(root() / "Recent"), (Names{"a-b-c.png", "other.png"}));
}

TEST_F(PanelModelTest, WarnsOfSmallPictures) {
    stage(file("small.png", picture(999, 400)));
    EXPECT_EQ(model->resolutionWarning(),
              u"Small for a 4K timeline — fine at this size on screen, soft if you scale it up."_s);
    stage(file("fits.png", picture(1000, 10)));
    EXPECT_EQ(model->resolutionWarning(), std::nullopt);
}

TEST_F(PanelModelTest, SavesTheStagedImageIntoTheSelectedCollection) {
    stage(file("logo.png", picture(4, 4)));
    for (const auto& filter :
         {CollectionFilter::all(), CollectionFilter::unfiled(), CollectionFilter::builtIn(u"x"_s)}) {
        images().setCollectionFilter(filter);
        model->saveCurrentToLibrary();
    }
    images().setCollectionFilter(CollectionFilter::named(u"Logos / Clients"_s));
    model->saveCurrentToLibrary();
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Saved to your library"_s);
    EXPECT_EQ(namesIn(root() / "Library/Images"), (Names{"Logos", "logo 2.png", "logo 3.png", "logo.png"}));
    EXPECT_EQ(namesIn(root() / "Library/Images/Logos/Clients"), Names{"logo.png"});
    EXPECT_EQ(images().library().size(), 4U);
    model->load(folder / "logo.png");
    EXPECT_EQ(model->librarySaveNote(), std::nullopt);
}

TEST_F(PanelModelTest, ASaveSurvivesTheClosingOfThePanel) {
    stage(file("logo.png", picture(1500, 1500)));
    model->saveCurrentToLibrary();
    model.reset();
    saves.waitForDone();
    EXPECT_EQ(namesIn(root() / "Library/Images"), Names{"logo.png"});
}

TEST_F(PanelModelTest, ADragIsReadyAheadAndWrittenAnewWhenItsFolderWentAway) {
    stage(file("logo.png", picture(4, 4)));
    EXPECT_EQ(namesIn(root() / "Recent"), Names{}) << "what lies ready has no name yet";
    fs::remove_all(root() / "Recent");
    const auto dragged = model->fileOnDisk();
    ASSERT_TRUE(dragged) << dragged.error().toStdString();
    EXPECT_EQ(QImage(QString::fromStdString(dragged->string())).size(), QSize(4, 4));
    fs::remove(*dragged);
    EXPECT_TRUE(fs::exists(*model->fileOnDisk())) << "a file that was deleted meanwhile is written again";
}

TEST_F(PanelModelTest, EveryDragPrunesRecent) {
    store.setValue(SettingsKey::recentLimit, 2);
    for (const char* name : {"a.png", "b.png", "c.png"}) {
        stage(file(name, picture(4, 4)));
        ASSERT_TRUE(model->fileOnDisk());
        settle();
    }
    EXPECT_EQ(namesIn(root() / "Recent").size(), 2U);
    EXPECT_EQ(images().recent().size(), 2U);
}

TEST_F(PanelModelTest, ADropOverTheImagesGoesIntoTheShownCollection) {
    model->setTab(PanelModel::Tab::library);
    images().setCollectionFilter(CollectionFilter::named(u"Logos"_s));
    model->handleDrop({platform::ItemProvider::file(file("one.png", picture(5, 5)))});
    EXPECT_TRUE(comesTrue([&] { return fs::exists(root() / "Library/Images/Logos/one.png"); }));
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty);
}

TEST_F(PanelModelTest, SortsOutWhatADropBrings) {
    const auto image = file("one.png", picture(5, 5));
    model->handleDrop({platform::ItemProvider::file(image)});
    settle();
    EXPECT_EQ(model->stagedName(), u"one"_s);
    EXPECT_EQ(model->tab(), PanelModel::Tab::intake);

    platform::ItemProvider data;
    data.registerData(u"image/png"_s, png(picture(6, 6)));
    model->handleDrop({data});
    settle();
    EXPECT_EQ(model->stagedName(), u"Pasted Image"_s);
    data.setSuggestedName(u"web picture"_s);
    model->handleDrop({data});
    settle();
    EXPECT_EQ(model->stagedName(), u"web picture"_s);

    writeFile(folder / "broken.png", "no picture");
    model->handleDrop({platform::ItemProvider::file(folder / "broken.png")});
    settle();
    EXPECT_EQ(message(), u"Could not read that file."_s);
    EXPECT_EQ(model->failureHint(), u"Try a PNG, TIFF, JPEG, SVG or PDF."_s);

    platform::ItemProvider brokenData;
    brokenData.registerData(u"image/png"_s, "no picture");
    model->handleDrop({brokenData});
    settle();
    EXPECT_EQ(message(), u"Could not read that image."_s);
    EXPECT_EQ(model->failureHint(), QString());

    platform::ItemProvider text;
    text.registerData(u"text/plain;charset=utf-8"_s, "a clipping");
    model->handleDrop({text});
    EXPECT_EQ(message(), u"Nothing readable in that drop."_s);
    EXPECT_EQ(model->failureHint(), u"Drop PNG, TIFF, JPEG, SVG or PDF files."_s);
}

TEST_F(PanelModelTest, FilesABatchWithOneSummary) {
    const auto a = file("a.png", picture(5, 5));
    const auto b = file("b.png", picture(7, 5));
    writeFile(folder / "clip.mp4", "moving");
    model->saveToLibrary({a});
    model->saveToLibrary({a, b, folder / "clip.mp4"});
    ASSERT_TRUE(model->importProgress());
    settle();
    EXPECT_FALSE(model->importProgress());
    EXPECT_EQ(model->librarySaveNote(), u"Saved 1 · 1 video to Videos · 1 already in your library"_s);
    EXPECT_EQ(model->tab(), PanelModel::Tab::library);
    EXPECT_EQ(model->videoShelf()->videos().size(), 1U);
    EXPECT_EQ(model->shelfCounts().images, 2);

    writeFile(folder / "notes.txt", "text");
    model->saveToLibrary({folder / "notes.txt"});
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Nothing to save."_s);
}

TEST_F(PanelModelTest, ShowsWhatTheFilterAsksFor) {
    file("library/Quillary/Library/Images/top.png", picture(2, 2));
    file("library/Quillary/Library/Images/A/B/Deep arrow.png", picture(2, 2));
    writeFile(folder / "BuiltIn/Arrows/Arrow right.svg",
              "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>");
    images().refresh();
    settle();
    const auto visible = [this] {
        Names names;
        for (const LibraryItem& item : images().visible()) names.emplace_back(item.url.nameStem());
        std::ranges::sort(names);
        return names;
    };
    EXPECT_EQ(visible(), (Names{"Deep arrow", "top"}));
    images().pick(Shelf::Place::Unfiled, {});
    EXPECT_EQ(visible(), Names{"top"});
    images().pick(Shelf::Place::Collection, u"A"_s);
    EXPECT_EQ(visible(), Names{"Deep arrow"});
    images().pick(Shelf::Place::BuiltIn, u"Arrows"_s);
    EXPECT_EQ(visible(), Names{"Arrow right"});
    images().pick(Shelf::Place::All, {});
    images().setSearch(u"  ARROW "_s);
    EXPECT_EQ(visible(), Names{"Deep arrow"});
    images().setSearch({});

    images().toggleFavorite(url(images().visible().front()));
    model->favorites()->setOnly(true);
    EXPECT_EQ(visible().size(), 1U);
    EXPECT_TRUE(store.value(SettingsKey::favouritesOnly).toBool());
    model->favorites()->setOnly(false);

    // A collection that holds no image itself is not listed, so the next refresh leaves it.
    images().pick(Shelf::Place::Collection, u"A"_s);
    images().refresh();
    settle();
    EXPECT_EQ(images().collectionFilter(), CollectionFilter::all());
    images().createCollection(u"New: one"_s);
    settle();
    EXPECT_EQ(images().collectionFilter(), CollectionFilter::named(u"New- one"_s));
    EXPECT_TRUE(fs::is_directory(root() / "Library/Images/New- one"));
}

TEST_F(PanelModelTest, AMovedOrRenamedFileKeepsItsStar) {
    file("library/Quillary/Library/Images/a.png", picture(2, 2));
    images().refresh();
    settle();
    images().toggleFavorite(url(images().library().front()));
    images().rename(url(images().library().front()), u"b"_s);
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Renamed to “b”"_s);
    images().move({url(images().library().front())}, u"Kept"_s);
    settle();
    ASSERT_EQ(images().library().size(), 1U);
    EXPECT_EQ(images().library().front().collection, u"Kept"_s);
    EXPECT_TRUE(model->favorites()->contains(images().library().front().url));
    EXPECT_EQ(model->favorites()->keys(), QSet<QString>{u"Library/Images/Kept/b.png"_s});
}

TEST_F(PanelModelTest, BuiltInIconsAreCopiedNeverChanged) {
    writeFile(folder / "BuiltIn/Arrows/Arrow.svg",
              "<svg xmlns='http://www.w3.org/2000/svg' width='24' height='24'><rect width='24' height='24'/></svg>");
    store.setValue(SettingsKey::vectorLongEdge, 256);
    images().refresh();
    settle();
    const LibraryItem icon = images().builtIn().front();
    images().pick(Shelf::Place::BuiltIn, u"Arrows"_s);
    images().rename(url(icon), u"x"_s);
    images().remove({url(icon)});
    settle();
    EXPECT_TRUE(fs::exists(icon.url.path()));
    images().saveBuiltInToLibrary(icon);
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Arrow saved to your library"_s);
    const auto dragged = pathOfFileUrl(images().dragFileUrl(url(icon)).toLatin1());
    ASSERT_TRUE(dragged);
    EXPECT_EQ(*dragged, root() / ".rasterized/Arrow.png");
    EXPECT_EQ(QImage(QString::fromStdString(dragged->string())).size(), QSize(256, 256));
}

TEST_F(PanelModelTest, ABlockNoteVanishesSixSecondsAfterTheLastOne) {
    model->blocksShelf()->setNote(u"first"_s);
    model->blocksShelf()->setNote(u"second"_s);
    EXPECT_EQ(model->blocksShelf()->note(), u"second"_s);
    QElapsedTimer since;
    since.start();
    ASSERT_TRUE(comesTrue([&] { return !model->blocksShelf()->note(); }));
    EXPECT_GE(since.elapsed(), 5'900);
    EXPECT_LE(since.elapsed(), 8'000);
}

} // namespace quillary::test
