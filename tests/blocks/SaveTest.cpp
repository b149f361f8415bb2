#include "blocks/BlocksTest.h"
#include "support/SmallFileSystem.h"

#include <QStringEncoder>
#include <fstream>
#include <thread>

namespace quillary::test {

namespace {

using testing::ElementsAre;
using Failure = ArrangementFailure;

class SaveTest : public BlocksTest {};

TEST_F(SaveTest, MakesADocumentOfEveryVersionSelfContained) {
    for (const int minor : {3, 8, 9, 10, 11, 12, 13, 14}) {
        const auto block = save(richCompound(folder / "media", minor), u"1.%1"_s.arg(minor));
        ASSERT_TRUE(block) << block.error().description().toStdString();
        EXPECT_THAT(referencesOf(block->url),
                    ElementsAre(videoElements / "A1B2C3D4-interview take 1.mov",
                                videoElements / "0F1E2D3C-Über & drüben #3.mp4",
                                images / "Final Cut Elements/5A5A5A5A-logo.png",
                                root / "Library/Audio/Final Cut Elements/7E7E7E7E-musik 100%.wav",
                                videoElements / "no uid.mov", recent / "Final Cut Elements/12341234-camera raw.r3d"))
            << minor;
        for (const fs::path& copy : referencesOf(block->url)) EXPECT_TRUE(readFile(copy).starts_with("media of "));
    }
    // Eight documents, and each asset was copied once.
    EXPECT_EQ(std::distance(fs::directory_iterator(videoElements), {}), 3);
    EXPECT_EQ(platform::attribute(videoElements / "A1B2C3D4-interview take 1.mov", "com.quillary.assetUID"),
              "A1B2C3D4E5F60718293A4B5C6D7E8F90");
    EXPECT_EQ(platform::attribute(videoElements / "no uid.mov", "com.quillary.assetUID"), std::nullopt);
}

TEST_F(SaveTest, KeepsWhatItDoesNotKnow) {
    const auto block = save(richCompound(folder / "media"));
    const QByteArray stored = QByteArray::fromStdString(readFile(block->url));
    for (const char* kept :
         {"<!DOCTYPE fcpxml [", "<!-- kept: a comment -->", "<![CDATA[<kept> & raw]]>", "value=\"&author;\"",
          "modDate=\"2026-01-02 03:04:05 +0100\"", "uid=\"0F1E2D3C4B5A69788796A5B4C3D2E1F0\"",
          "sig=\"0123456789ABCDEF\"", "Änne &amp; Söhne", "drüben #3\"", "%C3%9Cber%20&amp;%20dr%C3%BCben%20%233.mp4"})
        EXPECT_TRUE(stored.contains(kept)) << kept;
    EXPECT_FALSE(stored.contains("bookmark"));
    EXPECT_EQ(block->name, u"Opening");
    EXPECT_EQ(block->collection, std::nullopt);
    EXPECT_NEAR(block->summary.seconds, 14.014, 1e-9);
}

TEST_F(SaveTest, KeepsEveryEncodingAsUtf8) {
    const QString xml = u"<?xml version='1.0' encoding='%1'?><fcpxml><clip name='Änne'/></fcpxml>"_s;
    const QByteArray wide = QStringEncoder(QStringEncoder::Utf16, QStringEncoder::Flag::WriteBom)(xml.arg(u"UTF-16"));
    for (const QByteArray& document : {xml.arg(u"UTF-8"_s).toUtf8(), xml.arg(u"ISO-8859-1"_s).toLatin1(), wide,
                                       xml.arg(u"UTF-7"_s).replace(u'Ä', u"+AMQ-"_s).toLatin1()}) {
        const auto block = save(document, {}, u"Encodings"_s);
        // All of them are one document.
        if (!block) {
            EXPECT_EQ(block.error(), Failure::alreadySaved(u"Änne"_s));
            continue;
        }
        EXPECT_TRUE(readFile(block->url).starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        EXPECT_EQ(block->name, u"Änne");
    }
    EXPECT_EQ(store.blocks().size(), 1U);
}

TEST_F(SaveTest, NamesBlocks) {
    const auto named = [&](const QByteArray& xml, std::optional<QString> name = {}) {
        const auto block = save(xml, name, u"Titles / Lower"_s);
        EXPECT_TRUE(block) << block.error().description().toStdString();
        EXPECT_EQ(block->collection, u"Titles / Lower"_s);
        return block->url.lexically_relative(blocks / "Titles/Lower").native();
    };
    const auto clip = [](const char* attributes, const char* resources = "") {
        return fcpxml(13, resources, QByteArray("<ref-clip ") + attributes + "/>");
    };
    EXPECT_EQ(named(clip(R"(name="From the clip")")), "From the clip.fcpxml");
    EXPECT_EQ(named(clip(R"(name="")", R"(<media id="r5" name="From the media"/>)")), "From the media.fcpxml");
    EXPECT_EQ(named(clip("")), "Block.fcpxml");
    EXPECT_EQ(named(clip(R"(x="1")"), u" "_s), "Block 2.fcpxml");
    EXPECT_EQ(named(clip(R"(name="a/b:c")")), "a-b:c.fcpxml");
    EXPECT_EQ(named(clip(R"(name="../../x")")), "-.-..-x.fcpxml");
    EXPECT_EQ(named(clip(R"(name="/")")), "-.fcpxml");
    EXPECT_EQ(named(clip(""), u"given\0name\n"_s), "given-name-.fcpxml");
    EXPECT_EQ(named(clip(""), QString(300, u'ü')).size(), 255U);
    // The very same again is refused, under its number too; a different one gets a number.
    EXPECT_EQ(named(clip(R"(name="From the clip" start="1s")")), "From the clip 2.fcpxml");
    for (const char* same : {R"(name="From the clip")", R"(name="From the clip" start="1s")"})
        EXPECT_EQ(save(clip(same), {}, u"Titles / Lower"_s).error(), Failure::alreadySaved(u"From the clip"_s));
    EXPECT_EQ(save(clip(R"(name="a/b:c")"), {}, u"Titles / Lower"_s).error().description(),
              u"“a/b:c” is already saved");
    EXPECT_TRUE(save(clip(R"(name="From the clip")"), {}, u"Other"_s));
}

TEST_F(SaveTest, NamesWholeDocumentsByTheirTimelineElseByTheirFile) {
    const auto saved = [&](const QByteArray& clips, const QByteArray& resources = {}) {
        writeFile(folder / "exports/My Cut.fcpxml", fcpxml(8, resources, clips).toStdString());
        auto document = FCPXMLDocument::read(folder / "exports/My Cut.fcpxml");
        EXPECT_TRUE(document);
        auto block = store.save(*std::move(document), {}, {});
        EXPECT_TRUE(block) << block.error().description().toStdString();
        return block.value_or(Arrangement());
    };
    const QByteArray spine = R"(<sequence duration="9s" tcStart="3600s"><spine>
        <asset-clip name="first" offset="3600s" duration="4s"><title name="T" lane="1"/></asset-clip>
        <asset-clip name="second" offset="3604s" duration="5s"/></spine></sequence>)";
    const QByteArray media = R"(<media id="r7" name="Nested"><sequence><spine/></sequence></media>)";
    const Arrangement cut =
        saved("<library><event name='Day 1'><asset-clip name='loose' duration='1s'/><project name='Timeline 1'>" +
                  spine + "</project></event></library>",
              media);
    EXPECT_EQ(cut.name, u"Timeline 1");
    EXPECT_EQ(cut.summary.seconds, 9);
    ASSERT_EQ(cut.summary.layers.size(), 3U);
    EXPECT_EQ(cut.summary.layers[1].name, u"T");
    EXPECT_EQ(saved("<library><event><project>" + spine + "</project></event></library>", media).name, u"My Cut");
    EXPECT_EQ(saved("<asset-clip name='before'/><project>" + spine + "</project>").name, u"My Cut 2");
    EXPECT_EQ(saved("<library/>", media).name, u"My Cut 3");
    EXPECT_EQ(saved("<ref-clip ref='r7'/>", media).name, u"Nested") << "a bare clip is no whole document";
    // Without a file there is no such name.
    EXPECT_EQ(save(fcpxml(8, media, "<project>" + spine + "</project>"))->name, u"Nested 2");
}

TEST_F(SaveTest, KeepsEveryClipOfADocument) {
    const ClipAsset first{.id = "r2", .uid = "", .file = media("one.mov", "1")};
    const ClipAsset second{.id = "r3", .uid = "", .file = media("two.mov", "22")};
    const QByteArray two =
        fcpxml(13, assetElement(first, 13) + assetElement(second, 13),
               R"(<asset-clip ref="r2" name="One" duration="2s"/><asset-clip ref="r3" name="Two" duration="3s"/>)");
    EXPECT_EQ(store.singleMediaFile(two, {}), std::nullopt) << "one of them would be lost";
    EXPECT_EQ(ArrangementStore::mediaOfSingleClip(two), std::nullopt);
    const auto block = save(two);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->name, u"One");
    EXPECT_EQ(block->summary.layers.size(), 2U);
    EXPECT_EQ(block->summary.seconds, 5);
    EXPECT_THAT(referencesOf(block->url), ElementsAre(videoElements / "one.mov", videoElements / "two.mov"));
}

TEST_F(SaveTest, TellsFilesOfOneAssetApart) {
    // An original and its proxy: two files of one UID, in one asset.
    const auto clip = [&](const fs::path& original, const fs::path& proxy) {
        return fcpxml(13,
                      "<asset id='r2' name='a' uid='ABCDABCDABCD' duration='5s' hasVideo='1'><media-rep "
                      "kind='proxy-media' src='" +
                          fileUrl(proxy) + "'/><media-rep kind='original-media' src='" + fileUrl(original) +
                          "'/></asset>",
                      R"(<asset-clip ref="r2" name="Pair" duration="5s"/>)");
    };
    const fs::path original = media("clip.mov", "the original");
    const fs::path proxy = media("proxy/clip.mov", "proxy");
    const auto block = save(clip(original, proxy));
    ASSERT_TRUE(block);
    const auto kept = referencesOf(block->url);
    EXPECT_EQ(readFile(kept[0]), "proxy");
    EXPECT_EQ(readFile(kept[1]), "the original");
    // One of the two is gone: the other is not taken for it.
    fs::remove(proxy);
    fs::remove(kept[0]);
    EXPECT_THAT(references(*store.xml(block->url)), ElementsAre(kept[0], kept[1]));
    const auto again = save(clip(original, proxy), u"Again"_s);
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().line(), u"Couldn’t copy the media for “Again”: clip.mov is missing.");
    // In another folder it is known by its name.
    const fs::path elsewhere = recent / "Final Cut Elements" / kept[0].filename();
    writeFile(elsewhere, "proxy");
    FinalCutElements::writeUID("ABCDABCDABCD", elsewhere);
    EXPECT_THAT(references(*store.xml(block->url)), ElementsAre(elsewhere, kept[1]));
}

