#include "library/ShelfIndex.h"

#include "LibraryFixture.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

class ShelfIndexTest : public testing::Test {
protected:
    ShelfIndex index(bool watch = true) { return {shelf, Storage::extensions(Folder::images), watch}; }

    void file(const std::string& name, int seconds = 1000) {
        writeFile(shelf / name, "x");
        setDate(shelf / name, seconds);
    }
    static std::set<std::string> shown(const ShelfIndex& index) {
        std::set<std::string> names;
        for (const LibraryItem& item : *index.items())
            names.insert((item.collection ? item.collection->toStdString() + ": " : "") + item.url.filename().native());
        return names;
    }
    static bool hasNews(const ShelfIndex& index) {
        pollfd wait{index.descriptor(), POLLIN, 0};
        return poll(&wait, 1, 0) == 1;
    }

    TemporaryFolder folder;
    const fs::path shelf = folder / "shelf";
};

} // namespace

TEST_F(ShelfIndexTest, equalDatesKeepTheOrderOfTheWalk) {
    for (int i = 0; i < 50; ++i) file(std::to_string(i) + ".png", 1000);
    file("newest.png", 2000);
    file("oldest.png", -5);
    ShelfIndex listing = index(false);
    EXPECT_TRUE(listing.refresh());
    std::vector<std::string> walked;
    for (const auto& entry : fs::directory_iterator(shelf)) walked.push_back(entry.path().filename());
    std::erase_if(walked, [](const std::string& name) { return name.ends_with("est.png"); });
    walked.insert(walked.begin(), "newest.png");
    walked.emplace_back("oldest.png");
    std::vector<std::string> listed;
    for (const LibraryItem& item : *listing.items()) listed.push_back(item.url.filename());
    EXPECT_EQ(listed, walked);
    EXPECT_FALSE(listing.refresh()) << "unwatched, read anew, the same";
}

TEST_F(ShelfIndexTest, followsLinksButNotInCircles) {
    file("A/a.png");
    writeFile(folder / "outside/Deep/o.png", "x");
    fs::create_directory_symlink(folder / "outside", shelf / "Out");
    fs::create_directory_symlink(shelf, shelf / "A/up");
    fs::create_directory_symlink(shelf / "A", shelf / "A/self");
    fs::create_directory_symlink(folder.path(), shelf / "above");
    fs::create_directory_symlink(shelf / "A", folder / "outside/Deep/A again");
    fs::create_symlink(folder / "outside/Deep/o.png", shelf / "linked.png");
    fs::create_symlink("nowhere.png", shelf / "dangling.png");
    ShelfIndex listing = index();
    listing.refresh();
    EXPECT_EQ(shown(listing),
              (std::set<std::string>{"A: a.png", "Out / Deep: o.png", "Out / Deep / A again: a.png", "linked.png",
                                     "above / outside / Deep: o.png", "above / outside / Deep / A again: a.png"}));
    EXPECT_EQ(ShelfIndex::countFiles(shelf, Storage::extensions(Folder::images)), 6);
}

TEST_F(ShelfIndexTest, aFolderOnADriveThatIsAwayIsMissing) {
    file("a.png");
    fs::create_directory_symlink(folder / "drive/Logos", shelf / "Logos");
    ShelfIndex kept = index();
    kept.refresh();
    EXPECT_EQ(kept.missingFolders(), QStringList{u"Logos"_s});
    EXPECT_EQ(kept.collectionFolders(), QStringList{u"Logos"_s});
    EXPECT_FALSE(kept.refresh());
    writeFile(folder / "drive/Logos/b.png", "x");
    EXPECT_TRUE(kept.refresh());
    EXPECT_EQ(kept.missingFolders(), QStringList());
    EXPECT_EQ(shown(kept), (std::set<std::string>{"a.png", "Logos: b.png"}));
    fs::remove_all(folder / "drive");
    EXPECT_TRUE(kept.refresh());
    EXPECT_EQ(kept.missingFolders(), QStringList{u"Logos"_s});
    EXPECT_FALSE(kept.refresh());
}

TEST_F(ShelfIndexTest, manyLinksEndSoon) {
    for (int i = 0; i < 8; ++i) fs::create_directories(folder / "web" / std::to_string(i));
    for (int from = 0; from < 8; ++from)
        for (int to = 0; to < 8; ++to)
            fs::create_directory_symlink(folder / "web" / std::to_string(to),
                                         folder / "web" / std::to_string(from) / ("to" + std::to_string(to)));
    fs::create_directories(shelf);
    fs::create_directory_symlink(folder / "web/0", shelf / "web");
    ShelfIndex listing = index();
    listing.refresh();
    EXPECT_LT(listing.collectionFolders().size(), 5000);
}

