#include "cli/ProgramTest.h"
#include "samples/Media.h"

#include <QDateTime>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

class ListTest : public ProgramTest {
protected:
    /// The names that a listing shows, in its order.
    QStringList names(const QString& words) const {
        const Ended ended = json(QStringList{u"list"_s} + words.split(u' '));
        EXPECT_EQ(ended.status, 0) << words.toStdString() << ended.err.toStdString();
        return column(ended.array(), "name");
    }

    /// Makes a file of a shelf as a file manager would, `age` hours ago.
    void put(const char* file, int age) const {
        writeFile(root() / "Library" / file, file);
        fs::last_write_time(root() / "Library" / file, fs::file_time_type::clock::now() - std::chrono::hours(age));
    }
};

TEST_F(ListTest, FiltersAsThePanelDoes) {
    put("Images/Arrow 10.png", 1);
    put("Images/arrow 9.png", 2);
    put("Images/A/Écran.png", 3);
    put("Images/A/B/deep.png", 4);
    put("Images/AB/other.svg", 5);
    put("Images/.hidden.png", 0);
    put("Images/notes.txt", 0);
    run({u"favorite"_s, text(root() / "Library/Images/A/B/deep.png")});
    const std::pair<const char*, QStringList> cases[] = {
        {"images", {u"Arrow 10"_s, u"arrow 9"_s, u"Écran"_s, u"deep"_s, u"other"_s}},
        {"images --sort newest", {u"Arrow 10"_s, u"arrow 9"_s, u"Écran"_s, u"deep"_s, u"other"_s}},
        {"images --sort name", {u"arrow 9"_s, u"Arrow 10"_s, u"deep"_s, u"other"_s, u"Écran"_s}},
        {"images --collection A", {u"Écran"_s, u"deep"_s}},
        {"images --collection=A --search DEEP", {u"deep"_s}},
        {"images --collection B", {}},
        {"images --unfiled", {u"Arrow 10"_s, u"arrow 9"_s}},
        {"images --collection=", {u"Arrow 10"_s, u"arrow 9"_s}},
        {"images --search éCRAN", {u"Écran"_s}},
        {"images --favorites", {u"deep"_s}},
        {"images --format svg", {}},
        {"videos", {}},
    };
    for (const auto& [words, expected] : cases) EXPECT_EQ(names(QString::fromUtf8(words)), expected) << words;
}

TEST_F(ListTest, TellsEverythingOfAnItem) {
    writeFile(m_folder / "icon.svg", R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)");
    const auto before = QDateTime::currentDateTimeUtc().addSecs(-2);
    run({u"save"_s, in("icon.svg"), u"--collection"_s, u"A / B"_s});
    const QJsonObject item = json({u"list"_s, u"images"_s}).array().at(0).toObject();
    EXPECT_EQ(item.keys(), "collection favorite modified name path sourceFormat"_words);
    EXPECT_EQ(item["path"_L1], text(root() / "Library/Images/A/B/icon.png"));
    EXPECT_EQ(item["collection"_L1], u"A / B"_s);
    EXPECT_EQ(item["sourceFormat"_L1], u"svg"_s);
    EXPECT_EQ(item["favorite"_L1], false);
    const QString modified = item["modified"_L1].toString();
    EXPECT_TRUE(modified.endsWith(u'Z'));
    EXPECT_GE(QDateTime::fromString(modified, Qt::ISODateWithMs), before);
    EXPECT_EQ(names(u"images --format SVG"_s), QStringList{u"icon"_s});

    put("Audio/boing.wav", 0);
    const QJsonObject sound = json({u"list"_s, u"audio"_s}).array().at(0).toObject();
    EXPECT_TRUE(sound.contains("seconds"_L1));
    EXPECT_TRUE(sound["collection"_L1].isNull());
}

TEST_F(ListTest, TellsPeopleHowLongSoundsAre) {
    const Pcm pcm{.rate = 8000, .channels = 1, .frames = 8000 * 74};
    writeFile(root() / "Library/Audio/long.wav", waveFile(pcm, wobblingTone(200, 8000)));
    put("Audio/broken.wav", 1);
    const QString told = QString::fromUtf8(run({u"list"_s, u"audio"_s, u"--sort"_s, u"name"_s}).out);
    const QStringList lines = told.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2) << told.toStdString();
    EXPECT_TRUE(lines.front().trimmed().endsWith(u"broken.wav"));
    EXPECT_TRUE(lines.back().contains(u"long.wav") && lines.back().trimmed().endsWith(u"1:14")) << told.toStdString();
}

TEST_F(ListTest, CountsCollectionsWithWhatLiesBelow) {
    for (const char* file : {"Images/A/1.png", "Images/A/B/2.png", "Images/A/B/3.png", "Images/4.png"}) put(file, 0);
    fs::create_directories(root() / "Library/Images/Empty/Below");
    fs::create_directories(root() / "Library/Blocks/Titles");
    const auto collections = [&](const QStringList& words) {
        QStringList lines;
        for (const QJsonValue entry : json(QStringList{u"collections"_s} + words).array())
            lines += u"%1=%2"_s.arg(entry["path"_L1].toString()).arg(entry["count"_L1].toInt());
        return lines;
    };
    const QStringList found{u"A=3"_s, u"A / B=2"_s, u"Empty=0"_s, u"Empty / Below=0"_s};
    EXPECT_EQ(collections({u"images"_s}), found);
    EXPECT_EQ(collections({u"images"_s, u"--create"_s, u"New /  One "_s}),
              found + QStringList({u"New=0"_s, u"New / One=0"_s}));
    EXPECT_EQ(collections({u"blocks"_s}), QStringList{u"Titles=0"_s});
    EXPECT_EQ(collections({u"audio"_s, u"--create"_s, u"../../up"_s}), QStringList{u"-.-..-up=0"_s});
    EXPECT_EQ(json({u"collections"_s, u"images"_s, u"--create"_s, u" / "_s}).status, 2);
}

TEST_F(ListTest, ShowsTheBuiltInSets) {
    const QStringList all = column(json({u"list"_s, u"builtin"_s}).array(), "collection");
    if (all.isEmpty()) GTEST_SKIP() << "built without icon sets";
    const QStringList arrows = names(u"builtin --set Arrows"_s);
    EXPECT_GE(arrows.size(), 10);
    EXPECT_EQ(arrows.size(), all.count(u"Arrows"_s));
    EXPECT_TRUE(names(u"builtin --set Nothing"_s).isEmpty());
}

} // namespace

} // namespace quillary::test