TEST_F(SaveTest, StoresNothingOfAFileThatChangesMeanwhile) {
    const fs::path file = media("growing.mov", std::string(40 << 20, 'g'));
    const QByteArray xml = compound("Growing", {{.file = file}});
    bool isTouched = false;
    const auto refused = store.save(xml, {}, {}, {[&](auto, auto) {
                                        if (!std::exchange(isTouched, true))
                                            std::ofstream(file, std::ios::app) << "more";
                                    }});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().line(),
              u"Couldn’t copy the media for “Growing”: growing.mov: It is being changed by another program");
    EXPECT_EQ(everything(), std::set<std::string>());
    const auto kept = save(xml);
    ASSERT_TRUE(kept);
    EXPECT_EQ(fs::file_size(referencesOf(kept->url).front()), fs::file_size(file));
    // A copy that an earlier run left half done is not taken for the file.
    fs::resize_file(referencesOf(kept->url).front(), 1000);
    const auto whole = save(xml, u"Whole"_s);
    ASSERT_TRUE(whole);
    EXPECT_EQ(fs::file_size(referencesOf(whole->url).front()), fs::file_size(file));
}

TEST_F(SaveTest, TellsCopiesOfDifferentFilesApart) {
    const auto copied = [&](const ClipAsset& asset) {
        const auto block = save(compound("Any", {asset}));
        EXPECT_TRUE(block || block.error().kind == Failure::Kind::alreadySaved);
        return block ? referencesOf(block->url).front().filename().native() : std::string("again");
    };
    const ClipAsset first = asset("clip.mov");
    EXPECT_EQ(copied(first), "A1B2C3D4-clip.mov");
    // An asset is known by its UID and name, wherever it lies and however large it is now.
    ClipAsset moved = first;
    moved.file = media("elsewhere/clip.mov", "larger than before");
    EXPECT_EQ(copied(moved), "again");
    // The same eight characters of another UID.
    EXPECT_EQ(copied(asset("clip.mov", "A1B2C3D4-another")), "A1B2C3D4-clip 2.mov");
    EXPECT_EQ(copied(asset("clip.mov", "A1B2C3D4-another")), "again");
    // Without a UID the size decides.
    EXPECT_EQ(copied(asset("plain.mov", "")), "plain.mov");
    EXPECT_EQ(copied(asset("plain.mov", "")), "again");
    ClipAsset other{.uid = "", .file = media("elsewhere/plain.mov", "not that one")};
    EXPECT_EQ(copied(other), "plain 2.mov");
    EXPECT_EQ(readFile(videoElements / "plain.mov"), "media");
    EXPECT_EQ(readFile(videoElements / "plain 2.mov"), "not that one");
    EXPECT_EQ(copied(other), "again");
    // UIDs are no paths.
    EXPECT_EQ(copied(asset("clip.mov", "../../../up")), "-.-..-..-clip.mov");

    // One document, two files of one UID.
    ClipAsset twin{.id = "r3", .file = media("twin/pair.mov", "the larger of two")};
    const auto both = save(compound("Both", {asset("pair.mov"), twin}));
    ASSERT_TRUE(both);
    EXPECT_EQ(readFile(referencesOf(both->url)[0]), "media");
    EXPECT_EQ(readFile(referencesOf(both->url)[1]), "the larger of two");
    EXPECT_EQ(save(compound("Both", {asset("pair.mov"), twin})).error(), Failure::alreadySaved(u"Both"_s));
}

