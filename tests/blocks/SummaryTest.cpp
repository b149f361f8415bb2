#include "blocks/BlocksTest.h"
#include "library/ShelfIndex.h"

namespace quillary::test {

namespace {

using testing::ElementsAre;

/// "lane kind name" of each layer, kinds by their first letter.
std::vector<std::string> layersOf(const QByteArray& xml) {
    std::vector<std::string> lines;
    const auto document = FCPXMLDocument::parse(xml);
    EXPECT_TRUE(document);
    for (const auto& layer : ArrangementStore::summarize(*document).layers)
        lines.push_back(std::to_string(layer.lane) + "tgco"[static_cast<int>(layer.kind)] + ' ' +
                        layer.name.toStdString());
    return lines;
}

Arrangement::Summary summaryOf(const QByteArray& xml) {
    return ArrangementStore::summarize(*FCPXMLDocument::parse(xml));
}

class SummaryTest : public BlocksTest {};

TEST_F(SummaryTest, TellsTheStorylineWithWhatIsConnectedToIt) {
    EXPECT_THAT(layersOf(richCompound(folder / "media")),
                ElementsAre("0c Interview", "2t Lower third", "1g Logo", "-1c Music", "0o Cross Dissolve",
                            "0c Synchronised", "-1c sound", "0c Cameras", "0c Nested", "3c above", "0o Gap",
                            "1c over the gap"));
    EXPECT_TRUE(summaryOf(richCompound(folder / "media")).usesGlidemark);
}

TEST_F(SummaryTest, TakesAClipWithoutAStorylineAsItsOnlyLayer) {
    const ClipAsset only = asset("clip.mov");
    EXPECT_THAT(layersOf(singleClip(only, 13, R"(<title name="T" lane="4x"/><note/><video lane="-2"/>)")),
                ElementsAre("0c Single", "0t T", "-2g "));
    EXPECT_THAT(layersOf(fcpxml(8, "", "<library location='x'><event/></library>")), ElementsAre("0o "));
    EXPECT_THAT(layersOf(fcpxml(11, "", "<import-options/><asset-clip name='after the options'/>")),
                ElementsAre("0c after the options"));
    EXPECT_THAT(layersOf("<fcpxml/>"), ElementsAre());
    // References that lead nowhere, or to something without a storyline.
    for (const char* ref : {"nothing", "r1", "r2"})
        EXPECT_THAT(layersOf(fcpxml(13, "<media id='r2'><multicam/></media>",
                                    QByteArray("<ref-clip name='Alone' ref='") + ref + "'/>")),
                    ElementsAre("0c Alone"));
}

TEST_F(SummaryTest, ReadsTimes) {
    const std::pair<const char*, double> times[] = {
        {"3003/30000s", 0.1001},
        {"0s", 0},
        {"5s", 5},
        {"-3/2s", -1.5},
        {"2.5s", 2.5},
        {"100100/24000s", 100100.0 / 24000},
        {"9223372036854775807/9223372036854775807s", 1},
    };
    for (const auto& [text, expected] : times) EXPECT_DOUBLE_EQ(ArrangementStore::seconds(text), expected) << text;
    for (const char* none : {"5", "", "s", "1/0s", "x/2s", "2/xs", "1/2/3s", "nans", "1e999s", "infs", "5 s ", "1/2"})
        EXPECT_EQ(ArrangementStore::seconds(none), 0) << none;
    const QByteArray media = "<media id='m'><sequence duration='7s'><spine/></sequence></media>";
    EXPECT_DOUBLE_EQ(summaryOf(fcpxml(13, media, "<ref-clip ref='m' duration='2s'/>")).seconds, 2);
    EXPECT_DOUBLE_EQ(summaryOf(fcpxml(13, media, "<ref-clip ref='m'/>")).seconds, 7);
    EXPECT_DOUBLE_EQ(summaryOf(fcpxml(13, media, "<ref-clip ref='x'/>")).seconds, 0);
}

TEST_F(SummaryTest, KnowsTheMarkedFamilyOfEffects) {
    const std::pair<const char*, bool> effects[] = {
        {"<effect id='e' name='GLIDEmark 2'/>", true},
        {"<effect id='e' name='x' uid='/Glidemark.localized/a.moef'/>", true},
        {"<effect id='e' name='Glide mark' uid='Mark'/>", false},
        {"<asset id='e' name='Glidemark'/>", false},
    };
    for (const auto& [effect, expected] : effects)
        EXPECT_EQ(summaryOf(fcpxml(13, effect, "<clip/>")).usesGlidemark, expected) << effect;
}

TEST_F(SummaryTest, ListsBlocksAndReadsOnlyWhatChanged) {
    const auto put = [&](const char* file, const QByteArray& xml, int date) {
        writeFile(blocks / file, xml);
        setDate(blocks / file, date);
    };
    put("old.fcpxml", "<fcpxml><clip name='old'/></fcpxml>", 1000);
    put("A/B/new.FCPXML", "<fcpxml><clip duration='3s'/></fcpxml>", 3000);
    put("broken.fcpxml", "<fcpxml>", 2000);
    put("other.xml", "<fcpxml/>", 2000);
    put("A/poster.png", "no block", 2000);
    fs::create_directories(blocks / "Empty");

    ShelfIndex index(blocks, Storage::blockExtensions, true);
    BlockSummaries summaries;
    const auto list = [&] {
        index.refresh();
        return summaries.read(*index.items());
    };
    auto listed = list();
    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(listed[0].name, u"new");
    EXPECT_EQ(listed[0].collection, u"A / B"_s);
    EXPECT_EQ(listed[0].summary.seconds, 3);
    EXPECT_EQ(listed[1].collection, std::nullopt);
    EXPECT_EQ(listed[1].posterURL(), std::nullopt);
    EXPECT_EQ(store.blocks(), listed);

    EXPECT_EQ(summaries.documentsRead(), 3);
    EXPECT_EQ(list(), listed);
    EXPECT_EQ(summaries.documentsRead(), 3);
    put("old.fcpxml", "<fcpxml><clip name='changed'/></fcpxml>", 1000);
    writeFile(blocks / "A/B/new.png", "a poster");
    fs::rename(blocks / "broken.fcpxml", blocks / "Empty/still broken.fcpxml");
    listed = list();
    EXPECT_EQ(summaries.documentsRead(), 5);
    EXPECT_EQ(listed[1].summary.layers[0].name, u"changed");
    EXPECT_EQ(listed[0].posterURL(), blocks / "A/B/new.png");
    setDate(blocks / "A/B/new.png", 99);
    EXPECT_NE(list()[0].posterStamp, listed[0].posterStamp);
    EXPECT_EQ(summaries.documentsRead(), 5);
}

} // namespace

} // namespace quillary::test
