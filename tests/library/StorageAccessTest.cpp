#include "LibraryFixture.h"

#include "platform/Bookmarks.h"

using namespace quillary;
using namespace quillary::test;

namespace {

class StorageAccessTest : public LibraryTest {
protected:
    fs::path linked(const fs::path& alias, const fs::path& target) {
        fs::create_directories(target);
        fs::create_directories(alias.parent_path());
        fs::create_directory_symlink(target, alias);
        return alias;
    }
    int granted() const { return static_cast<int>(settings.value(SettingsKey::extraScopeBookmarks).toList().size()); }
};

} // namespace

TEST_F(StorageAccessTest, FindsTheAliasesThatAGrantWouldOpen) {
    const fs::path drive = folder / "drive";
    const fs::path alias = linked(images / "A/Shared", drive / "shared");
    linked(root / "Library/Audio/Effects", drive / "effects");
    linked(images / "Open", folder / "open");
    linked(images / ".hidden", drive / "hidden");
    fs::create_symlink(folder / "gone", images / "Dangling");
    fs::create_directory_symlink(images, images / "A/Loop");
    EXPECT_EQ(storage.blockedAliases().count, 0) << "no fence";

    bookmarks.fenced = {drive, folder / "gone"};
    bookmarks.fenced.erase(folder / "gone");
    const auto blocked = storage.blockedAliases();
    EXPECT_EQ(blocked.count, 2);
    EXPECT_EQ(blocked.alias, alias);
    EXPECT_EQ(blocked.target, drive / "shared");
    EXPECT_EQ(storage.resolvedDirectory(alias), std::nullopt);
    EXPECT_EQ(storage.resolvedDirectory(images / "Open"), folder / "open");
    EXPECT_EQ(storage.resolvedDirectory(images / "Dangling"), std::nullopt);

    storage.grantAccess(drive);
    EXPECT_EQ(storage.blockedAliases().count, 0) << "a parent grants everything in it";
    EXPECT_EQ(storage.resolvedDirectory(alias), drive / "shared");
}

TEST_F(StorageAccessTest, RemembersEachGrantOnce) {
    const fs::path drive = folder / "drive";
    fs::create_directories(drive);
    storage.grantAccess(drive);
    storage.grantAccess(drive / "." / "");
    storage.openExtraScopes();
    EXPECT_EQ(granted(), 1);
    EXPECT_EQ(bookmarks.open.count(drive), 1U);

    Storage later(settings, bookmarks, desktop);
    bookmarks.open.clear();
    later.openExtraScopes();
    EXPECT_THAT(bookmarks.open, testing::ElementsAre(drive)) << "remembered by the next program";

    bookmarks.canMake = false;
    storage.grantAccess(folder / "other");
    EXPECT_EQ(granted(), 1);
}
