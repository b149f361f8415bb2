#include "blocks/BlocksTest.h"

namespace quillary::test {

namespace {

using testing::ElementsAre;

class ReferencesTest : public BlocksTest {
protected:
    std::vector<fs::path> dragged(const fs::path& block) {
        const auto xml = store.xml(block);
        EXPECT_TRUE(xml);
        return references(*xml);
    }
    fs::path saved(const QByteArray& xml) {
        const auto block = save(xml);
        EXPECT_TRUE(block) << block.error().description().toStdString();
        return block->url;
    }
};

TEST_F(ReferencesTest, ADragCarriesNewItemsWithTheirMedia) {
    for (const int minor : {8, 13}) {
        const fs::path block = saved(richCompound(folder / "media", minor));
        const QByteArray xml = *store.xml(block);
        const auto document = FCPXMLDocument::parse(xml);
        for (const char* kind : {"asset", "media"})
            for (const xml::Node element : document->elements(kind)) {
                EXPECT_FALSE(element.attribute("uid"));
                EXPECT_FALSE(element.attribute("modDate"));
            }
        // Effects are known by their uid, and the clip keeps its date.
        EXPECT_TRUE(xml.contains("uid=\"FxPlug:4731E73A"));
        EXPECT_TRUE(document->clip().attribute("modDate"));
        EXPECT_EQ(references(xml), referencesOf(block));
        EXPECT_EQ(ArrangementStore::summarize(*document), ArrangementStore::summarize(*FCPXMLDocument::read(block)));
    }
    EXPECT_EQ(store.xml(blocks / "missing.fcpxml"), std::nullopt);
}

TEST_F(ReferencesTest, MissingMediaAreFoundByMarkOrName) {
    const fs::path block = saved(compound("Lost", {asset("clip.mov")}));
    const fs::path copy = videoElements / "A1B2C3D4-clip.mov";
    const fs::path elsewhere = root / "Library/Audio/Final Cut Elements";
    fs::create_directories(elsewhere);
    // By its mark, under any name.
    fs::rename(copy, elsewhere / "renamed.mov");
    EXPECT_THAT(dragged(block), ElementsAre(elsewhere / "renamed.mov"));
    // What is still being copied bears the mark, but no name to be found by.
    const fs::path unfinished = root / "Library/Images/Final Cut Elements/.quillary-1-a.part";
    writeFile(unfinished, "half");
    platform::setAttribute(unfinished, "com.quillary.assetUID", "A1B2C3D4E5F60718293A4B5C6D7E8F90");
    EXPECT_THAT(dragged(block), ElementsAre(elsewhere / "renamed.mov"));
    // The mark is lost: by the beginning of the name, but never what is marked as another's.
    platform::removeAttribute(elsewhere / "renamed.mov", "com.quillary.assetUID");
    EXPECT_THAT(dragged(block), ElementsAre(copy));
    fs::rename(elsewhere / "renamed.mov", elsewhere / "A1B2C3D4-other name.mov");
    EXPECT_THAT(dragged(block), ElementsAre(elsewhere / "A1B2C3D4-other name.mov"));
    platform::setAttribute(elsewhere / "A1B2C3D4-other name.mov", "com.quillary.assetUID", "A1B2C3D4-another");
    EXPECT_THAT(dragged(block), ElementsAre(copy));
    // The document knows no UID any more, as one that was dragged out and in again.
    fs::rename(elsewhere / "A1B2C3D4-other name.mov", elsewhere / "A1B2C3D4-clip.mov");
    const fs::path again = saved(*store.xml(block));
    EXPECT_THAT(dragged(again), ElementsAre(elsewhere / "A1B2C3D4-clip.mov"));
}

TEST_F(ReferencesTest, BlocksFollowALibraryThatMoves) {
    const fs::path block = saved(richCompound(folder / "media"));
    const fs::path untouched = saved(compound("Plain", {}));
    setDate(block, 5000);
    platform::setAttribute(block, "tag", "kept");
    const fs::path copied = folder / "drive/Quillary";
    fs::create_directories(copied.parent_path());
    fs::copy(root, copied, fs::copy_options::recursive); // attributes are lost
    Storage there(settings, bookmarks, desktop, copied);
    ArrangementStore moved(there);
    const fs::path newBlock = copied / "Library/Blocks/Opening.fcpxml";
    setDate(newBlock, 5000);
    platform::setAttribute(newBlock, "tag", "kept");

    EXPECT_EQ(moved.relinkAll(root), 1);
    EXPECT_EQ(moved.relinkAll(root), 0);
    fs::remove_all(root);
    for (const fs::path& file : referencesOf(newBlock)) {
        EXPECT_TRUE(file.native().starts_with(copied.native())) << file;
        EXPECT_TRUE(readFile(file).starts_with("media of "));
    }
    const std::string stored = readFile(newBlock);
    EXPECT_TRUE(stored.contains("uid=\"compound\" modDate="));
    EXPECT_TRUE(stored.contains("uid=\"A1B2C3D4E5F60718293A4B5C6D7E8F90\""));
    EXPECT_EQ(platform::attribute(newBlock, "tag"), "kept");
    EXPECT_EQ(moved.blocks().back().url, newBlock);
    EXPECT_EQ(moved.blocks().back().modified, FileDate(std::chrono::seconds(5000)));
    EXPECT_EQ(moved.relinkAll(root), 0);
    EXPECT_EQ(moved.blocks().size(), 2U);
}

TEST_F(ReferencesTest, TellsTheMediaThatACopyOfTheLibraryMustTakeAlong) {
    saved(compound("One", {asset("a.mov"), asset("b.wav", "B0B0B0B0B0")}));
    saved(compound("Two", {asset("a.mov")}));
    writeFile(blocks / "foreign.fcpxml",
              compound("F", {{.file = folder / "elsewhere/Final Cut Elements/x.mov"},
                             {.id = "r3", .src = fileUrl(videoElements / "../../../../out/Final Cut Elements/y.mov")},
                             {.id = "r4", .src = "https://example.org"}})
                  .toStdString());
    EXPECT_THAT(ArrangementStore::mediaOfBlocks(root), ElementsAre("Library/Audio/Final Cut Elements/B0B0B0B0-b.wav",
                                                                   "Library/Videos/Final Cut Elements/A1B2C3D4-a.mov"));
}

TEST_F(ReferencesTest, ASingleClipIsReducedToItsFile) {
    const auto reduced = [&](const QByteArray& xml, std::optional<QString> collection = {}) {
        const auto file = store.singleMediaFile(xml, collection);
        return file ? file->lexically_relative(root / "Library").native() : std::string();
    };
    const ClipAsset clip = asset("clip.mov");
    const ClipAsset sound = asset("ding.wav", "");
    for (const int minor : {8, 13}) EXPECT_EQ(reduced(singleClip(clip, minor)), "Videos/A1B2C3D4-clip.mov");
    EXPECT_EQ(reduced(singleClip(sound), u"Hits / Short"_s), "Audio/Hits/Short/ding.wav");
    EXPECT_EQ(reduced(singleClip(clip, 13, R"(<note/><marker start="0s"/><adjust-volume amount="2dB"/>)")),
              "Videos/A1B2C3D4-clip.mov");
    EXPECT_EQ(reduced(compound("One of one", {clip})), "Videos/A1B2C3D4-clip.mov");
    // A clip of an earlier kind, whose sound lies within its picture.
    EXPECT_EQ(reduced(fcpxml(8, assetElement(clip, 8),
                             R"(<clip name="c"><video ref="r2"><audio lane="-1" ref="r2"/></video></clip>)")),
              "Videos/A1B2C3D4-clip.mov");
    // Of several assets, the one that was dragged; of its files, the original.
    EXPECT_EQ(reduced(singleClip(clip).replace(
                  "</resources>", assetElement({.id = "r9", .file = media("other.mov")}, 13) + "</resources>")),
              "Videos/A1B2C3D4-clip.mov");
    EXPECT_EQ(reduced(singleClip(clip).replace("<media-rep",
                                               R"(<media-rep kind="proxy-media" src="file:///none.mov"/><media-rep)")),
              "Videos/A1B2C3D4-clip.mov");
    EXPECT_TRUE(fs::exists(root / "Library/Videos/A1B2C3D4-clip.mov"));

    ClipAsset second = asset("second.mov", "C0C0C0C0");
    second.id = "r3";
    for (const QByteArray& more :
         {richCompound(folder / "media"), compound("Two", {clip, second}), compound("None", {}),
          singleClip(clip, 13, R"(<title lane="1"/>)"), singleClip(clip, 13, R"(<filter-video ref="x"/>)"),
          singleClip(clip, 13, R"(<adjust-transform scale="2 2"/>)"), singleClip(asset("notes.txt", "")),
          singleClip({.file = folder / "missing.mov"}), fcpxml(8, assetElement(clip, 8), "<library/>"),
          QByteArray("x")})
        EXPECT_EQ(reduced(more), "") << more.right(200).toStdString();
    EXPECT_FALSE(fs::exists(blocks) && !fs::is_empty(blocks));
}

} // namespace

} // namespace quillary::test