TEST_F(ShelfIndexTest, onlyRegularFilesCount) {
    file("a.png");
    fs::create_directories(shelf / "folder.png");
    ASSERT_EQ(mkfifo((shelf / "pipe.png").c_str(), 0600), 0);
    const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    std::strncpy(address.sun_path, (shelf / "socket.png").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    fs::create_symlink("pipe.png", shelf / "link.png");
    file("\xff\xfe.png");
    file("Gr\xf6\xdf"
         "e/b.png");
    ShelfIndex listing = index();
    listing.refresh();
    std::set<fs::path> paths;
    for (const LibraryItem& item : *listing.items()) paths.insert(item.url);
    EXPECT_EQ(paths, (std::set<fs::path>{shelf / "a.png", shelf / "\xff\xfe.png",
                                         shelf / "Gr\xf6\xdf"
                                                 "e/b.png"}));
    EXPECT_EQ(listing.collectionFolders().size(), 2);
    close(listening);
}

// Every step changes the disk; the kept listing must then be what a fresh one finds, and say that it changed.
TEST_F(ShelfIndexTest, keepsUpWithWhatHappensOnDisk) {
    file("a.png");
    file("Logos/b.png");
    file("Logos/Sports/c.png");
    writeFile(folder / "target/t.png", "x");
    ShelfIndex kept = index();
    EXPECT_TRUE(kept.refresh());
    const std::pair<const char*, std::function<void()>> steps[] = {
        {"a new file", [&] { file("n.png"); }},
        {"a file in a sub-folder", [&] { file("Logos/Sports/n.png"); }},
        {"a date", [&] { setDate(shelf / "Logos/b.png", 5000); }},
        {"a format", [&] { Storage::setSourceFormat(shelf / "Logos/b.png", u"svg"_s); }},
        {"a rewritten file", [&] { writeFile(shelf / "a.png", "longer"); }},
        {"a renamed file", [&] { fs::rename(shelf / "n.png", shelf / "m.png"); }},
        {"a file moved between folders", [&] { fs::rename(shelf / "m.png", shelf / "Logos/m.png"); }},
        {"a removed file", [&] { fs::remove(shelf / "Logos/m.png"); }},
        {"a new empty folder", [&] { fs::create_directories(shelf / "New"); }},
        {"a file in the new folder", [&] { file("New/x.png"); }},
        {"a deep tree at once", [&] { file("P/Q/R/y.png"); }},
        {"a renamed folder", [&] { fs::rename(shelf / "Logos", shelf / "Brands"); }},
        {"a file in the renamed folder", [&] { file("Brands/Sports/z.png"); }},
        {"a folder moved into another", [&] { fs::rename(shelf / "Brands", shelf / "P/Brands"); }},
        {"a file where it went", [&] { file("P/Brands/Sports/w.png"); }},
        {"a folder swapped for another of its name",
         [&] {
             fs::rename(shelf / "New", folder / "gone");
             file("New/other.png");
         }},
        {"a tree moved in", [&] { fs::rename(folder / "gone", shelf / "back"); }},
        {"a link to a folder", [&] { fs::create_directory_symlink(folder / "target", shelf / "Linked"); }},
        {"a file behind the link", [&] { writeFile(folder / "target/u.png", "x"); }},
        {"the link's target gone", [&] { fs::rename(folder / "target", folder / "hidden away"); }},
        {"and there again, nothing told", [&] { fs::rename(folder / "hidden away", folder / "target"); }},
        {"a link to a file", [&] { fs::create_symlink(folder / "target/t.png", shelf / "file link.png"); }},
        {"the file behind that link", [&] { setDate(folder / "target/t.png", 9000); }},
        {"a removed tree", [&] { fs::remove_all(shelf / "P"); }},
        {"a folder in place of a file",
         [&] {
             fs::remove(shelf / "a.png");
             fs::create_directories(shelf / "a.png/in");
         }},
        {"the shelf removed", [&] { fs::remove_all(shelf); }},
        {"the shelf made anew", [&] { file("again.png"); }},
        {"the shelf replaced",
         [&] {
             fs::rename(shelf, folder / "old shelf");
             file("replaced.png");
         }},
    };
    for (const auto& [what, change] : steps) {
        change();
        EXPECT_TRUE(kept.refresh()) << what;
        ShelfIndex fresh = index(false);
        fresh.refresh();
        const auto sorted = [](LibraryItems items) {
            std::ranges::sort(items, {}, [](const LibraryItem& item) { return item.url.native(); });
            return items;
        };
        EXPECT_EQ(sorted(*kept.items()), sorted(*fresh.items())) << what;
        EXPECT_EQ(kept.collectionFolders(), fresh.collectionFolders()) << what;
        EXPECT_FALSE(kept.refresh()) << what;
        EXPECT_FALSE(hasNews(kept)) << what;
    }
}

TEST_F(ShelfIndexTest, holdsBackWhatIsStillBeingWritten) {
    file("old.png");
    ShelfIndex kept = index();
    kept.refresh();
    std::ofstream incoming(shelf / "new.png");
    std::ofstream edited(shelf / "old.png", std::ios::app);
    incoming << "half" << std::flush;
    edited << "more" << std::flush;
    kept.refresh();
    EXPECT_EQ(shown(kept), std::set<std::string>{"old.png"}) << "what was listed stays, what comes waits";
    incoming << " a picture" << std::flush;
    EXPECT_FALSE(kept.refresh());
    incoming.close();
    EXPECT_TRUE(kept.refresh());
    EXPECT_EQ(shown(kept), (std::set<std::string>{"new.png", "old.png"}));
    EXPECT_FALSE(kept.growing());
    fs::create_hard_link(shelf / "old.png", shelf / "placed.png");
    kept.refresh();
    EXPECT_EQ(shown(kept).size(), 3U) << "a file that is placed whole shows at once";
}

TEST_F(ShelfIndexTest, takesBackItsSuspicionByItself) {
    file("old.png");
    ShelfIndex kept = index();
    kept.refresh();
    std::ofstream stuck(shelf / "stuck.png");
    stuck << "all there is" << std::flush;
    std::ofstream begun(shelf / "Sub.png");
    fs::create_directories(shelf / "Folder");
    kept.refresh();
    EXPECT_EQ(shown(kept), std::set<std::string>{"old.png"});
    while (kept.growing()) {
        EXPECT_FALSE(hasNews(kept)) << "nothing is told any more";
        std::this_thread::sleep_for(ShelfIndex::growingTime);
        kept.refresh();
    }
    EXPECT_EQ(shown(kept), (std::set<std::string>{"Sub.png", "old.png", "stuck.png"}));
    EXPECT_FALSE(kept.refresh());
}

TEST_F(ShelfIndexTest, readsEverythingAgainWhenChangesWereLost) {
    file("a.png");
    ShelfIndex kept = index();
    kept.refresh();
    std::ifstream limit("/proc/sys/fs/inotify/max_queued_events");
    int queue = 16384;
    limit >> queue;
    if (queue > 100'000) GTEST_SKIP() << "the queue of this system holds " << queue << " changes";
    // In turn, since the same change told twice in a row is told once.
    file("b.png");
    for (int i = 0; i <= queue; ++i) setDate(shelf / (i % 2 ? "a.png" : "b.png"), i);
    file("last.png");
    EXPECT_TRUE(kept.refresh());
    EXPECT_EQ(shown(kept), (std::set<std::string>{"a.png", "b.png", "last.png"}));
    EXPECT_FALSE(kept.refresh());
    file("after.png");
    EXPECT_TRUE(kept.refresh());
}

TEST_F(ShelfIndexTest, listsWhileOthersWork) {
    fs::create_directories(shelf);
    ShelfIndex kept = index();
    std::jthread worker([&](std::stop_token stop) {
        for (int i = 0; !stop.stop_requested(); ++i) {
            const fs::path at = shelf / std::to_string(i % 7);
            writeFile(at / "Sub" / (std::to_string(i % 13) + ".png"), "x");
            std::error_code ignored;
            if (i % 3 == 0) fs::remove_all(shelf / std::to_string((i + 3) % 7), ignored);
            if (i % 5 == 0) fs::rename(at, shelf / ("renamed" + std::to_string(i % 2)), ignored);
        }
    });
    for (int i = 0; i < 300; ++i) kept.refresh();
    worker.request_stop();
    worker.join();
    kept.refresh();
    ShelfIndex fresh = index(false);
    fresh.refresh();
    EXPECT_EQ(shown(kept), shown(fresh));
    EXPECT_EQ(kept.collectionFolders(), fresh.collectionFolders());
}