TEST_F(SaveTest, TakesMediaOfTheLibraryAsTheyLie) {
    const fs::path there = videoElements / "old name.mov";
    writeFile(there, "media");
    ClipAsset known{.uid = "FEEDFEED", .file = there};
    const auto block = save(compound("Known", {known}));
    ASSERT_TRUE(block);
    EXPECT_THAT(referencesOf(block->url), ElementsAre(there));
    EXPECT_EQ(platform::attribute(there, "com.quillary.assetUID"), "FEEDFEED");
    EXPECT_EQ(everything(), (std::set<std::string>{"Blocks/Known.fcpxml", "Videos/Final Cut Elements/old name.mov"}));
    // The source is gone, and the library still holds the asset.
    known.file = folder / "media/gone.mov";
    EXPECT_THAT(referencesOf(save(compound("Gone", {known}))->url), ElementsAre(there));
}

TEST_F(SaveTest, RefusesWhatItCannotKeepAndLeavesNoBlock) {
    writeFile(folder / "media/secret.mov", "x");
    fs::create_directories(folder / "media/folder.mov");
    const auto clip = [&](const QByteArray& src) {
        return compound("Clip", {asset("first.mov"), {.id = "r3", .uid = "B0B0", .file = "x", .src = src}});
    };
    const QByteArray here = fileUrl(folder / "media");
    for (const QByteArray& src :
         {QByteArray("https://example.org/clip.mov"), QByteArray("clip.mov"), QByteArray(" "), here + "/folder.mov",
          here + "/folder.mov/", here + "/missing.mov", here + "/missing/../../nothing.mov",
          QByteArray("file:///dev/zero"), here + "/a%2Fb.mov", here + "/a%00b.mov", here + "/bad%escape.mov"}) {
        const auto refused = save(clip(src));
        ASSERT_FALSE(refused) << src.toStdString();
        EXPECT_EQ(refused.error().kind, Failure::Kind::noMedia) << src.toStdString();
        EXPECT_EQ(refused.error().description(), u"Couldn’t copy the media for “Clip”");
        EXPECT_FALSE(refused.error().recoverySuggestion().isEmpty());
    }
    for (const auto& kept : everything()) EXPECT_EQ(kept, "Videos/Final Cut Elements/A1B2C3D4-first.mov");
    std::vector<ClipAsset> gone;
    for (int n = 1; n <= 6; ++n)
        gone.push_back({.id = "g" + QByteArray::number(n), .uid = "", .file = folder / (std::to_string(n) + ".mov")});
    EXPECT_EQ(save(compound("Gone", gone)).error().recoverySuggestion(),
              u"1.mov, 2.mov, 3.mov and 3 more are missing.");
    gone.resize(2);
    EXPECT_EQ(save(compound("Gone", gone)).error().recoverySuggestion(), u"1.mov and 2.mov are missing.");
}

