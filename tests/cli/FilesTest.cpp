#include "cli/ProgramTest.h"

namespace quillary::test {

namespace {

namespace fs = std::filesystem;

class FilesTest : public ProgramTest {
protected:
    /// Where the files that were done are now.
    QStringList done(const QString& command, const QStringList& words, int status = 0) const {
        const Ended ended = json(QStringList{command} + words);
        EXPECT_EQ(ended.status, status) << ended.err.toStdString();
        return column(ended.array(), "path");
    }

    QStringList favorites() const { return column(json({u"list"_s, u"images"_s, u"--favorites"_s}).array(), "path"); }

    QString image(const char* name) const { return text(root() / "Library/Images" / name); }
};

TEST_F(FilesTest, StarsFollowMovesAndRenames) {
    const QString one = saved("one.png");
    EXPECT_EQ(done(u"favorite"_s, {one}), QStringList{one});
    const QString moved = image("A/B/one.png");
    EXPECT_EQ(done(u"move"_s, {one, u"--collection"_s, u"A / B"_s}), QStringList{moved});
    const QString renamed = image("A/B/two.png");
    EXPECT_EQ(done(u"rename"_s, {moved, u"two"_s}), QStringList{renamed});
    EXPECT_EQ(favorites(), QStringList{renamed});
    const QString back = image("two.png");
    EXPECT_EQ(done(u"move"_s, {renamed, u"--collection"_s, QString()}), QStringList{back});
    EXPECT_EQ(favorites(), QStringList{back});
    EXPECT_EQ(done(u"favorite"_s, {back, u"--off"_s}), QStringList{back});
    EXPECT_TRUE(favorites().isEmpty());
}

TEST_F(FilesTest, OnlyFilesOfTheLibraryAreTouched) {
    const QString inside = saved("inside.png");
    const QString outside = picture("outside.png");
    const QString poster = text(root() / "Library/Blocks/title.png");
    writeFile(poster.toStdString(), "goes along with its block alone");
    for (const QString& stranger : {outside, text(root() / "Library/Images/../../../../../outside.png"), poster}) {
        EXPECT_FALSE(json({u"rename"_s, stranger, u"x"_s}).error().isEmpty()) << stranger.toStdString();
        EXPECT_TRUE(done(u"move"_s, {stranger, u"--collection"_s, u"A"_s}, 1).isEmpty()) << stranger.toStdString();
        EXPECT_TRUE(done(u"delete"_s, {stranger}, 1).isEmpty()) << stranger.toStdString();
        if (stranger != poster) {
            EXPECT_TRUE(done(u"favorite"_s, {stranger}, 1).isEmpty()) << stranger.toStdString();
        }
    }
    EXPECT_EQ(done(u"delete"_s, {outside, inside, image("none.png")}, 1), QStringList{inside});
    EXPECT_TRUE(fs::exists(outside.toStdString()) && fs::exists(poster.toStdString()));
    EXPECT_FALSE(fs::exists(inside.toStdString()));
}

TEST_F(FilesTest, TheTrashKeepsWhatIsTrashed) {
    const QString one = saved("one.png");
    const fs::path trash = m_folder / "home/data/Trash";
    EXPECT_EQ(done(u"trash"_s, {one, image("none.png"), in("outside.png")}, 1),
              QStringList{text(trash / "files/one.png")});
    EXPECT_FALSE(fs::exists(one.toStdString()));
    EXPECT_THAT(readFile(trash / "info/one.png.trashinfo"), testing::HasSubstr(one.toStdString()));
}

TEST_F(FilesTest, RecentKeepsWhatIsAllowed) {
    const auto add = [&](const char* name, QColor colour) {
        return json({u"recent"_s, u"add"_s, picture(name, colour)}).object()["path"_L1].toString();
    };
    const fs::path recent = root() / "Recent";
    EXPECT_EQ(add("a.png", Qt::red), text(recent / "a.png"));
    EXPECT_EQ(add("a.png", Qt::blue), text(recent / "a 2.png"));
    EXPECT_EQ(add("b.png", Qt::red), text(recent / "b.png"));
    const auto prune = [&] { return json({u"recent"_s, u"prune"_s}).object()["deleted"_L1].toInt(-1); };
    EXPECT_EQ(prune(), 0);
    fs::last_write_time(recent / "a.png", fs::file_time_type::clock::now() - std::chrono::hours(2));
    run({u"settings"_s, u"recentLimit"_s, u"2"_s});
    EXPECT_EQ(prune(), 1);
    EXPECT_FALSE(fs::exists(recent / "a.png"));
    fs::last_write_time(recent / "a 2.png", fs::file_time_type::clock::now() - std::chrono::hours(1));
    EXPECT_EQ(add("c.png", Qt::green), text(recent / "c.png"));
    EXPECT_EQ(column(json({u"list"_s, u"recent"_s}).array(), "name"), (QStringList{u"c"_s, u"b"_s}));
}

} // namespace

} // namespace quillary::test
