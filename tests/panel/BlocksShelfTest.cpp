#include "base/FileUrl.h"
#include "blocks/FCPXMLPasteboard.h"
#include "drag/DragRequest.h"
#include "imaging/PngEncoder.h"
#include "panel/PanelModelFixture.h"
#include "platform/FileAttributes.h"
#include "samples/Clips.h"

#include <array>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

class BlocksShelfTest : public PanelModelTest {
protected:
    BlocksShelf& shelf() { return *model->blocksShelf(); }
    fs::path blocksFolder() { return root() / "Library/Blocks"; }
    QString note() { return shelf().note().value_or(QString()); }

    QByteArray clip(const QByteArray& name) {
        const fs::path file = folder / "media" / (name.toStdString() + ".mov");
        writeFile(file, "media of " + name.toStdString());
        return compound(name, {{.uid = "", .file = file}});
    }
    static platform::ItemProvider offered(const QByteArray& xml) { return FCPXMLPasteboard::provider(xml, u"x"_s); }
    void drop(const std::vector<platform::ItemProvider>& items) {
        model->handleDrop(items);
        settle();
    }
    QStringList names() {
        QStringList shown;
        for (const Arrangement& block : shelf().visibleBlocks()) shown.append(block.name);
        shown.sort();
        return shown;
    }
    void select(const fs::path& block) {
        shelf().selection()->clear();
        shelf().selection()->toggle(shelf().visibleModel()->rowOf(block), 0);
    }
    void copyPicture() {
        clipboard.board = std::make_shared<FakePasteboard>();
        clipboard.board->put(u"image/png"_s, pngData(picture(30, 20)));
    }
};

TEST_F(BlocksShelfTest, ADropAnywhereIsKept) {
    model->handleDrop({offered(clip("One")), offered(clip("Two"))});
    EXPECT_EQ(model->tab(), PanelModel::Tab::library);
    EXPECT_EQ(model->libraryKind(), PanelModel::LibraryKind::blocks);
    EXPECT_EQ(note(), u"Saving…");
    EXPECT_GE(shelf().saveProgress(), 0);
    EXPECT_TRUE(comesTrue([&] { return names().size() == 2; }));
    EXPECT_EQ(note(), u"Saved 2 blocks");
    EXPECT_EQ(shelf().saveProgress(), -1);
    EXPECT_EQ(names(), QStringList({u"One"_s, u"Two"_s}));

    drop({offered(clip("One"))});
    EXPECT_EQ(note(), u"“One” is already saved");
    writeFile(folder / "exported.FCPXML", clip("From a file").toStdString());
    drop({platform::ItemProvider::file(folder / "exported.FCPXML")});
    EXPECT_TRUE(fs::exists(blocksFolder() / "From a file.fcpxml"));
    EXPECT_EQ(note(), u"Saved 1 block");
    shelf().createCollection(u"Titles"_s);
    EXPECT_TRUE(comesTrue([&] { return shelf().blockCollection() == u"Titles"_s; }));
    drop({offered(clip("One"))});
    EXPECT_EQ(note(), u"Saved 1 block");
    EXPECT_TRUE(fs::exists(blocksFolder() / "Titles/One.fcpxml"));
    EXPECT_EQ(names(), QStringList{u"One"_s});
    EXPECT_EQ(shelf().blocks().size(), 4U);
}

TEST_F(BlocksShelfTest, ClipsThatAreMoreThanOneFileComeFromTheOtherShelves) {
    for (const auto kind : {PanelModel::LibraryKind::audio, PanelModel::LibraryKind::videos}) {
        model->setTab(PanelModel::Tab::library);
        model->setLibraryKind(kind);
        const QByteArray name = "Dropped " + QByteArray::number(static_cast<int>(kind));
        const std::array files{folder / "media/one.mov", folder / "media/two.mov"};
        for (const fs::path& file : files) writeFile(file, file.filename().string());
        model->handleDrop({offered(compound(name, {{.uid = "", .file = files[0]}, {.uid = "", .file = files[1]}}))});
        EXPECT_TRUE(comesTrue([&] { return names().contains(QString::fromUtf8(name)); }));
        EXPECT_EQ(model->libraryKind(), PanelModel::LibraryKind::blocks);
    }
}

