#include "imaging/PngEncoder.h"
#include "panel/PanelModelFixture.h"
#include "support/Jam.h"

#include <QElapsedTimer>

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

namespace {

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST_F(PanelModelTest, StartsFromTheSettings) {
    store.setValue(SettingsKey::openOnLibrary, true);
    store.setValue(SettingsKey::favouritesOnly, true);
    store.setValue(SettingsKey::favouritePaths, QStringList{u"Library/Images/a.png"_s});
    make();
    EXPECT_EQ(model->tab(), PanelModel::Tab::library);
    EXPECT_TRUE(model->favorites()->only());
    EXPECT_EQ(model->favorites()->keys(), QSet<QString>{u"Library/Images/a.png"_s});
}

TEST_F(PanelModelTest, PastesWhatTheClipboardHolds) {
    clipboard.board->put(u"image/png"_s, pngData(picture(1'200'000, 1)));
    model->handlePaste();
    EXPECT_TRUE(model->staging());
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty) << "the old state stays until the new one is there";
    settle();
    EXPECT_EQ(model->stage(), PanelModel::Stage::loaded);
    EXPECT_EQ(model->stagedDimensions(), u"1200000 × 1"_s);
    EXPECT_EQ(model->stagedProvenance(), u"Clipboard bitmap · image/png"_s);
    EXPECT_EQ(model->displayImage().size(), QSize(1'200'000, 1));

    clipboard.board = std::make_shared<FakePasteboard>();
    model->paste();
    settle();
    EXPECT_EQ(model->failureMessage(), u"No image on the clipboard."_s);
    EXPECT_EQ(model->failureHint(),
              u"Copy an image — from a browser, a screenshot, Figma, Slack — then paste again."_s);

