#include "LibraryFixture.h"

#include "platform/Bookmarks.h"

#include <thread>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

class StorageRootTest : public testing::Test {
protected:
    Storage made(std::optional<fs::path> rootForThisRun = {}) {
        return {settings, bookmarks, desktop, std::move(rootForThisRun)};
    }

    TemporaryFolder folder;
    FakeSettingsStore settings;
    FakeBookmarks bookmarks;
    FakeDesktop desktop{folder / "home"};
    const fs::path drive = folder / "drive";
};

const std::set<std::string> layout{"Library",        "Library/Audio",  "Library/Blocks",
                                   "Library/Images", "Library/Videos", "Recent"};

} // namespace

TEST_F(StorageRootTest, withoutAChoiceItIsQuillaryInTheResolvedFilmsFolder) {
    fs::create_directories(folder / "disk");
    fs::create_directory_symlink(folder / "disk", folder / "films");
    desktop.movies = folder / "films";
    Storage storage = made();
    EXPECT_EQ(storage.root(), folder / "disk/Quillary");
    EXPECT_EQ(everythingIn(folder / "disk/Quillary"), layout);
    EXPECT_FALSE(storage.chosenFolderUnavailable());
    EXPECT_EQ(*storage.customRoot(), std::nullopt);
}

TEST_F(StorageRootTest, aChosenFolderGetsAFolderOfTheName) {
    fs::create_directories(drive);
    fs::create_directories(folder / "Quillary");
    Storage storage = made();
    storage.setCustomRoot(drive);
    EXPECT_EQ(everythingIn(drive / "Quillary"), layout) << "laid out at once";
    EXPECT_EQ(storage.root(), drive / "Quillary");
    storage.setCustomRoot(folder / "Quillary");
    EXPECT_EQ(storage.root(), folder / "Quillary");
    EXPECT_THAT(bookmarks.open, testing::ElementsAre(folder / "Quillary")) << "access to the first folder ended";
    EXPECT_EQ(made().root(), folder / "Quillary") << "remembered by the next program";
    storage.clearCustomRoot();
    EXPECT_EQ(storage.root(), folder / "home/Movies/Quillary");
    EXPECT_FALSE(settings.value(SettingsKey::rootFolderBookmark).isValid());
}

TEST_F(StorageRootTest, anUnavailableFolderFallsBackUntilItIsThereAgain) {
    fs::create_directories(drive);
    made().setCustomRoot(drive);
    Storage storage = made();
    EXPECT_EQ(storage.root(), drive / "Quillary");
    const auto away = [&](bool unplugged) {
        fs::rename(unplugged ? drive : folder / "away", unplugged ? folder / "away" : drive);
    };
    for (int i = 0; i < 2; ++i) {
        away(true);
        EXPECT_EQ(storage.root(), folder / "home/Movies/Quillary");
        EXPECT_TRUE(storage.chosenFolderUnavailable());
        EXPECT_FALSE(fs::exists(drive)) << "nothing is made where the drive was";
        EXPECT_FALSE(storage.customRoot());
        away(false);
        EXPECT_EQ(storage.root(), drive / "Quillary");
        EXPECT_FALSE(storage.chosenFolderUnavailable());
    }
    storage.clearCustomRoot();
    bookmarks.refusesAccess = true;
    storage.setCustomRoot(drive);
    EXPECT_TRUE(storage.chosenFolderUnavailable());
    EXPECT_EQ(storage.customRoot().error(), StorageError::noRoot());
}

TEST_F(StorageRootTest, aStaleBookmarkIsMadeAnew) {
    fs::create_directories(drive);
    made().setCustomRoot(drive);
    const QVariant before = settings.value(SettingsKey::rootFolderBookmark);
    fs::rename(drive, folder / "renamed");
    bookmarks.folderMoved(folder / "renamed");
    EXPECT_EQ(made().root(), folder / "renamed/Quillary");
    const QVariant after = settings.value(SettingsKey::rootFolderBookmark);
    EXPECT_NE(after, before);
    EXPECT_FALSE(bookmarks.resolve(after.toByteArray())->stale);
}

TEST_F(StorageRootTest, aFolderThatCannotBeRememberedIsNotStored) {
    fs::create_directories(drive);
    bookmarks.canMake = false;
    Storage storage = made();
    storage.setCustomRoot(drive);
    EXPECT_EQ(storage.root(), folder / "home/Movies/Quillary");
    EXPECT_FALSE(storage.chosenFolderUnavailable());
}

TEST_F(StorageRootTest, aRootForThisRunNeverFallsBack) {
    Storage removed = made(folder / "gone");
    EXPECT_TRUE(removed.root());
    fs::remove_all(folder / "gone");
    EXPECT_EQ(removed.write(pasted(u"x"_s), Folder::images, {}).error(), StorageError::noRoot());
    EXPECT_TRUE(removed.items(Folder::images).empty());
    EXPECT_FALSE(fs::exists(folder / "gone"));
}

TEST_F(StorageRootTest, earlierLayoutsMoveOnceAndOverwriteNothing) {
    const fs::path root = folder / "home/Movies/Quillary";
    writeFile(root / "Library/loose.png", "loose");
    writeFile(root / "Library/taken.png", "old");
    writeFile(root / "Library/Images/taken.png", "new");
    writeFile(root / "Library/Logos/a.png", "a");
    writeFile(root / "Library/.hidden", "hidden");
    writeFile(root / "Library/Videos/clip.mov", "clip");
    writeFile(root / "Blocks/Intro.fcpxml", "block");
    writeFile(root / "Blocks/Sub/Outro.fcpxml", "block");
    Storage storage = made();
    EXPECT_TRUE(storage.root());
    auto expected = layout;
    expected.insert({"Library/.hidden", "Library/taken.png", "Library/Images/taken.png", "Library/Images/loose.png",
                     "Library/Images/Logos", "Library/Images/Logos/a.png", "Library/Videos/clip.mov",
                     "Library/Blocks/Intro.fcpxml", "Library/Blocks/Sub", "Library/Blocks/Sub/Outro.fcpxml"});
    EXPECT_EQ(everythingIn(root), expected);
    EXPECT_EQ(readFile(root / "Library/Images/taken.png"), "new");
    writeFile(root / "Library/later.png", "x");
    EXPECT_TRUE(storage.root());
    EXPECT_TRUE(fs::exists(root / "Library/later.png")) << "once per program";
}

TEST_F(StorageRootTest, manyThreadsOpenItAtOnce) {
    Storage storage = made();
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            EXPECT_EQ(storage.write(pasted(u"x"_s), Folder::images, u"A / B"_s)->parent_path().filename(), "B");
        });
    threads.clear();
    EXPECT_EQ(storage.items(Folder::images).size(), 4U);
}