TEST_F(BlocksShelfTest, WhatIsDroppedHereAndIsNoClipIsTold) {
    stage(file("staged.png", picture(3, 3)));
    model->setTab(PanelModel::Tab::library);
    model->setLibraryKind(PanelModel::LibraryKind::blocks);
    const auto data = [](const QString& type, const QByteArray& bytes) {
        platform::ItemProvider item;
        item.registerData(type, bytes);
        return item;
    };
    writeFile(folder / "notes.txt", "words");
    writeFile(folder / "timeline.xml", "<xmeml version='5'/>");
    const QString text = u"text/plain;charset=utf-8"_s;
    const std::vector<platform::ItemProvider> drops[] = {
        {platform::ItemProvider::file(file("one.png", picture(2, 2)))},
        {platform::ItemProvider::file(folder / "one.png"), platform::ItemProvider::file(folder / "notes.txt")},
        {platform::ItemProvider::file(folder / "timeline.xml")},
        {data(u"image/png"_s, pngData(picture(2, 2)))},
        {data(text, "words")},
        {data(text, "<xmeml version='5'/>")},
        {data(FCPXMLPasteboard::primary, "<!--" + QByteArray(600, 'x') + "-->" + clip("Late"))},
    };
    for (const auto& items : drops) {
        shelf().setNote(std::nullopt);
        drop(items);
        EXPECT_EQ(note(), u"That drag carried no Final Cut clip");
        EXPECT_TRUE(shelf().noteIsProblem());
        EXPECT_EQ(model->libraryKind(), PanelModel::LibraryKind::blocks);
        EXPECT_EQ(model->stagedName(), u"staged"_s);
    }
    EXPECT_EQ(model->shelfCounts().images + model->shelfCounts().blocks, 0);
}

TEST_F(BlocksShelfTest, WhatComesBesideAClipIsFiledByItsKind) {
    writeFile(folder / "exported.fcpxml", clip("Exported").toStdString());
    writeFile(folder / "rain.wav", "sound");
    const std::vector<platform::ItemProvider> items{
        platform::ItemProvider::file(file("one.png", picture(2, 2))),
        platform::ItemProvider::file(folder / "exported.fcpxml"), platform::ItemProvider::file(folder / "rain.wav")};
    for (const auto tab : {PanelModel::Tab::intake, PanelModel::Tab::library}) {
        model->setTab(tab);
        drop(items);
        EXPECT_TRUE(comesTrue([&] { return model->shelfCounts().audio == 1 && model->shelfCounts().images == 1; }));
        EXPECT_EQ(names(), QStringList{u"Exported"_s});
        EXPECT_EQ(model->tab(), PanelModel::Tab::library);
        EXPECT_EQ(model->libraryKind(), PanelModel::LibraryKind::blocks);
    }
    // Over the sounds, a single clip and the sounds beside it.
    model->setLibraryKind(PanelModel::LibraryKind::audio);
    writeFile(folder / "wind.wav", "another sound");
    writeFile(folder / "hail.wav", "a third sound");
    drop({offered(singleClip({.file = folder / "wind.wav"})), platform::ItemProvider::file(folder / "hail.wav")});
    EXPECT_TRUE(comesTrue([&] { return model->shelfCounts().audio == 3; }));
}

TEST_F(BlocksShelfTest, WhatIsNoClipIsToldAndStoresNothing) {
    platform::ItemProvider opaque;
    opaque.registerData(FCPXMLPasteboard::flexoType, "opaque");
    drop({opaque});
    EXPECT_EQ(note(), u"That drag carried no Final Cut clip");
    shelf().captureBlocks({platform::ItemProvider::file(file("plain.png", picture(2, 2)))});
    settle();
    EXPECT_EQ(note(), u"That drag carried no Final Cut clip");
    drop({offered(singleClip({.file = folder / "gone.mov"}))});
    EXPECT_EQ(note(), u"Couldn’t copy the media for “Single”: gone.mov is missing.");
    EXPECT_TRUE(shelf().blocks().empty());
}

