#include "blocks/BlocksTest.h"

namespace quillary::test {

namespace {

class LookingAfterTest : public BlocksTest {
protected:
    fs::path block(const QString& name, const std::optional<QString>& collection = {}, bool withPoster = true) {
        const auto saved = save(compound(name.toUtf8(), {asset(name.toStdString() + ".mov")}), {}, collection);
        EXPECT_TRUE(saved) << saved.error().description().toStdString();
        if (withPoster) {
            EXPECT_TRUE(store.setPoster(pasted(name).image, saved->url));
        }
        return saved->url;
    }
    std::set<std::string> shelf() const { return filesIn(blocks); }
    using Files = std::set<std::string>;
};

TEST_F(LookingAfterTest, ThePosterAndTheStarGoAlong) {
    const fs::path first = block(u"Opening"_s);
    platform::setAttribute(first, "user tag", "red");
    storage.setFavorites({{first}}, true);
    const auto moved = store.move(first, u"A / B"_s);
    ASSERT_TRUE(moved);
    EXPECT_EQ(shelf(), (Files{"A/B/Opening.fcpxml", "A/B/Opening.png"}));
    EXPECT_EQ(store.move(*moved, u"A / B"_s), *moved);
    const auto renamed = store.rename(*moved, u"Ti/tles: x"_s);
    EXPECT_EQ(renamed, blocks / "A/B/Ti-tles: x.fcpxml");
    EXPECT_EQ(shelf(), (Files{"A/B/Ti-tles: x.fcpxml", "A/B/Ti-tles: x.png"}));
    EXPECT_EQ(storage.favorites(), QSet<QString>{u"Library/Blocks/A/B/Ti-tles: x.fcpxml"_s});
    EXPECT_EQ(platform::attribute(*renamed, "user tag"), "red");
    for (const QString& same : {u" "_s, u"Ti/tles: x"_s, u"Ti-tles: x.fcpxml"_s})
        EXPECT_EQ(store.rename(*renamed, same), *renamed);
    EXPECT_EQ(store.move(*renamed, {}), blocks / "Ti-tles: x.fcpxml");
    EXPECT_TRUE(store.remove(blocks / "Ti-tles: x.fcpxml"));
    EXPECT_EQ(shelf(), Files{});
    EXPECT_TRUE(fs::exists(videoElements / "A1B2C3D4-Opening.mov"));
}

TEST_F(LookingAfterTest, ATakenNameOfEitherFileGetsANumber) {
    const fs::path first = block(u"Same"_s);
    block(u"Same"_s, u"A"_s, false);
    writeFile(blocks / "A/Same 2.png", "somebody else's");
    EXPECT_EQ(store.move(first, u"A"_s), blocks / "A/Same 3.fcpxml");
    EXPECT_EQ(shelf(), (Files{"A/Same 2.png", "A/Same 3.fcpxml", "A/Same 3.png", "A/Same.fcpxml"}));
    EXPECT_EQ(store.rename(blocks / "A/Same.fcpxml", u"Same 3"_s), blocks / "A/Same 3 2.fcpxml");
    EXPECT_EQ(readFile(blocks / "A/Same 2.png"), "somebody else's");
}

TEST_F(LookingAfterTest, PostersAreReplacedAndRemoved) {
    const fs::path file = block(u"Film"_s, {}, false);
    EXPECT_TRUE(store.removePoster(file));
    EXPECT_TRUE(store.setPoster(pasted(u"one"_s, Qt::red).image, file));
    EXPECT_TRUE(store.setPoster(pasted(u"two"_s, Qt::blue).image, file));
    EXPECT_EQ(QImage(QString::fromStdString(posterPath(file).native())).pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(store.setPoster(QImage(), file).error().description(), u"Couldn’t read that image");
    EXPECT_EQ(shelf(), (Files{"Film.fcpxml", "Film.png"}));
    EXPECT_TRUE(store.removePoster(file));
    EXPECT_EQ(shelf(), Files{"Film.fcpxml"});
}

TEST_F(LookingAfterTest, RefusesWhatIsNoBlockOfThisLibrary) {
    writeFile(folder / "outside.fcpxml", "<fcpxml/>");
    writeFile(images / "picture.fcpxml", "<fcpxml/>");
    writeFile(blocks / "poster.png", "png");
    for (const fs::path& file : {folder / "outside.fcpxml", images / "picture.fcpxml", blocks / "poster.png",
                                 blocks / "missing.fcpxml", blocks / "../../../outside.fcpxml"}) {
        EXPECT_FALSE(store.move(file, u"A"_s)) << file;
        EXPECT_FALSE(store.rename(file, u"other"_s)) << file;
        EXPECT_FALSE(store.remove(file)) << file;
        EXPECT_FALSE(store.setPoster(pasted(u"x"_s).image, file)) << file;
        EXPECT_FALSE(store.removePoster(file)) << file;
    }
    EXPECT_TRUE(fs::exists(folder / "outside.fcpxml"));
    EXPECT_EQ(shelf(), Files{"poster.png"});
}

} // namespace

} // namespace quillary::test
