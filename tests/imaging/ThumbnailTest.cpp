#include "imaging/Thumbnail.h"

#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace quillary {

namespace fs = std::filesystem;

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

class ThumbnailTest : public testing::Test {
protected:
    fs::path file(const fs::path& name, const QByteArray& bytes) { return test::writeFile(folder / name, bytes); }
    static QByteArray plain(QColor colour, int side = 300) {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(colour);
        return test::encoded(image, "PNG");
    }
    /// As a second start of the program sees it.
    QImage afresh(const fs::path& url) const { return Thumbnail(cache).load(url); }
    std::vector<std::string> kept(const fs::path& below) const {
        std::vector<std::string> names;
        std::error_code missing;
        for (const auto& entry : fs::directory_iterator(cache / "thumbnails" / below, missing))
            names.push_back(entry.path().filename());
        return names;
    }

    const test::TemporaryFolder folder;
    const fs::path cache = folder / "cache";
};

TEST_F(ThumbnailTest, FitsEveryKindOfFile) {
    const struct {
        const char* name;
        QByteArray bytes;
        QSize expected;
    } rows[] = {
        {"small.png", test::encoded(test::colourful(20, 10), "PNG"), {20, 10}},
        {"between.png", test::encoded(test::colourful(240, 30), "PNG"), {220, 28}},
        {"wide.png", test::encoded(test::colourful(1000, 103), "PNG"), {220, 23}},
        {"tall.tiff", test::encoded(test::colourful(30, 600, QImage::Format_RGB32), "TIFF"), {11, 220}},
        {"thin.png", test::encoded(test::colourful(2000, 1), "PNG"), {220, 1}},
        {"plain.bmp", test::encoded(test::colourful(440, 220, QImage::Format_RGB32), "BMP"), {220, 110}},
        {"turned.jpg", test::orientedJpeg(6), {32, 64}},
        {"icon.svg", test::svg("width=\"24\" height=\"24\""), {220, 220}},
        {"line.svg", test::svg("width=\"1000\" height=\"1\""), {220, 1}},
        {"page.pdf", test::pdf(1000, 500), {220, 110}},
        {"empty.svg", test::svg("width=\"0\" height=\"1\""), {}},
        {"broken.png", "no picture", {}},
    };
    for (const auto& row : rows) {
        const auto url = file(row.name, row.bytes);
        const QSize expected = row.expected.isValid() ? row.expected : QSize(0, 0);
        EXPECT_EQ(Thumbnail(cache).load(url).size(), expected) << row.name;
        EXPECT_EQ(afresh(url).size(), expected) << row.name << " from the cache";
    }
    EXPECT_TRUE(afresh(folder / "absent.png").isNull());
}

TEST_F(ThumbnailTest, ShowsAFileThatWasOverwritten) {
    Thumbnail thumbnails(cache);
    const auto stamp = fs::file_time_type::clock::now() - 1h;
    int time = 0;
    for (const QColor colour : {QColor(Qt::red), QColor(Qt::blue), QColor(Qt::green)}) {
        const auto url = file("same.png", plain(colour, 300));
        // Within the same second, and of the same size.
        fs::last_write_time(url, stamp + std::chrono::nanoseconds(++time));
        EXPECT_EQ(thumbnails.load(url).pixelColor(100, 100), colour);
        EXPECT_EQ(afresh(url).pixelColor(100, 100), colour);
    }
    const auto url = file("same.png", plain(Qt::red, 400));
    fs::last_write_time(url, stamp + std::chrono::nanoseconds(time));
    EXPECT_EQ(thumbnails.load(url).pixelColor(100, 100), QColor(Qt::red)) << "another size alone";
}

TEST_F(ThumbnailTest, KeepsWhatItMadeForAllPrograms) {
    const auto url = file("a b#c%d;e[f]\xc3\xbc.png", plain(Qt::red));
    afresh(url);
    ASSERT_EQ(kept("large").size(), 1U);
    const fs::path entry = cache / "thumbnails" / "large" / kept("large")[0];
    EXPECT_EQ(fs::status(entry).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(entry.parent_path()).permissions(), fs::perms::owner_all);
    QImage picture(QString::fromStdString(entry));
    EXPECT_EQ(picture.size(), QSize(256, 256));
    EXPECT_EQ(
        picture.text(u"Thumb::URI"_s),
        QStringLiteral("file://%1/a%20b%23c%25d%3Be%5Bf%5D%C3%BC.png").arg(QString::fromStdString(folder.path())));
    EXPECT_EQ(picture.text(u"Thumb::Size"_s), QString::number(fs::file_size(url)));
    EXPECT_EQ(picture.text(u"Thumb::Image::Width"_s), u"300"_s);

    // Whatever stands there for the file's date is shown, so nothing is decoded at a second start.
    picture.fill(Qt::blue);
    ASSERT_TRUE(picture.save(QString::fromStdString(entry)));
    EXPECT_EQ(afresh(url).pixelColor(10, 10), QColor(Qt::blue));
    picture.setText(u"Thumb::MTime"_s, u"1"_s);
    ASSERT_TRUE(picture.save(QString::fromStdString(entry)));
    EXPECT_EQ(afresh(url).pixelColor(10, 10), QColor(Qt::red)) << "of another date";
    test::writeFile(entry, "");
    EXPECT_EQ(afresh(url).pixelColor(10, 10), QColor(Qt::red));
}