TEST_F(BlocksShelfTest, ListsSearchesAndTellsTheDetails) {
    writeFile(blocksFolder() / "broken.fcpxml", "<fcpxml>");
    drop({offered(richCompound(folder / "media")), offered(clip("Plain"))});
    EXPECT_EQ(names(), QStringList({u"Opening"_s, u"Plain"_s}));
    shelf().setSearch(u" oPEN "_s);
    EXPECT_TRUE(shelf().isSearchingBlocks());
    EXPECT_EQ(names(), QStringList{u"Opening"_s});
    const fs::path opening = blocksFolder() / "Opening.fcpxml";
    shelf().toggleFavorite(urlOf(opening));
    shelf().setSearch({});
    shelf().favorites()->setOnly(true);
    EXPECT_EQ(names(), QStringList{u"Opening"_s});

    EXPECT_FALSE(shelf().hasSelectedBlock());
    select(opening);
    EXPECT_EQ(shelf().selectedBlock(), opening);
    const BlockDetails details = shelf().selectedDetails();
    EXPECT_EQ(details.subtitle, u"12 layers · 14.0s");
    EXPECT_TRUE(details.usesGlidemark);
    // The third of the highest lane, then the title, …, the sounds at the bottom.
    EXPECT_EQ(details.bars.first(3), QList<int>({2, 0, 1}));
    EXPECT_EQ(details.bars.last(), 2);
    EXPECT_EQ(BlockDetails::of({.url = {}, .name = {}, .summary = {.layers = {{}}}}).subtitle, u"1 layer");
}

TEST_F(BlocksShelfTest, TheClipboardsPictureBecomesThePosterOfTheSelectedBlock) {
    drop({offered(clip("One"))});
    const fs::path block = blocksFolder() / "One.fcpxml";
    select(block);
    clipboard.board->put(u"text/plain;charset=utf-8"_s, "no picture");
    model->handlePaste();
    settle();
    EXPECT_EQ(note(), u"No image on the clipboard — take a screenshot first (Print)");
    copyPicture();
    model->handlePaste();
    settle();
    EXPECT_EQ(note(), u"Poster set");
    EXPECT_EQ(model->stage(), PanelModel::Stage::empty);
    EXPECT_TRUE(fs::exists(blocksFolder() / "One.png"));
    EXPECT_EQ(shelf().selectedDetails().poster, urlOf(blocksFolder() / "One.png"));
    shelf().removePoster(urlOf(block));
    settle();
    EXPECT_FALSE(fs::exists(blocksFolder() / "One.png"));
    EXPECT_TRUE(shelf().selectedDetails().poster.isEmpty());

    // Without a selected block, or on another shelf, a paste is a paste.
    model->setLibraryKind(PanelModel::LibraryKind::images);
    model->handlePaste();
    settle();
    EXPECT_EQ(model->stage(), PanelModel::Stage::loaded);
    EXPECT_FALSE(fs::exists(blocksFolder() / "One.png"));
}

TEST_F(BlocksShelfTest, StarAndSelectionFollowABlock) {
    drop({offered(clip("One"))});
    const fs::path block = blocksFolder() / "One.fcpxml";
    select(block);
    shelf().toggleFavorite(urlOf(block));
    shelf().rename(urlOf(block), u"Two"_s);
    const fs::path renamed = blocksFolder() / "Two.fcpxml";
    EXPECT_TRUE(comesTrue([&] { return shelf().hasSelectedBlock() && shelf().selectedBlock() == renamed; }));
    EXPECT_EQ(note(), u"Renamed to “Two”");
    shelf().move({urlOf(renamed)}, u"A / B"_s);
    const fs::path moved = blocksFolder() / "A/B/Two.fcpxml";
    EXPECT_TRUE(comesTrue([&] { return shelf().hasSelectedBlock() && shelf().selectedBlock() == moved; }));
    EXPECT_TRUE(shelf().favorites()->contains(moved));
    EXPECT_EQ(shelf().counts().value(u"A"_s), 1);
    shelf().remove({urlOf(moved)});
    EXPECT_TRUE(comesTrue([&] { return shelf().blocks().empty(); }));
    EXPECT_FALSE(shelf().selectedBlock());
}

