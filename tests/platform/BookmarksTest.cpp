#include "platform/Bookmarks.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace quillary::platform;
using namespace quillary::test;
namespace fs = std::filesystem;

TEST(BookmarksTest, followAFolderThroughTheLinkItLeft) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "disk");
    fs::create_directory_symlink(folder / "disk", folder / "link");
    const auto bookmarks = systemBookmarks();
    EXPECT_FALSE(bookmarks->make(folder / "missing"));
    const QByteArray data = *bookmarks->make(folder / "link");

    const auto fresh = bookmarks->resolve(data);
    ASSERT_TRUE(fresh);
    EXPECT_EQ(fresh->path, folder / "disk");
    EXPECT_FALSE(fresh->stale);
    EXPECT_TRUE(bookmarks->startAccess(fresh->path));

    fs::rename(folder / "disk", folder / "moved");
    const auto gone = bookmarks->resolve(data);
    ASSERT_TRUE(gone) << "an unplugged drive is still remembered";
    EXPECT_EQ(gone->path, folder / "disk");
    EXPECT_FALSE(gone->stale);

    fs::create_directory_symlink(folder / "moved", folder / "disk");
    const auto moved = bookmarks->resolve(data);
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->path, folder / "moved");
    EXPECT_TRUE(moved->stale);
    EXPECT_FALSE(bookmarks->resolve(*bookmarks->make(moved->path))->stale);
}

TEST(BookmarksTest, foreignDataNamesNothing) {
    for (const QByteArray& data : {QByteArray(), QByteArray("relative/path"), QByteArray("/a\0b", 4)})
        EXPECT_FALSE(systemBookmarks()->resolve(data)) << data.toStdString();
}
