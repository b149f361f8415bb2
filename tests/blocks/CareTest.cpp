#include "blocks/BlockChecks.h"
#include "blocks/BlockExport.h"
#include "blocks/BlocksTest.h"
#include "support/SmallFileSystem.h"

namespace quillary::test {

namespace {

using State = BlockHealth::State;
using testing::ElementsAre;
using testing::IsEmpty;

class CareTest : public BlocksTest {
protected:
    BlockHealth health(const fs::path& block) {
        const auto checked = checks.check(root, std::span(&block, 1));
        EXPECT_TRUE(checked.front());
        return checked.front().value_or(BlockHealth());
    }
    std::vector<State> states(const fs::path& block) {
        std::vector<State> found;
        for (const auto& media : health(block).media) found.push_back(media.state);
        return found;
    }
    fs::path saved(const QByteArray& name, const std::vector<ClipAsset>& assets) {
        const auto block = save(compound(name, assets));
        EXPECT_TRUE(block);
        return block ? block->url : fs::path();
    }

    BlockChecks checks;
};

TEST_F(CareTest, TellsHowMediaAre) {
    const fs::path block = saved("B", {{.id = "r2", .uid = "AAAAAAAA1", .file = media("one.mov", "123")},
                                       {.id = "r3", .uid = "BBBBBBBB1", .file = media("two.wav", "12345")},
                                       {.id = "r4", .uid = "", .file = media("three.mov", "1234567")}});
    BlockHealth found = health(block);
    EXPECT_EQ(found.version, u"1.13");
    EXPECT_EQ(found.bytes, 15U);
    EXPECT_EQ(found.media[0],
              (BlockHealth::Media{u"AAAAAAAA-one.mov"_s, State::present, videoElements / "AAAAAAAA-one.mov"}));

    fs::create_directories(root / "Recent/Final Cut Elements");
    const fs::path elsewhere = root / "Recent/Final Cut Elements/other name.mov";
    fs::rename(videoElements / "AAAAAAAA-one.mov", elsewhere);
    fs::remove(videoElements / "three.mov");
    found = health(block);
    EXPECT_EQ(found.media[0], (BlockHealth::Media{u"AAAAAAAA-one.mov"_s, State::moved, elsewhere}));
    EXPECT_EQ(found.media[1].state, State::present);
    EXPECT_EQ(found.media[2], (BlockHealth::Media{u"three.mov"_s, State::missing, videoElements / "three.mov"}));
    EXPECT_EQ(found.bytes, 8U);

    // The same asset once more; another file that happens to bear the name is none.
    const fs::path sound = root / "Library/Audio/Final Cut Elements/BBBBBBBB-two.wav";
    writeFile(videoElements / "twin.wav", "12345");
    FinalCutElements::writeUID("BBBBBBBB1", videoElements / "twin.wav");
    EXPECT_THAT(states(block), ElementsAre(State::moved, State::duplicate, State::missing));
    EXPECT_EQ(health(block).media[1].path, sound);
    writeFile(videoElements / "twin.wav", "another length");
    EXPECT_THAT(states(block), ElementsAre(State::moved, State::present, State::missing));
}

TEST_F(CareTest, TellsFilesOfOneAssetApart) {
    const fs::path block = saved("B", {{.id = "r2", .uid = "AAAAAAAA1", .file = media("one.mov", "1")},
                                       {.id = "r3", .uid = "AAAAAAAA1", .file = media("two.mov", "2")}});
    EXPECT_THAT(states(block), ElementsAre(State::present, State::present));
    fs::remove(videoElements / "AAAAAAAA-two.mov");
    EXPECT_THAT(states(block), ElementsAre(State::present, State::missing));
    EXPECT_EQ(store.useFoundMedia(block), 0);
    // The mark alone would find the other; the name finds this one.
    const fs::path elsewhere = root / "Recent/Final Cut Elements/AAAAAAAA-two.mov";
    writeFile(elsewhere, "2");
    FinalCutElements::writeUID("AAAAAAAA1", elsewhere);
    EXPECT_THAT(states(block), ElementsAre(State::present, State::moved));
    EXPECT_EQ(health(block).media[1].path, elsewhere);
}

TEST_F(CareTest, FindsCopiesThatWereCutShort) {
    const auto box = [](const char* kind, std::size_t bytes) {
        const auto length = static_cast<char>(8 + bytes);
        return std::string{0, 0, 0, length} + kind + std::string(bytes, 'x');
    };
    const std::string film = box("ftyp", 8) + box("mdat", 40) + box("moov", 16);
    const std::string sound = std::string("RIFF") + std::string{44, 0, 0, 0} + "WAVE" + std::string(40, 's');
    const std::string picture = std::string("\x89PNG\r\n\x1a\n") + box("IHDR", 5).replace(3, 1, 1, 5) + "crc!" +
                                std::string(4, '\0') + "IEND" + "crc!";
    const std::string text = "text that tells no length";
    const fs::path block = saved("B", {{.id = "r2", .uid = "A", .file = media("film.mov", film)},
                                       {.id = "r3", .uid = "B", .file = media("sound.wav", sound)},
                                       {.id = "r4", .uid = "C", .file = media("picture.png", picture)},
                                       {.id = "r5", .uid = "D", .file = media("plain.mov", text)}});
    EXPECT_THAT(states(block), ElementsAre(State::present, State::present, State::present, State::present));
    // What tells its length is known without the mark of its size, as of copies that bear none.
    std::vector<fs::path> copies;
    for (const auto& media : health(block).media) copies.push_back(media.path);
    for (std::size_t i = 0; i < copies.size(); ++i) {
        if (i < 3) platform::removeAttribute(copies[i], "com.quillary.mediaSize");
        fs::resize_file(copies[i], fs::file_size(copies[i]) - 5);
    }
    EXPECT_THAT(states(block), ElementsAre(State::incomplete, State::incomplete, State::incomplete, State::incomplete));
    writeFile(copies[0], box("ftyp", 8) + box("mdat", 40));
    EXPECT_EQ(states(block)[0], State::incomplete) << "nothing tells what is in it";
    writeFile(copies[0], film);
    EXPECT_EQ(states(block)[0], State::present);
}

TEST_F(CareTest, ReadsOnlyWhatChanged) {
    const fs::path block = saved("B", {asset("one.mov")});
    const fs::path other = saved("C", {asset("two.mov", "C")});
    const std::vector both{block, other, root / "Library/Blocks/gone.fcpxml"};
    auto checked = checks.check(root, both);
    EXPECT_TRUE(checked[0] && checked[1]);
    EXPECT_FALSE(checked[2]);
    EXPECT_EQ(checks.documentsRead(), 3);
    fs::remove(videoElements / "C-two.mov");
    checked = checks.check(root, both);
    EXPECT_EQ(checked[1]->media[0].state, State::missing);
    EXPECT_EQ(checks.documentsRead(), 4) << "only what cannot be read is tried again";
    // Replaced by another document of the same size and date.
    const auto date = fs::last_write_time(block);
    writeFile(folder / "new", readFile(other));
    fs::resize_file(folder / "new", fs::file_size(block));
    fs::last_write_time(folder / "new", date);
    fs::rename(folder / "new", block);
    checked = checks.check(root, both);
    EXPECT_EQ(checks.documentsRead(), 6);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THAT(checks.check(root, both, stop.get_token()), IsEmpty());
}

TEST_F(CareTest, PointsABlockAtFoundFilesOnlyWhenAsked) {
    const fs::path block = saved("B", {asset("one.mov"), {.id = "r3", .uid = "D", .file = media("two.mov", "22")}});
    const fs::path elsewhere = root / "Library/Audio/Final Cut Elements/x.mov";
    fs::create_directories(elsewhere.parent_path());
    fs::rename(videoElements / "D-two.mov", elsewhere);
    const auto date = fs::last_write_time(block);
    const std::string before = readFile(block);
    EXPECT_THAT(states(block), ElementsAre(State::present, State::moved));
    EXPECT_EQ(readFile(block), before);
    EXPECT_EQ(store.useFoundMedia(block), 1);
    EXPECT_THAT(referencesOf(block), ElementsAre(videoElements / "A1B2C3D4-one.mov", elsewhere));
    EXPECT_EQ(fs::last_write_time(block), date);
    EXPECT_THAT(states(block), ElementsAre(State::present, State::present));
    EXPECT_EQ(store.useFoundMedia(block), 0);
    EXPECT_FALSE(store.useFoundMedia(media("no.fcpxml", "<fcpxml/>")));
}

class PortableTest : public CareTest {
protected:
    fs::path parent = [this] {
        fs::create_directories(folder / "drive");
        return folder / "drive";
    }();
    std::expected<BlockExport::Portable, ArrangementFailure> pack(const fs::path& block, const fs::path& into,
                                                                  const MediaProgress& progress = {}) {
        return BlockExport::makePortable(store, block, into, u"Packed"_s, progress);
    }
};

TEST_F(PortableTest, MakesAFolderThatStandsAlone) {
    const fs::path block = saved("B", {{.id = "r2", .uid = "E1", .file = media("a/one.mov", "first")},
                                       {.id = "r3", .uid = "", .file = media("b/Ü 1.mov", "second")},
                                       {.id = "r4", .uid = "E1", .file = media("a/one.mov", "first")}});
    writeFile(blocks / "B.png", "poster");
    std::uint64_t done = 0;
    const auto made = pack(block, parent, {.report = [&](std::uint64_t now, std::uint64_t) { done = now; }});
    ASSERT_TRUE(made);
    EXPECT_EQ(made->folder, parent / "Packed");
    EXPECT_EQ(done, 11U);
    const std::string text = readFile(made->document);
    EXPECT_NE(text.find("src=\"Media/one.mov\""), std::string::npos);
    EXPECT_NE(text.find("src=\"Media/%C3%9C%201.mov\""), std::string::npos);
    EXPECT_EQ(text.find("file:"), std::string::npos);
    EXPECT_EQ(everythingIn(parent), (std::set<std::string>{"Packed", "Packed/B.fcpxml", "Packed/B.png", "Packed/Media",
                                                           "Packed/Media/one.mov", "Packed/Media/Ü 1.mov"}));
    EXPECT_EQ(pack(block, parent)->folder, parent / "Packed 2");

    // Carried elsewhere, without the library that it came from, it is a block again.
    fs::rename(made->folder, folder / "carried");
    fs::remove_all(root / "Library");
    auto document = FCPXMLDocument::read(folder / "carried/B.fcpxml");
    ASSERT_TRUE(document);
    const auto again = store.save(*std::move(document), u"Again"_s, {});
    ASSERT_TRUE(again);
    EXPECT_THAT(referencesOf(again->url),
                ElementsAre(videoElements / "E1-one.mov", videoElements / "Ü 1.mov", videoElements / "E1-one.mov"));
    EXPECT_EQ(readFile(videoElements / "Ü 1.mov"), "second");
}

TEST_F(PortableTest, MakesItWholeOrNotAtAll) {
    const fs::path block = saved("B", {asset("one.mov"), {.id = "r3", .uid = "F", .file = media("two.mov", "22")}});
    std::stop_source stop;
    const MediaProgress stopping{.report = [&](std::uint64_t, std::uint64_t) { stop.request_stop(); },
                                 .stop = stop.get_token()};
    EXPECT_FALSE(pack(block, parent, stopping));
    EXPECT_FALSE(pack(block, folder / "nowhere"));
    fs::remove(videoElements / "F-two.mov");
    const auto missing = pack(block, parent);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().description(), u"Couldn’t copy the media for “B”"_s);
    EXPECT_EQ(missing.error().recoverySuggestion(), u"F-two.mov is missing."_s);
    EXPECT_THAT(everythingIn(parent), IsEmpty());

    const SmallFileSystem drive("tmpfs", "size=64k");
    SKIP_UNLESS_MOUNTED(drive);
    const fs::path large = saved("L", {{.id = "r5", .uid = "G", .file = media("large.mov", std::string(70'000, 'x'))}});
    const auto full = pack(large, drive.path());
    ASSERT_FALSE(full);
    EXPECT_TRUE(full.error().description().startsWith(u"There is not enough space"));
    EXPECT_THAT(everythingIn(drive.path()), IsEmpty());
}

} // namespace

} // namespace quillary::test
