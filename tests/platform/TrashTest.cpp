#include "platform/Trash.h"
#include "support/SmallFileSystem.h"

#include <QByteArray>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace quillary;
using namespace quillary::test;
using platform::moveToTrash;
using platform::restoreFromTrash;
namespace fs = std::filesystem;

namespace {

/// The user's own trash lies in a folder of the test's.
class TrashTest : public testing::Test {
protected:
    TrashTest() { qputenv("XDG_DATA_HOME", QByteArray((folder / "data").c_str())); }
    ~TrashTest() override { qunsetenv("XDG_DATA_HOME"); }

    static std::string noteLine(const fs::path& info, const std::string& key) {
        const std::string text = readFile(info);
        const auto at = text.find("\n" + key + "=");
        if (!text.starts_with("[Trash Info]\n") || at == std::string::npos) return "(none)";
        const auto begin = at + key.size() + 2;
        return text.substr(begin, text.find('\n', begin) - begin);
    }
    static auto entries(const fs::path& place) {
        return std::distance(fs::directory_iterator(place), fs::directory_iterator());
    }

    TemporaryFolder folder;
    fs::path trash = folder / "data/Trash";
};

TEST_F(TrashTest, KeepsFilesOfTheHomesFileSystemUnderFreeNames) {
    const std::string name = "a b#100%\xff.png";
    for (const char* content : {"first", "second"}) {
        writeFile(folder / name, content);
        const auto trashed = moveToTrash(folder / name);
        ASSERT_TRUE(trashed) << trashed.error().description().toStdString();
        EXPECT_FALSE(fs::exists(folder / name));
        EXPECT_EQ(readFile(trashed->file), content);
        EXPECT_EQ(trashed->file.parent_path(), trash / "files");
        EXPECT_EQ(trashed->info, trash / "info" / (trashed->file.filename().string() + ".trashinfo"));
        EXPECT_EQ(noteLine(trashed->info, "Path"), fs::canonical(folder.path()).string() + "/a%20b%23100%25%FF.png");
        EXPECT_EQ(noteLine(trashed->info, "DeletionDate").size(), 19U);
    }
    EXPECT_EQ(entries(trash / "files"), 2);
    struct stat status {};
    ASSERT_EQ(::stat(trash.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);

    // A file without a note, and one that is as long as names can be.
    writeFile(trash / "files/x.png", "somebody's");
    for (const std::string& odd : {std::string("x.png"), std::string(251, 'y') + ".png", std::string(255, 'z')}) {
        writeFile(folder / odd, odd);
        const auto trashed = moveToTrash(folder / odd);
        ASSERT_TRUE(trashed) << trashed.error().description().toStdString();
        EXPECT_TRUE(restoreFromTrash(*trashed));
        EXPECT_EQ(readFile(folder / odd), odd);
        EXPECT_FALSE(fs::exists(trashed->info));
    }
    EXPECT_EQ(readFile(trash / "files/x.png"), "somebody's");
    EXPECT_EQ(entries(trash / "info"), 2) << "no note is left over";
}

TEST_F(TrashTest, PutsBackOverNothing) {
    writeFile(folder / "sub/a.png", "a");
    auto trashed = moveToTrash(folder / "sub/a.png");
    ASSERT_TRUE(trashed);
    fs::remove(folder / "sub");
    EXPECT_TRUE(restoreFromTrash(*trashed)) << "its folder is made anew";
    trashed = moveToTrash(folder / "sub/a.png");
    writeFile(folder / "sub/a.png", "another");
    EXPECT_EQ(restoreFromTrash(*trashed).error().code, EEXIST);
    EXPECT_EQ(readFile(folder / "sub/a.png"), "another");
    EXPECT_EQ(readFile(trashed->file), "a");
    fs::remove(trashed->file);
    fs::remove(folder / "sub/a.png");
    EXPECT_EQ(restoreFromTrash(*trashed).error().code, ENOENT) << "the trash was emptied";
    EXPECT_EQ(moveToTrash(folder / "sub").error().code, EISDIR);
    EXPECT_EQ(moveToTrash(folder / "gone.png").error().code, ENOENT);
    writeFile(folder / "target", "kept");
    fs::create_symlink(folder / "target", folder / "link.png");
    ASSERT_TRUE(moveToTrash(folder / "link.png"));
    EXPECT_EQ(readFile(folder / "target"), "kept");
}

TEST_F(TrashTest, UsesTheTrashOfTheDriveThatTheFileIsOn) {
    SmallFileSystem drive("tmpfs", "size=1m");
    SKIP_UNLESS_MOUNTED(drive);
    const std::string user = std::to_string(::getuid());
    writeFile(drive / "Quillary/a b.png", "a");
    const auto own = moveToTrash(drive / "Quillary/a b.png");
    ASSERT_TRUE(own);
    EXPECT_EQ(own->file, fs::canonical(drive.path()) / (".Trash-" + user) / "files/a b.png");
    EXPECT_EQ(noteLine(own->info, "Path"), "Quillary/a%20b.png");
    EXPECT_TRUE(restoreFromTrash(*own));

    fs::create_directory(drive / ".Trash");
    writeFile(drive / "b.png", "b");
    EXPECT_EQ(moveToTrash(drive / "b.png")->file.parent_path().parent_path().filename(), ".Trash-" + user)
        << "a shared trash counts only with its sticky bit";
    ASSERT_EQ(::chmod((drive / ".Trash").c_str(), 01777), 0);
    const auto shared = moveToTrash(drive / "Quillary/a b.png");
    ASSERT_TRUE(shared);
    EXPECT_EQ(shared->file, fs::canonical(drive.path()) / ".Trash" / user / "files/a b.png");
    EXPECT_FALSE(fs::exists(trash / "files")) << "nothing goes to another file system";
}

TEST_F(TrashTest, LeavesFilesAloneWhereThereIsNone) {
    SmallFileSystem drive("tmpfs", "size=1m");
    SKIP_UNLESS_MOUNTED(drive);
    writeFile(drive / "a.png", "a");
    const std::string user = std::to_string(::getuid());
    // What somebody else put there, or a link that leads elsewhere, is no trash.
    fs::create_directory(folder / "elsewhere");
    fs::create_directory_symlink(folder / "elsewhere", drive / (".Trash-" + user));
    EXPECT_EQ(moveToTrash(drive / "a.png").error().code, ENOTSUP);
    fs::remove(drive / (".Trash-" + user));
    ASSERT_TRUE(drive.makeReadOnly());
    EXPECT_FALSE(moveToTrash(drive / "a.png"));
    EXPECT_EQ(readFile(drive / "a.png"), "a");
    EXPECT_TRUE(fs::is_empty(folder / "elsewhere"));
}

} // namespace
