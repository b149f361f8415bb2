#include "PanelModelFixture.h"

#include "imaging/BitmapDecoder.h"
#include "imaging/PngEncoder.h"
#include "platform/FileAttributes.h"
#include "samples/Clips.h"

namespace quillary::test {

namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

/// What the panel does with files for other programs, with other folders, and with whole pictures.
class FilesForOthersTest : public PanelModelTest {
protected:
    SettingsModel& sheet() { return *model->settings(); }
    CopyJob& job() { return *sheet().copyJob(); }
    fs::path listed(const std::string& name, const QImage& image) {
        const auto path = shelved(name, image);
        list(images());
        return path;
    }
};

TEST_F(FilesForOthersTest, CopiesFilesWithThePictureFirst) {
    model->copyStaged();
    settle();
    EXPECT_TRUE(clipboard.files.empty()) << "nothing is staged";
    const auto png = listed("a b.png", picture(20, 10));
    const auto jpeg = file("c.jpg", picture(30, 20));
    model->fileActions()->copy({urlOf(jpeg)});
    ASSERT_TRUE(comesTrue([&] { return clipboard.files == std::vector{jpeg}; }));
    EXPECT_EQ(QImage::fromData(clipboard.png, "PNG").size(), QSize(30, 20));
    model->fileActions()->copy({urlOf(png), urlOf(jpeg), urlOf(folder / "gone.png")});
    ASSERT_TRUE(comesTrue([&] { return clipboard.files.size() == 2; }));
    EXPECT_TRUE(clipboard.png.isEmpty());
    EXPECT_EQ(images().note(), u"“gone.png” is not there any more"_s);
    model->fileActions()->copyPath({urlOf(png), urlOf(jpeg)});
    EXPECT_EQ(clipboard.text.toStdString(), png.string() + "\n" + jpeg.string());
    model->fileActions()->showInFiles({urlOf(jpeg)});
    EXPECT_EQ(fileManager.shown, std::vector{jpeg});
}

TEST_F(FilesForOthersTest, KeepsWhereAPictureCameFromAndCopiesItAsCredits) {
    clipboard.board->put(u"image/png"_s, pngData(picture(20, 10)));
    clipboard.board->put(u"text/html"_s, "<img src=\"https://x.example/logo.png\">");
    clipboard.board->put(u"chromium/x-source-url"_s, "https://x.example/about");
    model->paste();
    settle();
    EXPECT_TRUE(
        model->stagedOrigin().endsWith(u"\nImage: https://x.example/logo.png\nPage: https://x.example/about"_s));
    const auto recent = *model->fileOnDisk();
    EXPECT_EQ(platform::attribute(recent, "xdg.origin.url"), "https://x.example/logo.png");
    EXPECT_EQ(platform::attribute(recent, "xdg.referrer.url"), "https://x.example/about");

    // Brought back from a file it still knows, and so does what is saved of it.
    model->load(recent);
    settle();
    model->saveCurrentToLibrary();
    const auto saved = root() / "Library/Images/logo.png";
    ASSERT_TRUE(comesTrue([&] { return fs::exists(saved); }));
    const auto unknown = listed("mine.png", picture(3, 3));
    model->fileActions()->copyCredits({urlOf(saved), urlOf(unknown)});
    EXPECT_EQ(clipboard.text, u"logo — https://x.example/logo.png — https://x.example/about"_s);
    model->fileActions()->copyCredits({urlOf(unknown)});
    EXPECT_EQ(images().note(), u"Nothing is known of where this came from"_s);
}

TEST_F(FilesForOthersTest, GoesBackToWhatWasPasted) {
    PasteHistoryModel& history = *model->pasteHistory();
    const auto nameAt = [&](int row) {
        return history.data(history.index(row), PasteHistoryModel::NameRole).toString();
    };
    stage(file("one.png", picture(20, 10)));
    // Another follows before the first was encoded, and a cut-out follows that.
    model->load(file("two.png", picture(40, 30, Qt::white)));
    ASSERT_TRUE(comesTrue([&] { return model->stagedName() == u"two"_s; }));
    model->removeBackground(PanelModel::CutoutMethod::solid);
    ASSERT_TRUE(comesTrue([&] { return history.count() == 2; }));
    EXPECT_EQ(nameAt(0), u"two"_s);
    settle();
    model->stageAgain(1);
    settle();
    EXPECT_EQ(model->stagedName(), u"one"_s);
    EXPECT_TRUE(model->stagedProvenance().endsWith(u"one.png"_s)) << "where it came from, not where it was kept";
    EXPECT_EQ(model->displayImage(), picture(20, 10));
    EXPECT_EQ(nameAt(0), u"one"_s);

    const auto dragged = [&](int row) {
        DragRequest request;
        model->offerPasted(&request, row);
        return request.lateFiles ? request.lateFiles() : std::vector<fs::path>();
    };
    EXPECT_EQ(dragged(1), std::vector{root() / "Recent/two.png"});
    EXPECT_EQ(dragged(1), std::vector{root() / "Recent/two.png"}) << "the same file again";
    EXPECT_EQ(QImage(QString::fromStdString(root() / "Recent/two.png")).pixelColor(3, 3), QColor(Qt::white));
    EXPECT_EQ(Storage::sourceFormat(root() / "Recent/two.png"), u"png"_s);
    EXPECT_TRUE(dragged(7).empty());

    model->editItem(urlOf(listed("own.png", picture(9, 9, Qt::green))));
    settle();
    EXPECT_EQ(history.count(), 2) << "what came out of the library was not pasted";
    history.setEnabled(false);
    ASSERT_TRUE(comesTrue([&] { return history.count() == 0; }));
    stage(file("three.png", picture(5, 5)));
    history.refresh();
    settle();
    EXPECT_EQ(history.count(), 0);
}

TEST_F(FilesForOthersTest, TransformsASelection) {
    const auto wide = listed("wide.png", picture(30, 20));
    const auto other = listed("other.png", picture(8, 4));
    writeFile(root() / "Library/Images/no.svg", "<html/>");
    const auto broken = listed("no.svg.png", picture(1, 1)).parent_path() / "no.svg";
    images().transform({urlOf(wide)}, u"rotateLeft"_s);
    ASSERT_TRUE(comesTrue([&] { return images().note() == u"Rotate Left"_s; }));
    EXPECT_EQ(QImage(QString::fromStdString(wide)).size(), QSize(20, 30));
    images().transform({urlOf(wide), urlOf(other), urlOf(broken)}, u"flipVertical"_s);
    const QString why = u": It is no picture that can be read here"_s;
    ASSERT_TRUE(comesTrue([&] {
        return images().note() == u"Flip Vertical · 2 images · 1 could not be changed"_s + why;
    })) << images().noteText().toStdString();
    images().transform({urlOf(broken)}, u"rotateRight"_s);
    EXPECT_TRUE(comesTrue([&] { return images().note() == u"“no.svg” could not be changed"_s + why; }));
}

TEST_F(FilesForOthersTest, TheLibraryMovesWithAnOfferToCopy) {
    Storage moving(store, bookmarks, desktop);
    const fs::path old = *moving.root();
    writeFile(old / "Library/Audio/a.wav", "a");
    writeFile(old / "Recent/b.png", "b");
    fs::create_directories(folder / "drive");
    model = std::make_unique<PanelModel>(
        PanelModel::Collaborators{moving, settings, builtIns, clipboard, chooser, fileManager, work, saves});
    file(old.lexically_relative(folder.path()) / "Library/Images/at home.png", picture(4, 4));
    list(images());
    EXPECT_EQ(images().library().size(), 1U);

    sheet().chooseLocation();
    EXPECT_EQ(chooser.question.accept, u"Use Folder"_s);
    chooser.answer({});
    EXPECT_FALSE(sheet().hasChosenFolder());
    writeFile(folder / "file", "");
    sheet().chooseLocation();
    chooser.answer({folder / "file"});
    EXPECT_EQ(sheet().locationProblem(), u"Could not open the Quillary folder."_s);
    EXPECT_FALSE(sheet().hasChosenFolder());

    sheet().chooseLocation();
    chooser.answer({folder / "drive"});
    EXPECT_TRUE(sheet().locationProblem().isEmpty());
    EXPECT_TRUE(comesTrue([&] { return images().library().empty(); })) << "the shelf is the new place's";
    ASSERT_TRUE(comesTrue([&] { return job().offered(); }));
    EXPECT_EQ(job().audio(), 1);
    EXPECT_EQ(job().recent(), 1);
    job().copy(false, true, true, true, false);
    EXPECT_TRUE(job().copying());
    sheet().useDefaultLocation();
    EXPECT_TRUE(sheet().hasChosenFolder()) << "not while files are copied";
    ASSERT_TRUE(comesTrue([&] { return !job().note().isEmpty(); }));
    EXPECT_EQ(job().note(), u"Copied 1 file"_s);
    EXPECT_TRUE(fs::exists(folder / "drive/Quillary/Library/Audio/a.wav"));
    EXPECT_FALSE(fs::exists(folder / "drive/Quillary/Recent/b.png"));
    EXPECT_TRUE(fs::exists(old / "Library/Audio/a.wav"));

    fs::rename(folder / "drive", folder / "unplugged");
    sheet().refresh();
    EXPECT_TRUE(sheet().hasChosenFolder() && sheet().chosenFolderUnavailable());
    fs::rename(folder / "unplugged", folder / "drive");
    sheet().useDefaultLocation();
    EXPECT_FALSE(sheet().hasChosenFolder() || sheet().chosenFolderUnavailable());
    EXPECT_TRUE(comesTrue([&] { return images().library().size() == 1; }));
    ASSERT_TRUE(comesTrue([&] { return job().offered(); })) << "the way back is offered too";
    job().decline();
    EXPECT_FALSE(job().offered());
    sheet().showInFiles();
    EXPECT_EQ(fileManager.shown, std::vector{old});
    settle();
    model.reset();
}

TEST_F(FilesForOthersTest, BlockedAliasesAreGranted) {
    for (const char* name : {"one", "two", "other"}) fs::create_directories(folder / "drive" / name);
    fs::create_directory_symlink(folder / "drive/one", root() / "Library/Audio/One");
    fs::create_directory_symlink(folder / "drive/two", root() / "Library/Images/Two");
    BlockedAliases& aliases = *model->blockedAliases();
    aliases.grantAccessToBlockedAlias();
    EXPECT_FALSE(chooser.asked()) << "nothing is blocked";
    bookmarks.fenced = {folder / "drive"};
    model->appear();
    ASSERT_TRUE(comesTrue([&] { return aliases.blockedAliasCount() == 2; }));
    EXPECT_EQ(aliases.blockedAlias()->target, folder / "drive/two");

    aliases.grantAccessToBlockedAlias();
    EXPECT_EQ(chooser.question.accept, u"Grant Access"_s);
    EXPECT_EQ(chooser.question.start, folder / "drive/two");
    EXPECT_TRUE(chooser.question.message.startsWith(u"“Two” points at "_s));
    chooser.answer({});
    EXPECT_EQ(aliases.blockedAliasCount(), 2);
    aliases.grantAccessToBlockedAlias();
    chooser.answer({folder / "drive/two"});
    ASSERT_TRUE(
        comesTrue([&] { return model->blocksShelf()->note() == u"Access granted — two, 1 more folder to allow"_s; }));
    aliases.grantAccessToBlockedAlias();
    chooser.answer({folder / "drive"});
    EXPECT_TRUE(comesTrue([&] { return aliases.blockedAliasCount() == 0; }));
    EXPECT_TRUE(comesTrue([&] { return model->blocksShelf()->note() == u"Access granted — drive"_s; }));
}

TEST_F(FilesForOthersTest, ImportsAskForTheShelfsKind) {
    using enum PanelModel::LibraryKind;
    for (const auto& [kind, extension] :
         {std::pair{images, u"webp"_s}, {videos, u"mov"_s}, {audio, u"wav"_s}, {blocks, u"fcpxml"_s}}) {
        model->importFiles(kind);
        EXPECT_TRUE(chooser.question.extensions.contains(extension)) << extension.toStdString();
    }
    EXPECT_EQ(chooser.question.kind, platform::FileChooser::Kind::files);
    writeFile(folder / "clip.fcpxml", richCompound(folder / "media").toStdString());
    chooser.answer({folder / "clip.fcpxml"});
    EXPECT_TRUE(comesTrue([&] { return model->blocksShelf()->count() == 1; }));
    EXPECT_EQ(model->libraryKind(), blocks);

    model->importFolders();
    EXPECT_EQ(chooser.question.kind, platform::FileChooser::Kind::folders);
    file("graphics/deep/a.png", picture(4, 4));
    writeFile(folder / "sounds/b.wav", "sound");
    chooser.answer({folder / "graphics", folder / "sounds"});
    settle();
    EXPECT_EQ(model->librarySaveNote(), u"Saved 1 · 1 sound to Audio"_s);
    EXPECT_TRUE(model->importQueue()->offersFolders());
}

TEST_F(FilesForOthersTest, ThePanelItselfAsksWhereTheDesktopDoesNot) {
    writeFile(folder / "place/inner/a.png", "a");
    writeFile(folder / "place/.hidden/a.png", "a");
    writeFile(folder / "place/b.png", "b");
    FolderChooser own;
    std::vector<fs::path> picked;
    bool answered = false;
    const auto answer = [&](const std::vector<fs::path>& files) {
        picked = files;
        answered = true;
    };
    own.ask(&own, {.start = folder / "place"}, answer);
    EXPECT_EQ(own.entries(), QStringList{u"inner/"_s});
    own.open(0);
    own.pick();
    EXPECT_EQ(picked, std::vector{folder / "place/inner"});
    own.ask(&own, {.kind = platform::FileChooser::Kind::folders, .start = folder / "place"}, answer);
    EXPECT_EQ(own.entries(), QStringList{u"inner/"_s});
    own.pick();
    EXPECT_EQ(picked, std::vector{folder / "place"});
    own.ask(&own, {.kind = platform::FileChooser::Kind::files, .start = folder / "place/inner"}, answer);
    own.up();
    EXPECT_EQ(own.entries(), (QStringList{u"inner/"_s, u"b.png"_s}));
    EXPECT_FALSE(own.go(u"relative"_s));
    own.open(7);
    own.open(1);
    EXPECT_EQ(own.pickedRows(), QList<int>{1}) << "one of several";
    own.pick();
    EXPECT_EQ(picked, std::vector{folder / "place/b.png"});

    writeFile(folder / "place/c.PNG", "c");
    writeFile(folder / "place/d.wav", "d");
    own.ask(&own, {.kind = platform::FileChooser::Kind::files, .start = folder / "place", .extensions = {u"png"_s}},
            answer);
    EXPECT_EQ(own.entries(), (QStringList{u"inner/"_s, u"b.png"_s, u"c.PNG"_s}));
    picked.clear();
    own.pick();
    EXPECT_TRUE(own.active() && picked.empty()) << "nothing is picked yet";
    for (const int row : {2, 1, 2, 2}) own.open(row);
    own.pick();
    EXPECT_EQ(picked, (std::vector{folder / "place/b.png", folder / "place/c.PNG"}));
    own.ask(&own, {.kind = platform::FileChooser::Kind::file, .start = folder / "place"}, answer);
    EXPECT_TRUE(own.go(QString::fromStdString(folder / "place/d.wav"))) << "by its path";
    EXPECT_EQ(picked, std::vector{folder / "place/d.wav"});
    answered = false;
    own.ask(&own, {}, answer);
    own.cancel();
    EXPECT_TRUE(answered && picked.empty());
}

} // namespace

} // namespace quillary::test