TEST_F(BlocksShelfTest, ADragOfALargeBlockFindsItsDocumentReady) {
    QByteArray large = clip("Large");
    large.replace("</resources>", "<!--" + QByteArray(400'000, 'x') + "--></resources>");
    drop({offered(large)});
    const fs::path block = blocksFolder() / "Large.fcpxml";
    DragRequest early;
    shelf().fillDrag(&early, urlOf(block));
    EXPECT_FALSE(early.item) << "it would keep the hand waiting";
    settle();
    DragRequest ready;
    shelf().fillDrag(&ready, urlOf(block));
    ASSERT_TRUE(ready.item);
    EXPECT_TRUE(ready.item->data(FCPXMLPasteboard::primary)->contains("<ref-clip"));
    EXPECT_EQ(ready.item->types(), FCPXMLPasteboard::types() + QStringList{u"text/uri-list"_s});
    EXPECT_EQ(ready.item->data(u"text/uri-list"_s), fileUrl(block) + "\r\n");
    // Another document in its place is another drag.
    large.replace("xxxxx", "yyyyy");
    writeFile(block, large.toStdString() + "\n");
    shelf().prepareDrag(urlOf(block));
    settle();
    DragRequest anew;
    shelf().fillDrag(&anew, urlOf(block));
    ASSERT_TRUE(anew.item);
    EXPECT_TRUE(anew.item->data(FCPXMLPasteboard::primary)->contains("yyyyy"));
    fs::remove(block);
    DragRequest gone;
    shelf().fillDrag(&gone, urlOf(block));
    EXPECT_FALSE(gone.item);
    EXPECT_EQ(note(), u"“Large” is no longer there.");
}

TEST_F(BlocksShelfTest, TellsWhichMediaAreWrongAndUsesFoundFiles) {
    drop({offered(richCompound(folder / "media"))});
    const fs::path block = blocksFolder() / "Opening.fcpxml";
    const auto details = [&] {
        select(block);
        return shelf().selectedDetails();
    };
    EXPECT_TRUE(comesTrue([&] { return shelf().care()->of(block) != nullptr; }));
    EXPECT_TRUE(details().problem.isEmpty());
    const fs::path videos = root() / "Library/Videos/Final Cut Elements";
    fs::rename(videos / "A1B2C3D4-interview take 1.mov", root() / "Library/Audio/Final Cut Elements/moved.mov");
    shelf().refresh();
    EXPECT_TRUE(comesTrue([&] { return details().problem == u"1 moved"; }));
    fs::remove(videos / "no uid.mov");
    shelf().refresh();
    EXPECT_TRUE(comesTrue([&] { return details().problem == u"1 missing" && details().isIncomplete; }));
    EXPECT_EQ(details().problemFiles, u"no uid.mov is missing.");

    BlockMediaModel& media = *shelf().care()->media();
    shelf().care()->show(urlOf(block));
    EXPECT_TRUE(comesTrue([&] { return !shelf().care()->looking(); }));
    EXPECT_EQ(media.rowCount(), 6);
    EXPECT_EQ(media.data(media.index(0), BlockMediaModel::NameRole), u"no uid.mov"_s);
    EXPECT_EQ(media.data(media.index(1), BlockMediaModel::StateRole), static_cast<int>(BlockMediaModel::State::Moved));
    EXPECT_EQ(media.data(media.index(1), BlockMediaModel::TellingRole), u"Found in Library/Audio/Final Cut Elements"_s);
    EXPECT_TRUE(media.summary().startsWith(u"6 files · ") && media.summary().endsWith(u"FCPXML 1.13"));
    const QPersistentModelIndex kept(media.index(4));
    const QVariant keptName = kept.data(BlockMediaModel::NameRole);
    shelf().care()->useFoundFiles();
    EXPECT_TRUE(comesTrue([&] { return media.moved() == 0 && !shelf().care()->looking(); }));
    EXPECT_TRUE(kept.isValid() && kept.data(BlockMediaModel::NameRole) == keptName) << "the place in the list is lost";
    EXPECT_EQ(note(), u"“Opening” uses the files that were found");
    EXPECT_EQ(media.missing(), 1);
}

TEST_F(BlocksShelfTest, ExportsAskForAFolderAndTellWhatWasLeftOut) {
    drop({offered(richCompound(folder / "media"))});
    const fs::path block = blocksFolder() / "Opening.fcpxml";
    BlockExportJob& job = *shelf().exporting();
    const auto ended = [&] {
        return comesTrue(
            [&] { return job.stage() == BlockExportJob::Stage::Done || job.stage() == BlockExportJob::Stage::Failed; });
    };
    fs::create_directories(folder / "out");
    job.exportBlock(urlOf(block), BlockExportJob::Format::Otio, true);
    chooser.answer({});
    EXPECT_EQ(job.stage(), BlockExportJob::Stage::Asking);
    job.exportBlock(urlOf(block), BlockExportJob::Format::Otio, true);
    chooser.answer({folder / "out"});
    ASSERT_TRUE(ended());
    EXPECT_EQ(job.outcome(), u"Opening.otio");
    EXPECT_TRUE(job.leftOut().contains(u"Titles (1): “Lower third”"_s));
    EXPECT_TRUE(fs::exists(folder / "out/Opening.otio"));
    job.makePortable(urlOf(block));
    EXPECT_EQ(chooser.question.start, folder / "out");
    chooser.answer({folder / "out"});
    ASSERT_TRUE(ended());
    EXPECT_EQ(job.output(), urlOf(folder / "out/Opening"));
    job.exportBlock(urlOf(block), BlockExportJob::Format::Fcpxml, false);
    job.reset();
    chooser.answer({folder / "out"});
    EXPECT_EQ(job.stage(), BlockExportJob::Stage::Asking) << "the sheet was closed meanwhile";
    job.exportBlock(urlOf(block), BlockExportJob::Format::Fcpxml, false);
    chooser.answer({folder / "nowhere"});
    ASSERT_TRUE(ended());
    EXPECT_EQ(job.stage(), BlockExportJob::Stage::Failed);
    EXPECT_FALSE(job.outcome().isEmpty());
}

TEST_F(BlocksShelfTest, BlocksFollowALibraryThatMoved) {
    Storage kept(store, bookmarks, desktop);
    const fs::path first = *kept.root();
    ASSERT_TRUE(ArrangementStore(kept).save(clip("One"), {}, {}));
    BlocksListing listing(settings);
    ASSERT_TRUE(listing.refresh(kept));
    EXPECT_EQ(store.value(SettingsKey::blocksLastRootPath), QString::fromStdString(first));

    const fs::path second = folder / "drive/Quillary";
    fs::create_directories(second.parent_path());
    fs::copy(first, second, fs::copy_options::recursive);
    kept.setCustomRoot(second);
    ASSERT_TRUE(listing.refresh(kept));
    const fs::path block = second / "Library/Blocks/One.fcpxml";
    EXPECT_TRUE(readFile(block).contains(fileUrl(second / "Library/Videos/Final Cut Elements/One.mov").toStdString()));
    const auto written = fs::last_write_time(block);
    ASSERT_TRUE(listing.refresh(kept));
    EXPECT_EQ(fs::last_write_time(block), written);

    // A library for one run is not remembered, and its blocks are not rewritten.
    ASSERT_TRUE(listing.refresh(storage));
    EXPECT_EQ(store.value(SettingsKey::blocksLastRootPath), QString::fromStdString(second));
}

} // namespace

} // namespace quillary::test