TEST_F(ThumbnailTest, LooksTheSameFromTheCache) {
    const auto filled = [](int alpha) {
        QImage image(300, 200, QImage::Format_RGBA8888);
        image.fill(QColor(200, 30, 60, alpha));
        return test::encoded(image, "PNG");
    };
    for (const auto& [name, alpha] : {std::pair("opaque.png", 255), {"clear.png", 100}}) {
        const fs::path url = file(name, filled(alpha));
        const QImage first = afresh(url);
        EXPECT_EQ(first.hasAlphaChannel(), alpha < 255) << name << ": a tile insets what has one";
        EXPECT_EQ(afresh(url).convertToFormat(first.format()), first) << name;
        EXPECT_EQ(afresh(url).hasAlphaChannel(), first.hasAlphaChannel()) << name;
    }
}

TEST(ThumbnailCacheTest, NamesEntriesAsOtherProgramsDo) {
    const test::TemporaryFolder folder;
    const ThumbnailCache cache(folder.path());
    QImage dot(1, 1, QImage::Format_RGB32);
    dot.fill(Qt::red);
    // The URL's hash, as GLib spells it.
    const std::pair<const char*, const char*> known[] = {
        {"/home/jens/photos/me.png", "c6ee772d9e49320e97ec29a7eb5b1697.png"},
        {"/pictures/a b#c%d;e[f]\xc3\xbc.png", "fdb6ff385bb631a70019c12c69aa0a03.png"},
    };
    for (const auto& [path, name] : known) {
        cache.write(path, {1, 1}, ThumbnailCache::Size::xLarge, {dot});
        EXPECT_TRUE(fs::exists(folder / "x-large" / name)) << path;
        EXPECT_TRUE(cache.read(path, {1, 1}, ThumbnailCache::Size::xLarge));
    }
    EXPECT_FALSE(cache.keeps(folder / "large" / "x.png"));
    EXPECT_TRUE(cache.keeps(folder.path().native() + "-not/x.png"));
}

TEST_F(ThumbnailTest, RemembersFailuresUntilTheFileChanges) {
    const auto url = file("late.png", "not yet");
    EXPECT_TRUE(afresh(url).isNull());
    const auto failures = kept("fail");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(kept("fail/" + failures[0]).size(), 1U);

    const auto good = file("good.png", plain(Qt::red));
    ThumbnailCache(cache / "thumbnails").writeFailure(good, *ThumbnailCache::stateOf(good));
    EXPECT_TRUE(afresh(good).isNull()) << "nobody looks again";
    fs::last_write_time(good, fs::file_time_type::clock::now() + 1h);
    EXPECT_FALSE(afresh(good).isNull());

    std::stop_source stop;
    stop.request_stop();
    const auto stopped = file("stopped.png", plain(Qt::red));
    Thumbnail thumbnails(cache);
    EXPECT_TRUE(thumbnails.load(stopped, stop.get_token()).isNull());
    EXPECT_FALSE(thumbnails.load(stopped).isNull());
}

TEST_F(ThumbnailTest, AsksForFramesOfClipsOnce) {
    int asked = 0;
    const auto frames = [&](const fs::path&, int longestSide, std::stop_token) {
        ++asked;
        QImage frame(longestSide, longestSide / 2, QImage::Format_RGB32);
        frame.fill(Qt::green);
        return frame;
    };
    for (const char* name : {"clip.mov", "raw.hevc", "old.mxf"}) {
        const auto url = file(name, "frames");
        asked = 0;
        for (int start = 0; start < 2; ++start) {
            Thumbnail thumbnails(cache, frames);
            EXPECT_EQ(thumbnails.load(url).size(), QSize(440, 220)) << name;
            EXPECT_EQ(thumbnails.load(url).size(), QSize(440, 220)) << name;
        }
        EXPECT_EQ(asked, 1) << name;
    }
    EXPECT_EQ(kept("x-large").size(), 3U);
}

TEST_F(ThumbnailTest, LeavesTheCachesOwnFilesAndABrokenCacheAlone) {
    const auto own = file("cache/thumbnails/large/x.png", plain(Qt::red));
    EXPECT_FALSE(afresh(own).isNull());
    EXPECT_EQ(kept("large").size(), 1U);
    const auto url = file("a.png", plain(Qt::red));
    test::writeFile(folder / "occupied", "");
    EXPECT_EQ(Thumbnail(folder / "occupied").load(url).width(), 220) << "a cache that cannot be written";
}

TEST_F(ThumbnailTest, MakesNoRoomForWhatAnEntryOnlyClaims) {
    const auto url = file("a.png", plain(Qt::red));
    afresh(url);
    ASSERT_EQ(kept("large").size(), 1U);
    const fs::path entry = cache / "thumbnails" / "large" / kept("large")[0];
    std::string bytes = test::readFile(entry);
    const std::size_t text = bytes.find("tEXt");
    ASSERT_NE(text, std::string::npos);
    bytes[text - 4] = 0x70; // nearly two gigabytes
    test::writeFile(entry, bytes);
    const auto mostKilobytes = [] {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        return used.ru_maxrss;
    };
    const auto before = mostKilobytes();
    EXPECT_EQ(afresh(url).pixelColor(10, 10), QColor(Qt::red));
    EXPECT_LT(mostKilobytes() - before, 200 * 1024);
}

} // namespace

} // namespace quillary
