#include "LibraryFixture.h"

#include "platform/FileAttributes.h"

#include <sys/stat.h>

using namespace quillary;
using namespace quillary::test;
using testing::Contains;
using testing::Not;

namespace {

class StorageCopyTest : public LibraryTest {
protected:
    CopyResult copy(const CopySelection& selection = {}, const MediaOfBlocks& media = {}) {
        return Storage::copyContents(root, to, selection, media, progress);
    }

    const fs::path to = folder / "drive/Quillary";
    BatchProgress progress;
};

} // namespace

TEST_F(StorageCopyTest, CopiesEverythingOnce) {
    writeFile(images / "Logos/Sports/a.png", "a");
    writeFile(images / ".hidden.png", "h");
    writeFile(root / "Library/Audio/b.wav", "b");
    writeFile(recent / "c.png", "c");
    writeFile(root / "Library/Blocks/d.fcpxml", "d");
    fs::create_directories(images / "Empty");
    writeFile(folder / "elsewhere/x/e.png", "e");
    fs::create_directory_symlink(folder / "elsewhere", images / "Elsewhere");
    fs::create_directory_symlink("../../../../../elsewhere/x", images / "Way out");
    fs::create_symlink("Logos/Sports/a.png", images / "same.png");
    ASSERT_EQ(mkfifo((images / "pipe.png").c_str(), 0600), 0);
    platform::setAttribute(images / "Logos/Sports/a.png", Storage::sourceAttribute, "svg");
    platform::setAttribute(images / "Logos/Sports/a.png", "com.apple.quarantine", "1");
    setDate(images / "Logos/Sports/a.png", 1000);
    const auto before = everythingIn(root);

    EXPECT_EQ(copy(), (CopyResult{.copied = 7}));
    EXPECT_EQ(progress.done, 7);
    auto expected = before;
    expected.erase("Library/Images/.hidden.png");
    expected.erase("Library/Images/pipe.png");
    EXPECT_EQ(everythingIn(to), expected);
    EXPECT_EQ(everythingIn(root), before);
    const fs::path copied = to / "Library/Images/Logos/Sports/a.png";
    EXPECT_EQ(Storage::sourceFormat(copied), QStringLiteral("svg"));
    EXPECT_EQ(platform::attribute(copied, "com.apple.quarantine"), std::nullopt);
    EXPECT_EQ(fs::last_write_time(copied), fs::last_write_time(images / "Logos/Sports/a.png"));
    EXPECT_EQ(fs::read_symlink(to / "Library/Images/Elsewhere"), folder / "elsewhere");
    EXPECT_EQ(readFile(to / "Library/Images/same.png"), "a");
    EXPECT_EQ(readFile(to / "Library/Images/Way out/e.png"), "e") << "a relative link leads where it led";

    writeFile(to / "Recent/c.png", "another");
    EXPECT_EQ(copy(), (CopyResult{.copied = 0, .skipped = 7}));
    EXPECT_EQ(readFile(to / "Recent/c.png"), "another");
    EXPECT_EQ(Storage::shelfCounts(to).images, Storage::shelfCounts(root).images);
}

TEST_F(StorageCopyTest, BlocksBringTheirMedia) {
    writeFile(images / "Final Cut Elements/a.png", "a");
    writeFile(images / "b.png", "b");
    writeFile(root / "Library/Blocks/c.fcpxml", "c");
    const auto media = [](const fs::path&) -> std::vector<fs::path> {
        return {"Library/Images/Final Cut Elements/a.png", "Library/Audio/Final Cut Elements/gone.wav"};
    };
    const CopySelection blocksOnly{.images = false, .videos = false, .audio = false, .recent = false};
    const CopyResult partly = copy(blocksOnly, media);
    EXPECT_EQ(partly.copied, 2);
    ASSERT_EQ(partly.failures.size(), 1U);
    EXPECT_FALSE(partly.failures.front().second.isEmpty());
    EXPECT_THAT(everythingIn(to), Contains("Library/Images/Final Cut Elements/a.png"));
    EXPECT_THAT(everythingIn(to), Not(Contains("Library/Images/b.png")));
    const CopyResult all = copy({}, media);
    EXPECT_EQ((std::array{all.copied, all.skipped, all.failed}), (std::array{1, 2, 1})) << "each file counts once";
}

TEST_F(StorageCopyTest, EndsWhereItIsTold) {
    for (int i = 0; i < 5; ++i) writeFile(images / (std::to_string(i) + ".png"), "x");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(Storage::copyContents(root, to, {}, {}, progress, stop.get_token()), CopyResult());

    // The new root in the old one's shelf is not copied into itself.
    const fs::path inside = images / "Moved/Quillary";
    EXPECT_EQ(Storage::copyContents(root, inside, {}, {}, progress).copied, 5);
    fs::create_directories(inside);
    EXPECT_EQ(Storage::copyContents(root, inside, {}, {}, progress), (CopyResult{.skipped = 5}));
    writeFile(folder / "file", "");
    EXPECT_EQ(Storage::copyContents(root, folder / "file", {}, {}, progress).copied, 0);
    EXPECT_EQ(CopyResult(1, 0, 0).summary(), QStringLiteral("Copied 1 file"));
    EXPECT_EQ(CopyResult(0, 3, 2).summary(),
              QStringLiteral("Copied 0 files, skipped 3 already there, 2 could not be copied"));
}
