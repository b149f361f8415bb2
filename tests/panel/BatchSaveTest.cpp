#include "panel/PanelModelFixture.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillary::test {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

TEST(BatchSummary, NamesOnlyWhatThereIs) {
    BatchResult result;
    EXPECT_EQ(result.summary(), u"Nothing to save."_s);
    result.images = 2;
    result.videos = 1;
    result.sounds = 3;
    result.duplicates.resize(4);
    result.failures.resize(5);
    EXPECT_EQ(result.summary(),
              u"Saved 2 · 1 video to Videos · 3 sounds to Audio · 4 already in your library · couldn't read 5"_s);
    result = {};
    result.sounds = 1;
    EXPECT_EQ(result.summary(), u"1 sound to Audio"_s);
}

TEST_F(PanelModelTest, ABatchTakesWhatItCanAndTellsTheRest) {
    const auto drop = folder / "drop";
    file("drop/deep/er/a.png", picture(3, 3));
    file("drop/b.bmp", picture(3, 4));
    writeFile(drop / ".hidden.png", "x");
    writeFile(drop / "broken.jpg", "no picture");
    writeFile(drop / "sound.wav", "noise");
    writeFile(drop / "notes.txt", "text");
    fs::create_symlink("nowhere", drop / "dangling.png");
    fs::create_directory_symlink(drop, drop / "loop");
    ASSERT_EQ(mkfifo((drop / "pipe").c_str(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    const std::string at = (folder / "s.sock").string();
    std::ranges::copy(at, address.sun_path);
    ASSERT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

    BatchProgress progress;
    const auto result = performSave({drop, folder / "s.sock", folder / "missing.png", drop / "dangling.png"}, storage,
                                    {}, 4096, progress);
    close(socket);
    EXPECT_EQ(result.images, 2);
    EXPECT_EQ(result.sounds, 1);
    EXPECT_EQ(result.failures.size(), 3U);
    EXPECT_EQ(result.ignored.size(), 2U);
    EXPECT_EQ(progress.done, progress.total);
    EXPECT_EQ(result.summary(), u"Saved 2 · 1 sound to Audio · couldn't read 3"_s);
    EXPECT_EQ(result.failures.front().message, u"Could not read broken.jpg."_s);
}

TEST_F(PanelModelTest, TheSameGraphicIsFoundAlthoughItWasEncodedAnew) {
    const auto original = file("photo.jpg", picture(64, 64));
    const auto other = file("elsewhere/photo.jpg", picture(200, 100, Qt::blue));
    BatchProgress progress;
    for (int round = 0; round < 2; ++round) performSave({original, other}, storage, {}, 4096, progress);
    const auto last = performSave({other}, storage, {}, 4096, progress);
    EXPECT_EQ(last.duplicates.size(), 1U);
    EXPECT_EQ(storage.items(Storage::Folder::images).size(), 2U);
}

} // namespace quillary::test
