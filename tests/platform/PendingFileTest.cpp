#include "platform/PendingFile.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFolder.h"
#include "support/SmallFileSystem.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace quillary;
using namespace quillary::platform;
using namespace quillary::test;
namespace fs = std::filesystem;

namespace {

std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

PendingFile written(const fs::path& folder, std::string_view text) {
    auto file = PendingFile::create(folder);
    EXPECT_TRUE(file) << file.error().description().toStdString();
    EXPECT_TRUE(file->write(bytes(text)));
    return *std::move(file);
}

std::set<std::string> names(const fs::path& folder) {
    std::set<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder)) found.insert(entry.path().filename());
    return found;
}

std::set<std::string> shownNames(const fs::path& folder) {
    auto found = names(folder);
    std::erase_if(found, [](const std::string& name) { return name.starts_with('.'); });
    return found;
}

using testing::ElementsAre;
using testing::IsEmpty;

} // namespace

TEST(PendingFileTest, takesTheFirstFreeNameAndShowsNothingBefore) {
    const TemporaryFolder folder;
    writeFile(folder / "Logo.png", "there");
    fs::create_symlink("nowhere", folder / "Logo 2.png");
    auto file = written(folder.path(), "whole");
    EXPECT_THAT(shownNames(folder.path()), ElementsAre("Logo 2.png", "Logo.png"));
    EXPECT_TRUE(file.sync());
    EXPECT_EQ(*file.place({"Logo", "png"}), folder / "Logo 3.png");
    EXPECT_EQ(*written(folder.path(), "next").place({"Logo", "png"}), folder / "Logo 4.png");
    EXPECT_EQ(readFile(folder / "Logo.png"), "there");
    EXPECT_EQ(readFile(folder / "Logo 3.png"), "whole");
    EXPECT_EQ(names(folder.path()).size(), 4U);
}

TEST(PendingFileTest, takesExactlyOneNameOrStaysUnnamed) {
    const TemporaryFolder folder;
    writeFile(folder / "taken", "there");
    platform::setAttribute(folder / "taken", "tag", "kept");
    fs::permissions(folder / "taken", fs::perms::owner_read);
    auto file = written(folder.path(), "whole");
    EXPECT_EQ(file.placeAs("taken").error().code, EEXIST);
    EXPECT_TRUE(file.copyAttributesFrom(folder / "taken"));
    EXPECT_TRUE(file.placeAs("free"));
    EXPECT_EQ(readFile(folder / "taken"), "there");
    EXPECT_EQ(readFile(folder / "free"), "whole");
    EXPECT_EQ(platform::attribute(folder / "free", "tag"), "kept");
    EXPECT_EQ(fs::status(folder / "free").permissions(), fs::perms::owner_read);
    EXPECT_EQ(names(folder.path()).size(), 2U);
}

TEST(PendingFileTest, findsTheFirstGapAmongManyTakenNames) {
    const TemporaryFolder folder;
    for (int n = 1; n <= 300; ++n)
        if (n != 217) writeFile(folder / (n == 1 ? "a" : "a " + std::to_string(n)), "");
    EXPECT_EQ(*written(folder.path(), "x").place({"a", ""}), folder / "a 217");
    EXPECT_EQ(*written(folder.path(), "x").place({"a", ""}), folder / "a 301");
}

TEST(PendingFileTest, leavesNothingWhenItIsDropped) {
    const TemporaryFolder folder;
    {
        auto first = written(folder.path(), "dropped");
        auto second = written(folder.path(), "overwritten by a move");
        second = std::move(first);
    }
    EXPECT_THAT(names(folder.path()), IsEmpty());
}

TEST(PendingFileTest, manyThreadsNeverTakeTheSameName) {
    const TemporaryFolder folder;
    constexpr int each = 60;
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < each; ++i)
                EXPECT_TRUE(written(folder.path(), std::to_string(t * each + i)).place({"same", "txt"}));
        });
    threads.clear();
    std::set<std::string> contents;
    for (const std::string& name : names(folder.path())) contents.insert(readFile(folder / name));
    EXPECT_EQ(contents.size(), 4U * each);
    EXPECT_TRUE(fs::exists(folder / ("same " + std::to_string(4 * each) + ".txt"))) << "the numbers have no gap";
}

TEST(PendingFileTest, replacesAFileInOneStep) {
    const TemporaryFolder folder;
    writeFile(folder / "old.svg", "old");
    std::jthread reader([&](std::stop_token stop) {
        while (!stop.stop_requested()) {
            const std::string seen = readFile(folder / "old.svg");
            EXPECT_TRUE(seen == "old" || seen.starts_with("new ")) << seen;
        }
    });
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(written(folder.path(), "new " + std::to_string(i)).replace(folder / "old.svg"));
    reader.request_stop();
    reader.join();
    EXPECT_THAT(names(folder.path()), ElementsAre("old.svg"));
}

