#include "cli/ProgramTest.h"

#include <sys/types.h>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

class LibraryTest : public ProgramTest {
protected:
    QJsonObject library(const QStringList& words = {}, int status = 0) const {
        const Ended ended = json(QStringList{u"library"_s} + words);
        EXPECT_EQ(ended.status, status) << ended.err.toStdString();
        return ended.object();
    }
    QString rootNow() const { return library()["root"_L1].toString(); }
    QJsonValue setting(const char* key) const {
        const QString name = QLatin1StringView(key);
        return json({u"settings"_s, name}).object()[name];
    }
};

TEST_F(LibraryTest, TellsWhereItIsAndWhatItHolds) {
    saved("a.png", u"A"_s);
    const QJsonObject told = library();
    EXPECT_EQ(told.keys(), "chosenFolderUnavailable counts isDefault root"_words);
    EXPECT_EQ(told["root"_L1], text(root()));
    EXPECT_EQ(told["isDefault"_L1], true);
    EXPECT_EQ(told["counts"_L1].toObject(),
              QJsonDocument::fromJson(R"({"images":1,"videos":0,"audio":0,"blocks":0,"recent":0})").object());
}

TEST_F(LibraryTest, AChosenFolderIsRemembered) {
    fs::create_directories(m_folder / "drive");
    EXPECT_EQ(library({u"use"_s, in("drive")})["root"_L1], in("drive/Quillary"));
    EXPECT_EQ(rootNow(), in("drive/Quillary"));
    EXPECT_EQ(setting("rootFolderBookmark"), in("drive"));
    EXPECT_FALSE(fs::exists(root())) << "the default location is left alone";

    fs::rename(m_folder / "drive", m_folder / "gone");
    const QJsonObject away = library();
    EXPECT_EQ(away["root"_L1], text(root()));
    EXPECT_EQ(away["chosenFolderUnavailable"_L1], true);
    EXPECT_TRUE(saved("a.png").startsWith(text(root())));
    EXPECT_FALSE(fs::exists(m_folder / "drive")) << "nothing is made where the drive was";
    fs::rename(m_folder / "gone", m_folder / "drive");
    EXPECT_EQ(rootNow(), in("drive/Quillary"));

    writeFile(m_folder / "file", "no folder");
    for (const char* wrong : {"none", "file"}) {
        EXPECT_EQ(library({u"use"_s, in(wrong)}, 3)["error"_L1], u"Could not open the Quillary folder."_s);
        EXPECT_EQ(rootNow(), in("drive/Quillary")) << "the choice stays";
    }
    EXPECT_EQ(library({u"default"_s})["isDefault"_L1], true);
    EXPECT_TRUE(setting("rootFolderBookmark").isNull());
}

TEST_F(LibraryTest, AFolderForOneRunIsNotRemembered) {
    const std::pair<const char*, const char*> folders[] = {{"new/deep", "new/deep/Quillary"},
                                                           {"other/Quillary", "other/Quillary"},
                                                           {"other/Quillary/", "other/Quillary"},
                                                           {"a/../b/.", "b/Quillary"},
                                                           {"third/quillary", "third/quillary/Quillary"}};
    for (const auto& [given, opened] : folders) {
        const Ended ended = json({u"library"_s, u"--library"_s, QLatin1StringView(given)});
        EXPECT_EQ(ended.object()["root"_L1], in(opened)) << given;
    }
    EXPECT_TRUE(setting("rootFolderBookmark").isNull());
    EXPECT_TRUE(setting("blocksLastRootPath").isNull());
    EXPECT_FALSE(fs::exists(root()));
    // Everything else works as always.
    json({u"--library"_s, in("new/deep"), u"settings"_s, u"openOnLibrary"_s, u"yes"_s});
    EXPECT_EQ(setting("openOnLibrary"), true);
}

TEST_F(LibraryTest, ACopyTakesNoNoticeOfTheLibraryOfTheRun) {
    writeFile(m_folder / "from/Quillary/Library/Audio/a.wav", "a");
    const Ended copied = json({u"--library"_s, in("unused"), u"library"_s, u"copy"_s, in("from"), in("to")});
    EXPECT_EQ(copied.status, 0) << copied.err.toStdString();
    EXPECT_EQ(copied.object()["copied"_L1], 1);
    EXPECT_TRUE(fs::exists(m_folder / "to/Quillary/Library/Audio/a.wav"));
    EXPECT_FALSE(fs::exists(m_folder / "unused"));
}

TEST_F(LibraryTest, AFolderThatCannotBeOpenedEndsTheRun) {
    writeFile(m_folder / "file", "no folder");
    const QString picture = this->picture("a.png");
    for (const QString& folder : {in("file/x"), in("file"), u"/proc/none"_s}) {
        for (const QStringList& words :
             {QStringList{u"library"_s}, QStringList{u"save"_s, picture}, QStringList{u"recent"_s, u"add"_s, picture},
              QStringList{u"list"_s, u"images"_s}}) {
            const Ended ended = json(QStringList{u"--library"_s, folder} + words);
            EXPECT_EQ(ended.status, 3) << folder.toStdString();
            EXPECT_EQ(ended.error(), u"Could not open the Quillary folder."_s);
        }
    }
    EXPECT_FALSE(fs::exists(root())) << "the default location never stands in";
}

TEST_F(LibraryTest, SettingsTellTheValueInForce) {
    EXPECT_EQ(json({u"settings"_s}).object(),
              QJsonDocument::fromJson(R"({"rootFolderBookmark":null,"extraScopeBookmarks":[],"blocksLastRootPath":null,
                  "favouritePaths":[],"favouritesOnly":false,"recentLimit":0,"vectorLongEdge":4096,"previewVolume":0.7,
                  "openOnLibrary":false,"pasteHistory":true,"editorName":"Final Cut","subjectModel":null})")
                  .object());
    struct Case {
        const char* key;
        const char* value;
        QJsonValue inForce;
        int status = 0;
    };
    const Case cases[] = {
        {"recentLimit", "500", 500},
        {"recentLimit", "-5", 0},
        {"recentLimit", "many", 0, 2},
        {"recentLimit", "99999999999", 0, 2},
        {"vectorLongEdge", "100", 256},
        {"vectorLongEdge", "20000", 8192},
        {"vectorLongEdge", "2048", 2048},
        {"vectorLongEdge", "2048.5", 2048, 2},
        {"previewVolume", "1.5", 1.0},
        {"previewVolume", "0.25", 0.25},
        {"previewVolume", "nan", 0.25, 2},
        {"openOnLibrary", "true", true},
        {"openOnLibrary", "perhaps", true, 2},
        {"openOnLibrary", "off", false},
        {"favouritesOnly", "1", true},
        {"editorName", " DaVinci  Resolve ", u"DaVinci Resolve"_s},
        {"editorName", "", u"Final Cut"_s},
        {"favouritePaths", "x", QJsonArray(), 2},
        {"rootFolderBookmark", "x", QJsonValue(), 2},
    };
    for (const auto& [key, value, inForce, status] : cases) {
        EXPECT_EQ(json({u"settings"_s, QLatin1StringView(key), QLatin1StringView(value)}).status, status)
            << key << value;
        EXPECT_EQ(setting(key), inForce) << key << value;
    }
    EXPECT_EQ(run({u"settings"_s, u"vectorLongEdge"_s}).out, "2048\n");
}

} // namespace

} // namespace quillary::test
