#include "cli/ProgramTest.h"
#include "samples/Clips.h"

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

class BlockTest : public ProgramTest {
protected:
    QString document(const char* name, const QByteArray& xml) const {
        writeFile(m_folder / name, xml);
        return in(name);
    }
    QString rich() const { return document("Opening.fcpxml", richCompound(m_folder / "media")); }
    QString path(const char* below) const { return text(root() / "Library" / below); }
    QJsonArray list(const QStringList& words = {}) const {
        return json(QStringList{u"list"_s, u"blocks"_s} + words).array();
    }
};

TEST_F(BlockTest, KeepsAndListsAClip) {
    const QJsonObject saved = json({u"block"_s, u"save"_s, rich(), u"--collection"_s, u"A / B"_s}).object();
    EXPECT_EQ(saved.keys(), "collection layers media name path seconds usesGlidemark"_words);
    EXPECT_EQ(saved["path"_L1], path("Blocks/A/B/Opening.fcpxml"));
    EXPECT_EQ(saved["collection"_L1], u"A / B"_s);
    EXPECT_EQ(saved["media"_L1].toArray().size(), 6);
    EXPECT_EQ(saved["media"_L1].toArray().at(4), path("Videos/Final Cut Elements/no uid.mov"));
    EXPECT_EQ(saved["usesGlidemark"_L1], true);
    const QJsonArray layers = saved["layers"_L1].toArray();
    EXPECT_EQ(layers.at(1).toObject(),
              QJsonObject({{u"name"_s, u"Lower third"_s}, {u"lane"_s, 2}, {u"kind"_s, u"title"_s}}));
    const QJsonObject listed = list().at(0).toObject();
    EXPECT_EQ(listed.keys(),
              "collection favorite layers modified name path poster seconds sourceFormat usesGlidemark"_words);
    for (const char* same : {"path", "name", "collection", "seconds", "layers", "usesGlidemark"})
        EXPECT_EQ(listed[QLatin1StringView(same)], saved[QLatin1StringView(same)]) << same;
    EXPECT_TRUE(listed["poster"_L1].isNull());
    EXPECT_EQ(json({u"block"_s, u"save"_s, rich(), u"--collection"_s, u"A / B"_s}).error(),
              u"“Opening” is already saved");
    EXPECT_EQ(json({u"collections"_s, u"blocks"_s}).array().at(1).toObject()["count"_L1], 1);
    EXPECT_EQ(list({u"--collection"_s, u"A"_s}).size(), 1);
    EXPECT_EQ(list({u"--unfiled"_s}).size(), 0);
    EXPECT_EQ(list({u"--search"_s, u"OPEN"_s}).size(), 1);
}

TEST_F(BlockTest, LooksAfterABlockWithItsPoster) {
    QString block = json({u"block"_s, u"save"_s, rich(), u"--name"_s, u"Intro"_s}).object()["path"_L1].toString();
    const QString image = picture("frame.png");
    EXPECT_EQ(json({u"block"_s, u"poster"_s, block, image}).object()["poster"_L1], path("Blocks/Intro.png"));
    run({u"favorite"_s, block});
    const auto now = [&](const QStringList& words) { return column(json(words).array(), "path"); };
    EXPECT_EQ(now({u"move"_s, block, u"--collection"_s, u"A"_s}), QStringList{path("Blocks/A/Intro.fcpxml")});
    EXPECT_EQ(now({u"rename"_s, path("Blocks/A/Intro.fcpxml"), u"End"_s}), QStringList{path("Blocks/A/End.fcpxml")});
    block = path("Blocks/A/End.fcpxml");
    EXPECT_EQ(list({u"--favorites"_s}).at(0).toObject()["poster"_L1], path("Blocks/A/End.png"));
    const QJsonObject removed = json({u"block"_s, u"poster"_s, block, u"--remove"_s}).object();
    EXPECT_TRUE(removed.contains("poster"_L1) && removed["poster"_L1].isNull());
    EXPECT_FALSE(fs::exists(root() / "Library/Blocks/A/End.png"));
    json({u"block"_s, u"poster"_s, block, image});
    EXPECT_EQ(now({u"delete"_s, block}), QStringList{block});
    EXPECT_TRUE(fs::is_empty(root() / "Library/Blocks/A"));
    EXPECT_EQ(json({u"block"_s, u"poster"_s, block, image}).status, 1);
    EXPECT_EQ(json({u"block"_s, u"poster"_s, image, image}).status, 1);
}

TEST_F(BlockTest, PrintsTheDocumentOfADragAndReducesSingleClips) {
    const QString block = json({u"block"_s, u"save"_s, rich()}).object()["path"_L1].toString();
    const QByteArray stored = QByteArray::fromStdString(readFile(block.toStdString()));
    const Ended xml = run({u"block"_s, u"xml"_s, block});
    EXPECT_EQ(xml.status, 0);
    EXPECT_TRUE(xml.out.startsWith("<?xml") && xml.out.contains("<ref-clip") && !xml.out.contains("uid=\"A1B2"));
    EXPECT_EQ(json({u"block"_s, u"xml"_s, block}).out, xml.out);
    EXPECT_EQ(QByteArray::fromStdString(readFile(block.toStdString())), stored);

    writeFile(m_folder / "media/one.mov", "media");
    const QString single = document("single.fcpxml", singleClip({.uid = "", .file = m_folder / "media/one.mov"}));
    EXPECT_EQ(json({u"block"_s, u"media"_s, single, u"--collection"_s, u"C"_s}).object()["path"_L1],
              path("Videos/C/one.mov"));
    const QJsonObject more = json({u"block"_s, u"media"_s, rich()}).object();
    EXPECT_TRUE(more.contains("path"_L1) && more["path"_L1].isNull());
}