TEST_F(SaveTest, RefusesWhatIsNoDocument) {
    for (const char* xml : {"", "<fcpxml>", "<fcpxml><clip name=\"&nothing;\"/></fcpxml>"}) {
        const auto refused = save(xml);
        ASSERT_FALSE(refused) << xml;
        EXPECT_EQ(refused.error().kind, Failure::Kind::unreadable);
        EXPECT_FALSE(refused.error().description().isEmpty());
    }
    for (const char* xml : {"<xmeml/>", "<FCPXML/>", "<x:fcpxml xmlns:x='u'/>", "<a><fcpxml/></a>"})
        EXPECT_EQ(save(xml).error().description(), u"That isn’t a Final Cut clip") << xml;
    EXPECT_TRUE(everything().empty());
    // A document that would read a file keeps its reference as it is and reads nothing.
    writeFile(folder / "secret", "the secret");
    const auto kept = save("<!DOCTYPE fcpxml [<!ENTITY x SYSTEM \"" + fileUrl(folder / "secret") +
                           "\">]><fcpxml><clip name=\"Outside\"><note>&x;</note></clip></fcpxml>");
    ASSERT_TRUE(kept);
    EXPECT_TRUE(readFile(kept->url).contains("<note>&x;</note>"));
}

TEST_F(SaveTest, TwoAtOnceStoreTheClipAndItsMediaOnce) {
    writeFile(folder / "media/clip.mov", std::string(8 << 20, 'm'));
    const QByteArray xml = compound("Race", {{.file = folder / "media/clip.mov"}});
    for (int round = 0; round < 5; ++round) {
        fs::remove_all(blocks);
        fs::remove_all(videoElements);
        std::array<bool, 2> saved{};
        {
            std::array<std::jthread, 2> both;
            for (std::size_t i = 0; i < both.size(); ++i)
                both[i] = std::jthread([&, i] { saved[i] = store.save(xml, {}, {}).has_value(); });
        }
        EXPECT_NE(saved[0], saved[1]);
        EXPECT_EQ(everything(),
                  (std::set<std::string>{"Blocks/Race.fcpxml", "Videos/Final Cut Elements/A1B2C3D4-clip.mov"}));
    }
}