    clipboard.board->put(FCPXMLPasteboard::flexoType, "clip");
    model->paste();
    settle();
    EXPECT_EQ(model->failureMessage(), u"Final Cut clips can’t be pasted"_s);
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

TEST_F(PanelModelTest, ALateSaveNoteNamesThePictureThatWasSaved) {
    stage(file("logo.png", picture(1500, 1500)));
    model->saveCurrentToLibrary();
    stage(file("next.png", picture(4, 4)));
    EXPECT_EQ(model->stagedName(), u"next"_s);
    EXPECT_EQ(model->librarySaveNote(), u"“logo” saved to your library"_s);

    fs::remove_all(root() / "Library/Images");
    writeFile(root() / "Library/Images", "no folder");
    model->saveCurrentToLibrary();
    model->clear();
    settle();
    ASSERT_TRUE(model->librarySaveNote());
    EXPECT_TRUE(model->librarySaveNote()->startsWith(u"“next” was not saved."_s));
    EXPECT_TRUE(images().noteIsProblem());
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
    ASSERT_TRUE(dragged) << images().noteText().toStdString();
    EXPECT_EQ(QImage(QString::fromStdString(dragged->string())).size(), QSize(4, 4));
    fs::remove(*dragged);
    EXPECT_TRUE(fs::exists(*model->fileOnDisk())) << "a file that was deleted meanwhile is written again";
}

TEST_F(PanelModelTest, ADragThatBeginsAtOnceCarriesThePictureOfItsFirstMoment) {
    DragRequest first;
    DragRequest renamed;
    DragRequest none;
    model->offerStaged(&none);
    EXPECT_FALSE(none.lateFiles) << "nothing is staged";
    model->load(file("old.png", picture(40, 30)));
    ASSERT_TRUE(comesTrue([&] { return model->stage() == PanelModel::Stage::loaded; }));
    {
        const Jam jam(work);
        model->renameCurrent(u"typed"_s);
        model->offerStaged(&first);
        model->renameCurrent(u"again"_s);
        model->offerStaged(&renamed);
        model->clear();
        EXPECT_EQ(namesIn(root() / "Recent"), Names{}) << "nobody has waited";
    }
    EXPECT_EQ(renamed.lateFiles(), std::vector{root() / "Recent/again.png"});
    EXPECT_EQ(first.lateFiles(), std::vector{root() / "Recent/typed.png"});
    EXPECT_EQ(QImage(QString::fromStdString(root() / "Recent/typed.png")).size(), QSize(40, 30));
    EXPECT_EQ(model->staged(), std::nullopt) << "it is not that of what is staged now";
    EXPECT_TRUE(comesTrue([&] { return images().recent().size() == 2; })) << "it is listed";

    model->load(file("new.png", picture(4, 4)));
    settle();
    fs::remove_all(root() / "Recent");
    writeFile(root() / "Recent", "no folder");
    DragRequest lost;
    model->offerStaged(&lost);
    EXPECT_TRUE(lost.lateFiles().empty());
    EXPECT_TRUE(images().noteText().startsWith(u"Could not create the folder “Recent”"_s))
        << images().noteText().toStdString();
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

TEST_F(PanelModelTest, ADropOverTheImagesLeavesTheStageAlone) {
    stage(file("staged.png", picture(3, 3)));
    model->setTab(PanelModel::Tab::library);
    images().setCollectionFilter(CollectionFilter::named(u"Logos"_s));
    platform::ItemProvider dropped;
    dropped.registerData(u"image/png"_s, pngData(picture(5, 5)));
    dropped.setSuggestedName(u"web picture"_s);
    dropped.setWebOrigin({.page = u"https://example.org/"_s, .address = u"https://example.org/a.png"_s});
    model->handleDrop({dropped});
    EXPECT_TRUE(comesTrue([&] { return model->librarySaveNote() == u"web picture saved to your library"_s; }));
    const fs::path saved = root() / "Library/Images/Logos/web picture.png";
    EXPECT_EQ(platform::webOrigin(saved), dropped.webOrigin());
    EXPECT_TRUE(comesTrue([&] { return images().visible().size() == 1; }));

    dropped.registerData(u"image/png"_s, "no picture");
    model->handleDrop({dropped});
    EXPECT_TRUE(comesTrue([&] { return model->librarySaveNote() == u"Could not read that image."_s; }));
    EXPECT_TRUE(images().noteIsProblem());
    platform::ItemProvider words;
    words.registerData(u"text/plain;charset=utf-8"_s, "a clipping");
    model->handleDrop({words});
    EXPECT_EQ(model->librarySaveNote(), u"Nothing readable in that drop."_s);
    EXPECT_TRUE(images().noteIsProblem());
    EXPECT_EQ(model->stagedName(), u"staged"_s);
    EXPECT_EQ(namesIn(saved.parent_path()), Names{"web picture.png"});
}

TEST_F(PanelModelTest, SortsOutWhatADropBrings) {
    const auto drop = [this](const platform::ItemProvider& item) {
        model->handleDrop({item});
        settle();
        return model->failureMessage() + u'|' + model->failureHint();
    };
    const auto data = [](const char* type, const QByteArray& bytes) {
        platform::ItemProvider item;
        item.registerData(QString::fromLatin1(type), bytes);
        return item;
    };
    drop(platform::ItemProvider::file(file("one.png", picture(5, 5))));
    EXPECT_EQ(model->stagedName(), u"one"_s);
    EXPECT_EQ(model->tab(), PanelModel::Tab::intake);
    platform::ItemProvider web = data("image/png", pngData(picture(6, 6)));
    drop(web);
    EXPECT_EQ(model->stagedName(), u"Pasted Image"_s);
    web.setSuggestedName(u"web picture"_s);
    drop(web);
    EXPECT_EQ(model->stagedName(), u"web picture"_s);

    writeFile(folder / "broken.png", "no picture");
    EXPECT_EQ(drop(platform::ItemProvider::file(folder / "broken.png")),
              u"Could not read that file.|Try a PNG, TIFF, JPEG, SVG or PDF."_s);
    EXPECT_EQ(drop(data("image/png", "no picture")), u"Could not read that image.|"_s);
    EXPECT_EQ(drop(data("text/plain;charset=utf-8", "a clipping")),
              u"Nothing readable in that drop.|Drop PNG, TIFF, JPEG, SVG or PDF files."_s);
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

TEST_F(PanelModelTest, ABatchNamesWhatIsMissingUntilSomethingElseIsStaged) {
    const auto a = file("a.png", picture(5, 5));
    for (const char* name : {"clip.webm", "notes.txt", "more.webm", "broken.png"}) writeFile(folder / name, "bytes");
    model->saveToLibrary({a, folder / "clip.webm", folder / "notes.txt", folder / "more.webm", folder / "broken.png"});
    settle();
    ImportQueue& queue = *model->importQueue();
    EXPECT_EQ(model->librarySaveNote(), u"Saved 1 · couldn't read 1"_s);
    EXPECT_EQ(queue.explanation(), u"3 left out: no shelf takes .txt, .webm"_s);
    EXPECT_TRUE(queue.isProblem());
    ASSERT_EQ(queue.problemFiles().size(), 4);
    EXPECT_EQ(queue.problemFiles().front(), QString::fromStdString(folder / "broken.png"));
    EXPECT_EQ(queue.problemReasons().front(), u"Could not read broken.png."_s);
    EXPECT_EQ(queue.problemReasons().at(1), u"No shelf takes files of the kind “.webm”."_s);
    stage(a);
    EXPECT_TRUE(queue.summary().isEmpty());
    EXPECT_TRUE(queue.problemFiles().isEmpty());
}

TEST_F(PanelModelTest, FoldersOfABatchBecomeCollectionsAndGoBack) {
    file("Brand/one.png", picture(5, 5));
    file("Brand/Sports/two.png", picture(6, 5));
    writeFile(folder / "Brand/Sports/boing.wav", "sound");
    images().setCollectionFilter(CollectionFilter::named(u"New"_s));
    model->saveToLibrary({folder / "Brand", file("three.png", picture(7, 5))});
    settle();
    ImportQueue& queue = *model->importQueue();
    ASSERT_TRUE(queue.offersFolders());
    const auto flat = (Names{"one.png", "three.png", "two.png"});
    EXPECT_EQ(namesIn(root() / "Library/Images/New"), flat);
    queue.setKeepFolders(true);
    settle();
    EXPECT_TRUE(queue.keepFolders());
    EXPECT_TRUE(fs::exists(root() / "Library/Images/New/Brand/Sports/two.png"));
    EXPECT_TRUE(fs::exists(root() / "Library/Audio/Brand/Sports/boing.wav"));
    EXPECT_EQ(namesIn(root() / "Library/Images/New"), (Names{"Brand", "three.png"}));
    queue.setKeepFolders(false);
    settle();
    EXPECT_EQ(namesIn(root() / "Library/Images/New"), flat);
    EXPECT_TRUE(fs::exists(root() / "Library/Audio/boing.wav"));
    EXPECT_FALSE(fs::exists(root() / "Library/Audio/Brand"));
}

TEST_F(PanelModelTest, BuiltInIconsAreCopiedNeverChanged) {
    writeFile(folder / "BuiltIn/Arrows/Arrow.svg",
              "<svg xmlns='http://www.w3.org/2000/svg' width='24' height='24'><rect width='24' height='24'/></svg>");
    store.setValue(SettingsKey::vectorLongEdge, 256);
    images().refresh();
    settle();
    const LibraryItem icon = images().builtIn().front();
    images().pick(Shelf::Place::BuiltIn, u"Arrows"_s);
    images().rename(urlOf(icon.url), u"x"_s);
    images().remove({urlOf(icon.url)});
    settle();
    EXPECT_TRUE(fs::exists(icon.url.path()));
    images().saveBuiltInToLibrary(icon);
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Arrow saved to your library"_s);
    const auto dragged = pathOfFileUrl(images().dragFileUrl(urlOf(icon.url)).toLatin1());
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
