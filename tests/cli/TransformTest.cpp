#include "cli/ProgramTest.h"

namespace quillary::test {

namespace {

class TransformTest : public ProgramTest {};

TEST_F(TransformTest, RewritesInPlaceAndGoesOn) {
    const QString wide = picture("wide.png", Qt::red, {300, 200});
    writeFile(m_folder / "not.svg", "<html/>");
    const Ended mixed = json({u"transform"_s, u"rotateLeft"_s, wide, in("not.svg"), in("absent.png")});
    EXPECT_EQ(mixed.status, 1);
    EXPECT_EQ(mixed.object()["rewritten"_L1].toArray(), QJsonArray{wide});
    EXPECT_EQ(mixed.object()["untouched"_L1].toArray(), (QJsonArray{in("not.svg"), in("absent.png")}));
    EXPECT_TRUE(mixed.err.contains("not.svg” could not be rewritten and is as it was: It is no picture"))
        << mixed.err.toStdString();
    EXPECT_TRUE(mixed.err.contains("absent.png” could not be rewritten and is as it was: No such file"))
        << mixed.err.toStdString();
    EXPECT_EQ(QImage(wide).size(), QSize(200, 300));
    EXPECT_EQ(json({u"transform"_s, u"flipVertical"_s, wide}).status, 0);
    EXPECT_EQ(run({u"transform"_s, u"sideways"_s, wide}).status, 2);
}

TEST_F(TransformTest, CopiesALibrary) {
    saved("one.png");
    saved("two.png", u"Logos"_s);
    ASSERT_EQ(run({u"recent"_s, u"add"_s, picture("three.png")}).status, 0);
    const auto copied = [&](QStringList words) {
        return json(QStringList{u"library"_s, u"copy"_s, text(root())} + words).object();
    };
    EXPECT_EQ(copied({in("new"), u"--shelves"_s, u"recent,audio"_s}),
              (QJsonObject{{"copied"_L1, 1}, {"skipped"_L1, 0}}));
    EXPECT_EQ(copied({in("new")}), (QJsonObject{{"copied"_L1, 2}, {"skipped"_L1, 1}}));
    EXPECT_EQ(copied({in("new/Quillary")}), (QJsonObject{{"copied"_L1, 0}, {"skipped"_L1, 3}}));
    EXPECT_TRUE(std::filesystem::exists(m_folder / "new/Quillary/Library/Images/Logos/two.png"));
    EXPECT_EQ(run({u"library"_s, u"copy"_s, in("absent"), in("new")}).status, 1);
    writeFile(m_folder / "blocked/Quillary/Library/Images/Logos", "a file where a folder should be");
    const Ended blocked = run({u"library"_s, u"copy"_s, text(root()), in("blocked")});
    EXPECT_EQ(blocked.status, 1);
    EXPECT_TRUE(blocked.err.contains("“Library/Images/Logos/two.png” could not be copied: Not a directory"))
        << blocked.err.toStdString();
    EXPECT_EQ(run({u"library"_s, u"copy"_s, in("new"), in("other"), u"--shelves"_s, u"pictures"_s}).status, 2);
}

} // namespace

} // namespace quillary::test