TEST(PendingFileTest, copiesBytesAttributesAndPermissions) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4097}, std::size_t{40'000'000}}) {
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i) content[i] = static_cast<char>(i * 2654435761U >> 13U);
        const fs::path source = elsewhere / "source.mov";
        fs::remove(source);
        writeFile(source, content);
        setAttribute(source, "com.example.note", "kept");
        setAttribute(source, "com.example.long", std::string(500, 'x'));
        fs::permissions(source, fs::perms(0440));
        auto copy = *PendingFile::create(folder.path());
        std::uint64_t told = 0;
        EXPECT_TRUE(copy.copyFrom(source, [&](std::uint64_t done, std::uint64_t total) {
            EXPECT_LE(done, total);
            told = done;
        }));
        EXPECT_EQ(told, size);
        const fs::path placed = *copy.place({"copy", "mov"});
        EXPECT_TRUE(readFile(placed) == content) << size;
        EXPECT_EQ(attribute(placed, "com.example.note"), "kept");
        EXPECT_EQ(attribute(placed, "com.example.long"), std::string(500, 'x'));
        EXPECT_EQ(fs::status(placed).permissions(), fs::perms(0440));
        EXPECT_TRUE(readFile(source) == content);
    }
}

TEST(PendingFileTest, tellsWhyNothingWasCopied) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    writeFile(folder / "file", std::string(100, 'x'));
    std::stop_source stopped;
    stopped.request_stop();
    const struct {
        const char* source;
        std::stop_token stop;
        int code;
    } cases[] = {
        {"missing", {}, ENOENT}, {"pipe", {}, EINVAL}, {".", {}, EISDIR}, {"file", stopped.get_token(), ECANCELED}};
    for (const auto& [source, stop, code] : cases) {
        auto copy = *PendingFile::create(folder.path());
        const auto copied = copy.copyFrom(folder / source, {}, stop);
        ASSERT_FALSE(copied) << source;
        EXPECT_EQ(copied.error().code, code) << source;
    }
    EXPECT_THAT(names(folder.path()), ElementsAre("file", "pipe"));
}

TEST(PendingFileTest, aFullFileSystemKeepsWhatItHas) {
    const SmallFileSystem full("tmpfs", "size=256k");
    SKIP_UNLESS_MOUNTED(full);
    writeFile(full / "there.png", std::string(100'000, 'x'));
    auto file = *PendingFile::create(full.path());
    const auto result = file.write(bytes(std::string(400'000, 'y')));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().description().toStdString(), "No space left on device");
    const TemporaryFolder elsewhere;
    writeFile(elsewhere / "large", std::string(400'000, 'z'));
    auto copy = *PendingFile::create(full.path());
    EXPECT_EQ(copy.copyFrom(elsewhere / "large").error().code, ENOSPC);
    EXPECT_EQ(moveToFreeName(elsewhere / "large", full.path(), {"large", ""}).error().code, ENOSPC);
    EXPECT_TRUE(fs::exists(elsewhere / "large"));
    EXPECT_THAT(shownNames(full.path()), ElementsAre("there.png"));
}

TEST(PendingFileTest, needsNoAttributesAndNoWritableFolder) {
    SmallFileSystem plain("ramfs");
    SKIP_UNLESS_MOUNTED(plain);
    ASSERT_FALSE(setAttribute(plain.path(), "x", "y")) << "this file system keeps attributes after all";
    auto file = written(plain.path(), "whole");
    file.setAttribute("com.tamsel.quillary.source", "png");
    const fs::path placed = *file.place({"a", "png"});
    EXPECT_EQ(readFile(placed), "whole");
    EXPECT_EQ(attribute(placed, "com.tamsel.quillary.source"), std::nullopt);
    EXPECT_TRUE(PendingFile::create(plain.path())->copyFrom(placed));
    ASSERT_TRUE(plain.makeReadOnly());
    EXPECT_EQ(PendingFile::create(plain.path()).error().code, EROFS);
}

TEST(PendingFileTest, clearsOnlyTemporaryFilesThatNobodyHolds) {
    const TemporaryFolder folder;
    writeFile(folder / ".quillary-1-aa.part", "abandoned");
    writeFile(folder / ".quillary-2-bb.part", "still written");
    writeFile(folder / ".quillary-settings", "somebody else's");
    writeFile(folder / "picture.part", "a user's");
    fs::create_symlink(folder / "picture.part", folder / ".quillary-3-cc.part");
    const int held = ::open((folder / ".quillary-2-bb.part").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    const auto mine = written(folder.path(), "my own");
    const auto before = names(folder.path());
    removeAbandonedFiles(folder.path());
    auto expected = before;
    expected.erase(".quillary-1-aa.part");
    EXPECT_EQ(names(folder.path()), expected);
    close(held);
}

TEST(PendingFolderTest, showsNothingBeforeItIsWholeAndClearsWhatKilledOnesLeft) {
    const TemporaryFolder folder;
    writeFile(folder / "Clip/there", "");
    writeFile(folder / ".quillary-1-1.part/Media/half", "left by a killed one");
    {
        auto made = PendingFolder::create(folder.path());
        ASSERT_TRUE(made);
        writeFile(made->path() / "Media/whole", "whole");
        removeAbandonedFiles(folder.path());
        EXPECT_THAT(shownNames(folder.path()), ElementsAre("Clip"));
        EXPECT_TRUE(fs::exists(made->path() / "Media/whole")) << "its maker lives";
        EXPECT_FALSE(fs::exists(folder / ".quillary-1-1.part"));
        EXPECT_EQ(*made->place({"Clip", {}}), folder / "Clip 2");
        const auto dropped = PendingFolder::create(folder.path());
        writeFile(dropped->path() / "a", "a");
    }
    EXPECT_THAT(names(folder.path()), ElementsAre("Clip", "Clip 2"));
    EXPECT_TRUE(fs::exists(folder / "Clip 2/Media/whole"));
    EXPECT_EQ(PendingFolder::create(folder / "nowhere").error().code, ENOENT);
}
