#include "media/AudioDurationCache.h"
#include "media/PeakCache.h"
#include "support/TemporaryFolder.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quillary {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::TemporaryFolder;
using test::writeFile;

void setModified(const fs::path& file, std::int64_t seconds, long nanoseconds = 0) {
    const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
}

TEST(AudioDurationCacheTest, KeepsLengthsUnderPathAndWholeSecond) {
    const TemporaryFolder folder;
    const AudioDurationCache cache(folder.path());
    const fs::path hit = folder / "Hit “1”.wav";
    const fs::path before1970 = folder / "old.wav";
    const fs::path binary = folder / "\xff.wav";
    for (const auto& file : {hit, before1970, binary}) writeFile(file, "x");
    setModified(hit, 1'700'000'000, 999'999'999);
    setModified(before1970, -5);
    const std::vector<FileLocation> all{hit, before1970, binary, folder / "missing.wav"};

    ASSERT_TRUE(cache.save({{hit, 1.25}, {before1970, 3}, {binary, 4}, {folder / "missing.wav", 5}}));
    const auto object =
        QJsonDocument::fromJson(QByteArray::fromStdString(test::readFile(folder / ".audio-durations.json"))).object();
    EXPECT_EQ(object.size(), 3);
    EXPECT_EQ(object[QString::fromStdString(hit.string() + "\x01"
                                                           "1700000000")]
                  .toDouble(),
              1.25);
    EXPECT_EQ(object[QString::fromStdString(before1970.string() + "\x01-5")].toDouble(), 3);
    EXPECT_EQ(object[QString::fromStdString((folder / "missing.wav").string() + "\x01"
                                                                                "0")]
                  .toDouble(),
              5);
    EXPECT_EQ(cache.load(all).at(hit), 1.25);
    EXPECT_EQ(cache.load(all).size(), 3);

    setModified(hit, 1'700'000'001);
    EXPECT_FALSE(cache.load(all).contains(hit));
    for (const char* damaged : {"", "[]", "{\"a\":", "null"}) {
        writeFile(folder / ".audio-durations.json", damaged);
        EXPECT_TRUE(cache.load(all).empty()) << damaged;
    }
    ASSERT_TRUE(cache.save({{hit, 2}}));
    EXPECT_EQ(cache.load(all).size(), 1);
    EXPECT_FALSE(AudioDurationCache(folder / "nowhere").save({{hit, 2}}));
}

TEST(PeakCacheTest, GivesBackWhatBelongsToTheFileAsItIs) {
    const TemporaryFolder folder;
    const PeakCache cache(folder / "cache");
    const fs::path sound = folder / "a.wav";
    writeFile(sound, "1234");
    setModified(sound, 1000, 5);
    const auto state = ThumbnailCache::stateOf(sound).value();
    const std::vector<float> peaks{0, 0.5f, 1};
    EXPECT_FALSE(cache.read(sound, state, 2000));
    cache.write(sound, state, 2000, peaks);
    EXPECT_EQ(cache.read(sound, state, 2000), peaks);
    EXPECT_FALSE(cache.read(sound, state, 100));

    setModified(sound, 1000, 6);
    EXPECT_FALSE(cache.read(sound, ThumbnailCache::stateOf(sound).value(), 2000));
    writeFile(sound, "12345");
    setModified(sound, 1000, 5);
    EXPECT_FALSE(cache.read(sound, ThumbnailCache::stateOf(sound).value(), 2000));

    const auto entry = fs::directory_iterator(folder / "cache/quillary/waveforms")->path();
    fs::resize_file(entry, fs::file_size(entry) - 1);
    EXPECT_FALSE(cache.read(sound, state, 2000));
}

TEST(PeakCacheTest, DropsTheOldest) {
    const TemporaryFolder folder;
    const PeakCache cache(folder.path());
    const PeakCache::FileState state{1, 1};
    for (int i = 0; i < 10; ++i) cache.write("/sound" + std::to_string(i), state, 10, {1});
    for (const auto& entry : fs::directory_iterator(folder / "quillary/waveforms"))
        setModified(entry.path(), 2'000'000'000);
    cache.write("/sound3", state, 10, {1});
    setModified(folder / "quillary/waveforms", 1);
    cache.prune(9);
    EXPECT_TRUE(cache.read("/sound4", state, 10) || cache.read("/sound5", state, 10));
    EXPECT_FALSE(cache.read("/sound3", state, 10));
}

} // namespace

} // namespace quillary
