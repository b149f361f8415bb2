#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "support/SmallFileSystem.h"
#include "support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

using namespace quillary;
using namespace quillary::platform;
using namespace quillary::test;
namespace fs = std::filesystem;

TEST(FileMovesTest, movesFilesFoldersAndLinksToFreeNames) {
    const TemporaryFolder folder;
    writeFile(folder / "from/a.png", "a");
    writeFile(folder / "from/Logos/b.png", "b");
    fs::create_symlink("nowhere", folder / "from/link");
    writeFile(folder / "to/a.png", "older");
    fs::create_directories(folder / "to/Logos");
    const struct {
        const char* source;
        NumberedName names;
        const char* expected;
    } cases[] = {{"from/a.png", {"a", "png"}, "to/a 2.png"},
                 {"from/Logos", {"Logos", ""}, "to/Logos 2"},
                 {"from/link", {"link", ""}, "to/link"}};
    for (const auto& [source, wanted, expected] : cases) {
        const auto moved = moveToFreeName(folder / source, folder / "to", wanted);
        ASSERT_TRUE(moved) << source << moved.error().description().toStdString();
        EXPECT_EQ(*moved, folder / expected);
    }
    EXPECT_EQ(readFile(folder / "to/a.png"), "older");
    EXPECT_EQ(readFile(folder / "to/a 2.png"), "a");
    EXPECT_EQ(readFile(folder / "to/Logos 2/b.png"), "b");
    EXPECT_FALSE(fs::exists(folder / "from/a.png"));
    EXPECT_EQ(moveToFreeName(folder / "missing", folder / "to", {"x", ""}).error().code, ENOENT);
    EXPECT_FALSE(fs::exists(folder / "to/x"));
}

TEST(FileMovesTest, manyThreadsMoveWithoutLoss) {
    const TemporaryFolder folder;
    fs::create_directories(folder / "to");
    constexpr int each = 50;
    for (int i = 0; i < 4 * each; ++i) writeFile(folder / ("from" + std::to_string(i)) / "same.png", std::to_string(i));
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = t * each; i < (t + 1) * each; ++i)
                EXPECT_TRUE(
                    moveToFreeName(folder / ("from" + std::to_string(i)) / "same.png", folder / "to", {"same", "png"}));
        });
    threads.clear();
    std::set<std::string> contents;
    for (const auto& entry : fs::directory_iterator(folder / "to")) contents.insert(readFile(entry.path()));
    EXPECT_EQ(contents.size(), 4U * each);
}

TEST(FileMovesTest, acrossFileSystemsAWholeCopyTakesThePlace) {
    SmallFileSystem other("tmpfs");
    SKIP_UNLESS_MOUNTED(other);
    const TemporaryFolder folder;
    writeFile(folder / "clip.mov", std::string(3'000'000, 'v'));
    setAttribute(folder / "clip.mov", "com.example.note", "kept");
    const auto date = fs::file_time_type::clock::now() - std::chrono::hours(1000);
    fs::last_write_time(folder / "clip.mov", date);
    writeFile(other / "clip.mov", "older");
    EXPECT_EQ(moveToFreeName(folder / "clip.mov", other.path(), {"clip", "mov"}), other / "clip 2.mov");
    EXPECT_FALSE(fs::exists(folder / "clip.mov"));
    EXPECT_EQ(readFile(other / "clip 2.mov"), std::string(3'000'000, 'v'));
    EXPECT_EQ(fs::last_write_time(other / "clip 2.mov"), date);
    if (setAttribute(other / "clip.mov", "probe", "1")) {
        EXPECT_EQ(attribute(other / "clip 2.mov", "com.example.note"), "kept");
    }
    // A source that cannot be removed has not moved.
    ASSERT_TRUE(other.makeReadOnly());
    EXPECT_FALSE(moveToFreeName(other / "clip.mov", folder.path(), {"clip", "mov"}));
    EXPECT_FALSE(fs::exists(folder / "clip.mov"));
    EXPECT_EQ(readFile(other / "clip.mov"), "older");
}

TEST(FileMovesTest, aFileThatIsStillWrittenToDoesNotMoveToAnotherFileSystem) {
    SmallFileSystem other("tmpfs");
    SKIP_UNLESS_MOUNTED(other);
    const TemporaryFolder folder;
    const fs::path clip = folder / "clip.mov";
    bool refused = false;
    // The writer may be kept from the processor for a whole move.
    for (int round = 0; round < 50 && !refused; ++round) {
        writeFile(clip, std::string(8'000'000, 'v'));
        std::ofstream growing(clip, std::ios::app);
        const std::jthread writer([&](const std::stop_token& stop) {
            while (!stop.stop_requested()) growing << 'v' << std::flush;
        });
        const auto moved = moveToFreeName(clip, other.path(), {"clip", "mov"});
        refused = !moved && moved.error().code == EBUSY;
        EXPECT_EQ(fs::exists(clip), refused);
        EXPECT_EQ(fs::exists(other / "clip.mov"), !refused);
        fs::remove(other / "clip.mov");
    }
    EXPECT_TRUE(refused);
}

TEST(FileMovesTest, createsFoldersOnce) {
    const TemporaryFolder folder;
    writeFile(folder / "file", "x");
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) EXPECT_TRUE(createFolders(folder / std::to_string(i) / "a" / "b"));
        });
    threads.clear();
    EXPECT_EQ(createFolders(folder / "file").error().code, ENOTDIR);
    EXPECT_EQ(createFolders(folder / "file/below").error().code, ENOTDIR);
    EXPECT_EQ(createFolders(folder / std::string(300, 'n')).error().code, ENAMETOOLONG);
}
