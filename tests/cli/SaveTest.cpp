#include "cli/ProgramTest.h"
#include "support/SmallFileSystem.h"

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

/// Makes the program that starts next heed permissions as anybody's does, also when the superuser runs it.
void heedPermissions() {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    __user_cap_header_struct header{.version = _LINUX_CAPABILITY_VERSION_3, .pid = 0};
    __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    syscall(SYS_capset, &header, none);
}

class SaveTest : public ProgramTest {
protected:
    QJsonObject save(const QStringList& words, int status = 0) const {
        const Ended ended = json(QStringList{u"save"_s} + words);
        EXPECT_EQ(ended.status, status) << ended.err.toStdString();
        return ended.object();
    }

    static int count(const QJsonObject& result, const char* key) {
        return static_cast<int>(result[QLatin1StringView(key)].toArray().size());
    }

    static QString summary(const QJsonObject& result) { return result["summary"_L1].toString(); }
};

TEST_F(SaveTest, FilesAMixedBatch) {
    const QString one = picture("one.png");
    save({one});
    writeFile(m_folder / "clip.mp4", "film");
    writeFile(m_folder / "boing.wav", "sound");
    writeFile(m_folder / "notes.txt", "text");
    writeFile(m_folder / "broken.png", "no picture");
    writeFile(m_folder / ".hidden.png", "x");
    const QJsonObject result = save({one, picture("two.png", Qt::blue, {9, 9}), in("clip.mp4"), in("boing.wav"),
                                     in("notes.txt"), in("broken.png"), in("none.png")},
                                    1);
    EXPECT_EQ(summary(result), u"Saved 1 · 1 video to Videos · 1 sound to Audio · 1 already in your library · "
                               u"couldn't read 2"_s);
    EXPECT_EQ(count(result, "saved"), 3);
    EXPECT_EQ(result["duplicates"_L1].toArray(), QJsonArray{one});
    EXPECT_EQ(column(result["failures"_L1].toArray(), "file"), (QStringList{in("broken.png"), in("none.png")}));
    EXPECT_EQ(readFile(root() / "Library/Videos/clip.mp4"), "film");
    EXPECT_EQ(readFile(root() / "Library/Audio/boing.wav"), "sound");
    EXPECT_EQ(column(result["refused"_L1].toArray(), "file"), QStringList{in("notes.txt")});
    const Ended refused = run({u"save"_s, in("notes.txt")});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out.trimmed(), "Nothing to save.");
    EXPECT_TRUE(refused.err.contains("notes.txt: No shelf takes files of the kind “.txt”."));
}

TEST_F(SaveTest, DifferentPicturesOfOneNameAreNumbered) {
    const QJsonObject result =
        save({picture("x/Logo.png", Qt::red, {5, 5}), picture("y/Logo.png", Qt::blue, {50, 50}),
              picture("z/Logo.png", Qt::green, {500, 50}), u"--collection"_s, u" Logos /  Sports "_s});
    const fs::path folder = root() / "Library/Images/Logos/Sports";
    EXPECT_EQ(result["saved"_L1].toArray(),
              (QJsonArray{text(folder / "Logo.png"), text(folder / "Logo 2.png"), text(folder / "Logo 3.png")}));
    EXPECT_EQ(QImage(text(folder / "Logo 2.png")).size(), QSize(50, 50));
    EXPECT_EQ(count(save({in("y/Logo.png"), u"--collection"_s, u"Logos / Sports"_s}), "duplicates"), 1);
    EXPECT_EQ(count(save({in("y/Logo.png")}), "saved"), 1) << "another collection";
}

TEST_F(SaveTest, WalksAFolderOfAThousand) {
    const QString sample = picture("sample.png");
    for (int i = 0; i < 1000; ++i) {
        const auto folder = m_folder / ("many/" + std::to_string(i % 10) + "/" + std::to_string(i % 7));
        fs::create_directories(folder);
        fs::copy_file(sample.toStdString(), folder / (std::to_string(i) + ".png"));
    }
    fs::create_directory_symlink("..", m_folder / "many/0/loop");
    fs::create_symlink("nowhere", m_folder / "many/0/dangling.png");
    ASSERT_EQ(mkfifo((m_folder / "many/pipe.png").c_str(), 0600), 0);
    const QJsonObject result = save({in("many")});
    EXPECT_EQ(summary(result), u"Saved 1000"_s);
    EXPECT_EQ(count(result, "saved"), 1000);
    EXPECT_EQ(json({u"list"_s, u"images"_s}).array().size(), 1000);
}

