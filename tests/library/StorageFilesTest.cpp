#include "LibraryFixture.h"

#include <thread>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

class StorageFilesTest : public LibraryTest {
protected:
    fs::path stored(const fs::path& below, std::string_view bytes = "x") { return writeFile(root / below, bytes); }
    QString storedStars() { return settings.value(SettingsKey::favouritePaths).toStringList().join(u'|'); }
};

} // namespace

TEST_F(StorageFilesTest, refusesFilesThatAreNotOnAShelf) {
    writeFile(folder / "outside.png", "outside");
    writeFile(root / ".rasterized/icon.png", "icon");
    fs::create_symlink(folder / "outside.png", images / "link.png");
    const fs::path refused[] = {folder / "outside.png",
                                root / "Library/Images/../../../outside.png",
                                root / ".rasterized/icon.png",
                                images,
                                root,
                                "relative.png",
                                root.parent_path() / "Quillary2/a.png"};
    for (const fs::path& file : refused) {
        const std::string text = file.filename().native() + " is not in the library.";
        EXPECT_EQ(storage.remove(file).error().description().toStdString(), text) << file;
        EXPECT_EQ(storage.move(file, u"A"_s).error().description().toStdString(), text) << file;
        EXPECT_EQ(storage.rename(file, u"b"_s).error().description().toStdString(), text) << file;
        EXPECT_EQ(storage.shelfFolderOf(file), std::nullopt) << file;
    }
    const fs::path file = stored("Library/Images/Logos/a.png");
    EXPECT_EQ(storage.remove(file.parent_path()).error().description(), u"Logos is a folder."_s);
    EXPECT_TRUE(storage.remove(file));
    EXPECT_EQ(storage.remove(file).error().description(), u"Could not delete a.png: No such file or directory"_s);
    EXPECT_TRUE(storage.remove(images / "link.png"));
    EXPECT_EQ(readFile(folder / "outside.png"), "outside") << "a link goes, not what it leads to";
}

TEST_F(StorageFilesTest, knowsTheLibraryByAnotherWay) {
    fs::create_directory_symlink(root, folder / "shortcut");
    const fs::path file = stored("Library/Images/a.png");
    EXPECT_EQ(storage.rename(folder / "shortcut/Library/Images/a.png", u"b"_s), images / "b.png");
    EXPECT_EQ(storage.favoriteKey(folder / "shortcut/Library/Images/b.png"), u"Library/Images/b.png"_s);
    EXPECT_TRUE(storage.remove(root / "Library/Videos/../Images/./b.png"));
}

TEST_F(StorageFilesTest, movesWithinItsShelf) {
    const struct {
        const char* file;
        std::optional<QString> collection;
        const char* expected;
    } cases[] = {
        {"Library/Images/a.png", u"Logos / New"_s, "Library/Images/Logos/New/a.png"},
        {"Library/Images/b.png", u"Taken"_s, "Library/Images/Taken/b 2.png"},
        {"Library/Images/Taken/c.png", {}, "Library/Images/c.png"},
        {"Library/Images/Taken/d.png", u""_s, "Library/Images/d.png"},
        {"Library/Images/Taken/e.png", u"Taken"_s, "Library/Images/Taken/e.png"},
        {"Library/Videos/x:y.MOV", u"Clips"_s, "Library/Videos/Clips/x-y.MOV"},
        {"Library/Audio/\xff.wav", u"Fx"_s, "Library/Audio/Fx/\xff.wav"},
        {"Library/Blocks/Intro.fcpxml", u"B"_s, "Library/Blocks/B/Intro.fcpxml"},
        {"Recent/r.png", {}, "Recent/r.png"},
    };
    stored("Library/Images/Taken/b.png", "taken");
    for (const auto& [file, collection, expected] : cases) {
        const fs::path before = stored(file, file);
        const auto moved = storage.move(before, collection);
        ASSERT_TRUE(moved) << file << moved.error().description().toStdString();
        EXPECT_EQ(*moved, root / expected);
        EXPECT_EQ(readFile(*moved), file);
        EXPECT_EQ(fs::exists(before), before == *moved);
    }
    EXPECT_EQ(readFile(images / "Taken/b.png"), "taken");
    EXPECT_EQ(storage.move(stored("Recent/s.png"), u"A"_s).error().description(), u"Recent has no collections."_s);
    EXPECT_EQ(storage.move(images / "missing.png", u"New"_s).error().description(),
              u"Could not move missing.png: No such file or directory"_s);
    EXPECT_FALSE(fs::exists(images / "New"));
    EXPECT_EQ(storage.move(images / "Taken", u"Other"_s).error().description(), u"Taken is a folder."_s);
}

TEST_F(StorageFilesTest, aRelativeLinkGoesOnLeadingWhereItLed) {
    writeFile(folder / "drive/far.png", "far away");
    stored("Library/Images/A/near.png", "near");
    const auto words = [](const fs::path& link) { return fs::read_symlink(link).native(); };
    fs::create_symlink("near.png", images / "A/to near.png");
    fs::create_symlink((folder / "drive/far.png").lexically_relative(images / "A"), images / "A/to far.png");
    fs::create_symlink("nothing.png", images / "A/dangling.png");
    fs::create_symlink(folder / "drive/far.png", images / "A/whole.png");
    for (const char* name : {"to near.png", "to far.png", "dangling.png", "whole.png"}) {
        const auto moved = storage.move(images / "A" / name, u"B / Deep"_s);
        ASSERT_TRUE(moved) << name;
        ASSERT_TRUE(fs::is_symlink(*moved));
    }
    const fs::path deep = images / "B/Deep";
    EXPECT_EQ(readFile(deep / "to near.png"), "near");
    EXPECT_EQ(readFile(deep / "to far.png"), "far away");
    EXPECT_EQ(words(deep / "to near.png"), "../../A/near.png") << "still relative";
    EXPECT_EQ(words(deep / "dangling.png"), "../../A/nothing.png");
    EXPECT_EQ(words(deep / "whole.png"), (folder / "drive/far.png").native());
    ASSERT_TRUE(storage.moveBack(deep / "to near.png", images / "A/to near.png"));
    EXPECT_EQ(words(images / "A/to near.png"), "near.png");
    EXPECT_EQ(words(*storage.rename(images / "A/to near.png", u"renamed"_s)), "near.png");
    EXPECT_EQ(everythingIn(deep), (std::set<std::string>{"dangling.png", "to far.png", "whole.png"}));
}