TEST_F(SaveTest, TellsHowFarItIsAndStops) {
    writeFile(folder / "media/large.mov", std::string(40 << 20, 'l'));
    const QByteArray xml = compound("Large", {{.file = folder / "media/large.mov"}, asset("small.mov", "B0B0B0B0B0")});
    std::stop_source stop;
    std::uint64_t largest = 0;
    const auto stopped = store.save(xml, {}, {}, {[&](auto, auto) { stop.request_stop(); }, stop.get_token()});
    // File systems that share blocks copy in one step, which cannot be stopped.
    if (!stopped) {
        EXPECT_TRUE(everything().empty());
    }
    fs::remove_all(root / "Library");
    ASSERT_TRUE(store.save(xml, {}, {}, {[&](std::uint64_t done, std::uint64_t total) {
                               EXPECT_EQ(total, (40U << 20U) + 5);
                               EXPECT_GE(done, largest);
                               largest = done;
                           }}));
    EXPECT_EQ(largest, (40U << 20U) + 5);
}

TEST_F(SaveTest, AFullDiskLeavesWholeFilesOnly) {
    const SmallFileSystem small("tmpfs", "size=160k");
    SKIP_UNLESS_MOUNTED(small);
    Storage there(settings, bookmarks, desktop, small.path());
    ArrangementStore full(there);
    std::vector<ClipAsset> assets;
    for (int i = 1; i <= 3; ++i) {
        const auto number = QByteArray::number(i);
        assets.push_back({.id = "a" + number,
                          .uid = number + "0000000",
                          .file = folder / "media" / (number + ".mov").toStdString()});
        writeFile(assets.back().file, std::string(64 << 10, 'x'));
    }
    const auto refused = full.save(compound("Full", assets), {}, {});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind, Failure::Kind::noMedia);
    const fs::path library = *there.root() / "Library";
    EXPECT_TRUE(fs::is_empty(library / "Blocks"));
    for (const auto& copy : fs::directory_iterator(library / "Videos/Final Cut Elements"))
        EXPECT_EQ(copy.file_size(), 64U << 10U);
    // With room again, what was copied is found.
    assets.pop_back();
    EXPECT_TRUE(full.save(compound("Fits", assets), {}, {}));
}

} // namespace

} // namespace quillary::test