TEST_F(SaveTest, KeepsFoldersAsCollections) {
    picture("Brand/one.png");
    picture("Brand/Sports/two.png");
    picture("Brand/Sports/Deep/three.png");
    const QJsonObject result = save({in("Brand/"), picture("loose.png"), u"--keep-folders"_s, u"--collection"_s, u"New"_s});
    EXPECT_EQ(count(result, "saved"), 4);
    const fs::path top = root() / "Library/Images/New";
    for (const char* name : {"loose.png", "Brand/one.png", "Brand/Sports/two.png", "Brand/Sports/Deep/three.png"})
        EXPECT_TRUE(fs::exists(top / name)) << name;
    EXPECT_EQ(count(save({in("Brand"), u"--keep-folders"_s, u"--collection"_s, u"New"_s}), "duplicates"), 3);
}

TEST_F(SaveTest, NamesTheFullDisk) {
    const SmallFileSystem full("tmpfs", "size=300k");
    if (!full.problem().empty()) GTEST_SKIP() << full.problem();
    writeFile(m_folder / "long.wav", std::string(400'000, 's').c_str());
    const Ended ended = run({u"--json"_s, u"--library"_s, text(full.path()), u"save"_s, picture("a.png"), in("long.wav")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(summary(ended.object()), u"Saved 1 · couldn't save 1"_s);
    EXPECT_TRUE(ended.err.contains("No space left on device")) << ended.err.toStdString();
}

TEST_F(SaveTest, StoresDocumentsAsBlocks) {
    writeFile(m_folder / "take.mov", "frames");
    writeFile(m_folder / "Intro.fcpxml",
              "<?xml version='1.0'?><!DOCTYPE fcpxml><fcpxml version='1.9'><resources><asset id='r1' uid='A' name='t'>"
              "<media-rep kind='original-media' src='take.mov'/></asset><media id='r2' name='Intro'><sequence "
              "duration='2s'><spine><asset-clip ref='r1' name='t'/></spine></sequence></media></resources>"
              "<ref-clip ref='r2' name='Intro' duration='2s'/></fcpxml>");
    EXPECT_EQ(summary(save({in("Intro.fcpxml")})), u"1 block to Blocks"_s);
    EXPECT_TRUE(fs::exists(root() / "Library/Blocks/Intro.fcpxml"));
    EXPECT_EQ(summary(save({in("Intro.fcpxml")})), u"1 already in your library"_s);
}

TEST_F(SaveTest, NamesStayInsideTheFolder) {
    const std::string longName = std::string(250, 'n') + ".png";
    fs::rename(picture("short.png").toStdString(), m_folder / longName);
    fs::rename(picture("plain.png").toStdString(), m_folder / "a\x1b[31m\nb.png");
    const Ended ended =
        run({u"save"_s, in(longName.c_str()), in("a\x1b[31m\nb.png"), picture("|?*.png"), picture("..png")});
    EXPECT_EQ(ended.status, 0) << ended.err.toStdString();
    const QStringList names = column(json({u"list"_s, u"images"_s}).array(), "name");
    EXPECT_THAT(names, testing::UnorderedElementsAre(QString(80, u'n'), u"a-[31m-b"_s, u"---"_s, u"-"_s));
    EXPECT_FALSE(run({u"list"_s, u"images"_s}).out.contains('\x1b'));
}

TEST_F(SaveTest, TheShelvesCanBeUnwritable) {
    const QString source = picture("a.png");
    m_beforeStart = heedPermissions;
    ASSERT_EQ(json({u"library"_s}).status, 0);
    fs::permissions(root() / "Library/Images", fs::perms::owner_read | fs::perms::owner_exec);
    const QJsonObject result = save({source}, 1);
    EXPECT_EQ(count(result, "failures"), 1);
    EXPECT_TRUE(fs::is_empty(root() / "Library/Images"));
    fs::permissions(root() / "Library/Images", fs::perms::owner_all);

    fs::permissions(source.toStdString(), fs::perms::none);
    EXPECT_EQ(count(save({source}, 1), "failures"), 1);
}

} // namespace

} // namespace quillary::test