TEST_F(BlockTest, ExportsBlocks) {
    const QString block = json({u"block"_s, u"save"_s, rich()}).object()["path"_L1].toString();
    const QJsonObject otio =
        json({u"block"_s, u"export"_s, block, u"--to"_s, u"otio"_s, u"--output"_s, in("o.otio")}).object();
    EXPECT_EQ(otio.keys(), "left_out output"_words);
    EXPECT_EQ(otio["output"_L1], in("o.otio"));
    EXPECT_TRUE(otio["left_out"_L1].toArray().contains(u"Titles (1): “Lower third”"_s));
    const Ended older = run({u"block"_s, u"export"_s, block, u"--to"_s, u"fcpxml-1.10"_s, u"--relative"_s});
    EXPECT_EQ(older.out, in("Opening 2.fcpxml").toUtf8() + '\n') << "the current folder holds one of that name";
    const std::string written = readFile(m_folder / "Opening 2.fcpxml");
    EXPECT_NE(written.find("src=\"home/Movies/Quillary/Library/"), std::string::npos);
    EXPECT_EQ(run({u"block"_s, u"export"_s, block, u"--to"_s, u"edl"_s}).status, 2);
    EXPECT_EQ(run({u"block"_s, u"export"_s, block}).status, 2);
    EXPECT_EQ(json({u"block"_s, u"export"_s, in("gone"), u"--to"_s, u"otio"_s}).status, 1);
}

TEST_F(BlockTest, ChecksAndPacksBlocks) {
    const QString block = json({u"block"_s, u"save"_s, rich()}).object()["path"_L1].toString();
    fs::remove(root() / "Library/Videos/Final Cut Elements/no uid.mov");
    const QJsonArray checked = json({u"block"_s, u"check"_s}).array();
    ASSERT_EQ(checked.size(), 1);
    EXPECT_EQ(checked[0].toObject().keys(), "bytes media path"_words);
    const QJsonArray media = checked[0]["media"_L1].toArray();
    EXPECT_EQ(media[4].toObject(), QJsonObject({{u"name"_s, u"no uid.mov"_s},
                                                {u"state"_s, u"missing"_s},
                                                {u"path"_s, path("Videos/Final Cut Elements/no uid.mov")}}));
    EXPECT_EQ(column(media, "state").count(u"present"_s), 5);
    const Ended table = run({u"block"_s, u"check"_s, block, in("gone.fcpxml")});
    EXPECT_EQ(table.status, 1) << "one could not be read, the other was told all the same";
    EXPECT_TRUE(table.out.contains("Opening") && table.out.contains("missing") && table.err.contains("gone.fcpxml"));
    EXPECT_EQ(run({u"block"_s, u"check"_s, block}).status, 0);

    const Ended incomplete = json({u"block"_s, u"portable"_s, block});
    EXPECT_EQ(incomplete.status, 1);
    EXPECT_EQ(incomplete.object()["suggestion"_L1], u"no uid.mov is missing."_s);
    EXPECT_FALSE(fs::exists(m_folder / "Opening"));
    writeFile(root() / "Library/Videos/Final Cut Elements/no uid.mov", "back");
    const QJsonObject packed = json({u"block"_s, u"portable"_s, block}).object();
    EXPECT_EQ(packed["path"_L1], in("Opening/Opening.fcpxml"));
    EXPECT_EQ(packed["media"_L1].toArray().size(), 6);
    EXPECT_EQ(json({u"block"_s, u"save"_s, in("Opening/Opening.fcpxml"), u"--name"_s, u"Again"_s}).status, 0);
}

TEST_F(BlockTest, TellsWhatIsWrongWithADocument) {
    const QString picture = this->picture("no.png");
    const std::pair<QString, QString> cases[] = {
        {document("root.fcpxml", "<xmeml/>"), u"That isn’t a Final Cut clip"_s},
        {document("bad.fcpxml", "<fcpxml>"), u"Not a well-formed XML document"_s},
        {document("gone.fcpxml", singleClip({.file = m_folder / "gone.mov"})),
         u"Couldn’t copy the media for “Single”"_s},
        {in("missing.fcpxml"), u"Could not read missing.fcpxml"_s},
        {text(m_folder.path()), u"not a file"_s},
        {picture, u"Not a well-formed XML document"_s},
    };
    for (const auto& [file, told] : cases) {
        const Ended ended = json({u"block"_s, u"save"_s, file});
        EXPECT_EQ(ended.status, 1);
        EXPECT_TRUE(ended.error().contains(told)) << ended.error().toStdString();
        EXPECT_TRUE(ended.object().contains("suggestion"_L1));
        if (file.endsWith(u"gone.fcpxml")) {
            EXPECT_EQ(ended.object()["suggestion"_L1], u"gone.mov is missing."_s);
        }
    }
    EXPECT_EQ(
        run({u"--json"_s, u"block"_s, u"save"_s, u"-"_s}, "<fcpxml><clip name='In'/></fcpxml>").object()["name"_L1],
        u"In"_s);
    EXPECT_EQ(list().size(), 1);
}

} // namespace

} // namespace quillary::test
