#include "LibraryFixture.h"

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

using StorageListingTest = LibraryTest;

std::vector<std::string> named(const LibraryItems& items) {
    std::vector<std::string> names;
    for (const LibraryItem& item : items) names.push_back(item.url.filename());
    return names;
}

} // namespace

TEST_F(StorageListingTest, itemsTellEverythingNewestFirst) {
    writeFile(images / "old.png", "x");
    writeFile(images / "Logos/Sports/new.SVG", "x");
    writeFile(images / "Logos/middle.jpeg", "x");
    writeFile(images / "notes.txt", "x");
    writeFile(images / ".hidden.png", "x");
    setDate(images / "old.png", 1000);
    setDate(images / "Logos/middle.jpeg", 2000);
    setDate(images / "Logos/Sports/new.SVG", 3000);
    Storage::setSourceFormat(images / "Logos/Sports/new.SVG", u"SVG"_s);
    const auto date = [](int seconds) { return FileDate(std::chrono::seconds(seconds)); };
    const LibraryItems expected{
        {images / "Logos/Sports/new.SVG", date(3000), u"Logos / Sports"_s, u"svg"_s},
        {images / "Logos/middle.jpeg", date(2000), u"Logos"_s, {}},
        {images / "old.png", date(1000), {}, {}},
    };
    EXPECT_EQ(storage.items(Folder::images), expected);
    EXPECT_EQ(Storage::collections(expected), (QStringList{u"Logos"_s, u"Logos / Sports"_s}));
    EXPECT_TRUE(storage.items(Folder::videos).empty());
}

TEST_F(StorageListingTest, recentIsFlat) {
    writeFile(recent / "a.png", "x");
    writeFile(recent / "sub/b.png", "x");
    writeFile(recent / "c.mov", "x");
    const LibraryItems items = storage.recentItems();
    EXPECT_EQ(named(items), std::vector<std::string>{"a.png"});
    EXPECT_EQ(items[0].collection, std::nullopt);
}

TEST_F(StorageListingTest, countsRecognisedFiles) {
    for (const char* file : {"Library/Images/a.png", "Library/Images/L/b.SVG", "Library/Images/c.mov",
                             "Library/Videos/d.mp4", "Library/Audio/e.wav", "Library/Audio/X/f.flac",
                             "Library/Blocks/g.fcpxml", "Library/Blocks/g.png", "Recent/h.png", "Recent/.hidden.png"})
        writeFile(root / file, "x");
    EXPECT_EQ(storage.shelfCounts(), (ShelfCounts{2, 1, 2, 1, 1}));
    fs::remove_all(root / "Library");
    EXPECT_EQ(storage.shelfCounts(), (ShelfCounts{0, 0, 0, 0, 1}));
}

TEST_F(StorageListingTest, pruneDeletesTheOldestAboveTheLimit) {
    const struct {
        int limit;
        int deleted;
    } cases[] = {{0, 0}, {-1, 0}, {503, 0}, {504, 0}, {500, 3}, {500, 0}, {1, 499}};
    for (int i = 0; i < 503; ++i) {
        const fs::path file = recent / (std::to_string(i) + (i % 2 ? ".png" : ".PNG"));
        writeFile(file, "x");
        setDate(file, 100'000 - i);
    }
    writeFile(recent / ".hidden", "x");
    for (const auto& [limit, deleted] : cases) {
        EXPECT_EQ(storage.pruneRecent(limit), deleted) << limit;
        if (limit == 500) {
            EXPECT_FALSE(fs::exists(recent / "500.PNG") || fs::exists(recent / "502.PNG"));
        }
    }
    EXPECT_EQ(everythingIn(recent), (std::set<std::string>{".hidden", "0.PNG"}));
}

TEST_F(StorageListingTest, pruneTakesNeitherWhatWasJustWrittenNorWhatOthersPutThere) {
    for (const char* name : {"notes.txt", "photo.jpg", "plan.pdf", "new.png", "a.png", "b.png"}) {
        writeFile(recent / name, name);
        setDate(recent / name, name[0] == 'a' ? 5000 : 1000);
    }
    fs::create_symlink("b.png", recent / "link.png");
    // A clock that went wrong has dated the others later.
    setDate(recent / "new.png", 1);
    EXPECT_EQ(storage.pruneRecent(2, recent / "new.png"), 1);
    EXPECT_EQ(everythingIn(recent),
              (std::set<std::string>{"notes.txt", "photo.jpg", "plan.pdf", "new.png", "a.png", "link.png"}));
    EXPECT_EQ(storage.pruneRecent(1, recent / "new.png"), 1);
    EXPECT_TRUE(fs::exists(recent / "new.png"));
}

TEST_F(StorageListingTest, pruneNeverDeletesWhatLiesInAFolder) {
    writeFile(recent / "folder/kept.png", "x");
    setDate(recent / "folder", 1);
    for (const char* name : {"a.png", "b.png"}) writeFile(recent / name, "x");
    EXPECT_EQ(storage.pruneRecent(2), 0);
    EXPECT_TRUE(fs::exists(recent / "folder/kept.png") && fs::exists(recent / "a.png"));
}