TEST_F(StorageFilesTest, blanksAtTheEdgesMakeNoOtherCollection) {
    stored("Library/Images/ Logos /a.png", "a");
    stored("Library/Images/b.png", "b");
    const auto listed = [&](const QString& collection) {
        std::set<std::string> names;
        for (const LibraryItem& item : storage.items(Folder::images))
            if (item.collection == collection) names.insert(item.url.filename());
        return names;
    };
    EXPECT_EQ(storage.collectionFolders(Folder::images), QStringList{u"Logos"_s});
    EXPECT_EQ(*storage.move(images / "b.png", u"Logos"_s), images / " Logos /b.png");
    EXPECT_EQ(*storage.write(pasted(u"c"_s), Folder::images, u" Logos "_s), images / " Logos /c.png");
    EXPECT_EQ(*storage.move(images / " Logos /a.png", u"Logos "_s), images / " Logos /a.png") << "there already";
    EXPECT_EQ(listed(u"Logos"_s), (std::set<std::string>{"a.png", "b.png", "c.png"}));
    stored("Library/Images/Logos/d.png", "d");
    EXPECT_EQ(listed(u"Logos"_s).size(), 4U) << "two folders, one collection";
    EXPECT_EQ(storage.collectionFolders(Folder::images).size(), 1);
}

TEST_F(StorageFilesTest, renamesInItsFolder) {
    const struct {
        const char* name;
        const char* expected;
    } cases[] = {{"b", "b.PNG"},       {"a", "a.PNG"},       {"x/y:z", "x-y-z.PNG"}, {"taken", "taken 2.PNG"},
                 {"c.png", "c.PNG"},   {" d.Png ", "d.PNG"}, {"", "Image.PNG"},      {"..", "-..PNG"},
                 {"v1.2", "v1.2.PNG"}, {".PNG", "Image.PNG"}};
    stored("Library/Images/taken.PNG", "taken");
    for (const auto& [name, expected] : cases) {
        const fs::path file = stored("Library/Images/a.PNG");
        EXPECT_EQ(storage.rename(file, QString::fromUtf8(name)), images / expected) << name;
        fs::remove(images / expected);
    }
    EXPECT_EQ(storage.rename(images / "gone.png", u"x"_s).error().description(),
              u"Could not move gone.png: No such file or directory"_s);
}

TEST_F(StorageFilesTest, starsFollowTheirFiles) {
    const fs::path a = stored("Library/Images/a.png");
    const fs::path b = stored("Library/Images/b.png");
    settings.setValue(SettingsKey::favouritePaths, QStringList{u"Library/Images/gone.png"_s});
    EXPECT_TRUE(storage.toggleFavorite(a));
    const fs::path moved = *storage.move(a, u"Logos"_s);
    const fs::path renamed = *storage.rename(moved, u"z"_s);
    EXPECT_EQ(storedStars(), u"Library/Images/gone.png|Library/Images/Logos/z.png"_s);
    EXPECT_TRUE(storage.rename(b, u"c"_s));
    EXPECT_EQ(storage.favorites().size(), 2) << "a file without a star gets none";
    EXPECT_FALSE(storage.toggleFavorite(renamed));
    storage.setFavorites(std::array{images / "c.png", renamed, renamed}, true);
    EXPECT_EQ(storage.favorites().size(), 3);
    storage.setFavorites(std::array{renamed, root / "Recent/never.png"}, false);
    EXPECT_EQ(storedStars(), u"Library/Images/gone.png|Library/Images/c.png"_s);
}

TEST_F(StorageFilesTest, starsSurviveAMovedLibrary) {
    EXPECT_TRUE(storage.toggleFavorite(stored("Library/Images/Logos/é 東.png")));
    fs::create_directories(folder / "drive");
    fs::rename(root, folder / "drive/Quillary");
    storage.setCustomRoot(folder / "drive");
    EXPECT_TRUE(
        storage.favorites().contains(storage.favoriteKey(folder / "drive/Quillary/Library/Images/Logos/é 東.png")));
}

TEST(FavoriteKeyTest, isRelativeToTheRootInsideAndFullOutside) {
    const std::tuple<fs::path, fs::path, const char*> cases[] = {
        {"/q/Library/Images/a.png", "/q", "Library/Images/a.png"},
        {"/q/Library/./Images//b/../a.png", "/q", "Library/Images/a.png"},
        {"/q/a.png", "/q", "a.png"},
        {"/q2/a.png", "/q", "/q2/a.png"},
        {"/q/../x/a.png", "/q", "/x/a.png"},
        {"/a.png", "/q", "/a.png"},
    };
    for (const auto& [file, root, key] : cases) EXPECT_EQ(Storage::favoriteKey(file, root).toStdString(), key) << file;
}
