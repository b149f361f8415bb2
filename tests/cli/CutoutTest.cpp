#include "cli/ProgramTest.h"

#include <QImageReader>
#include <QPainter>
#include <sys/resource.h>

namespace quillary::test {

namespace {

class CutoutTest : public ProgramTest {
protected:
    /// A disc of that colour on white.
    QString disc(const char* name, int side, QColor colour = Qt::black) const {
        QImage image(side, side, QImage::Format_RGB888);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(side / 4.0, side / 4.0, side / 2.0, side / 2.0));
        painter.end();
        EXPECT_TRUE(image.save(in(name)));
        return in(name);
    }
    Ended cut(const QString& file, const QStringList& more = {}) const {
        return json(QStringList{u"cutout"_s, file, u"--output"_s, in("out.png")} + more);
    }
    QImage out() const { return QImage(in("out.png")); }
};

TEST_F(CutoutTest, TellsHowAndWritesThePicture) {
    const Ended flat = cut(disc("logo.png", 100));
    ASSERT_EQ(flat.status, 0) << flat.err.toStdString();
    EXPECT_EQ(flat.object().keys(), u"method output pixelHeight pixelWidth removedFraction"_s.split(u' '));
    EXPECT_EQ(flat.object()["method"_L1], u"Flat background"_s);
    EXPECT_NEAR(flat.object()["removedFraction"_L1].toDouble(), 0.8, 0.01);
    EXPECT_EQ(flat.object()["pixelWidth"_L1], 100);
    EXPECT_EQ(flat.object()["output"_L1], in("out.png"));
    const QImage raw = out();
    EXPECT_EQ(qAlpha(raw.pixel(0, 0)), 0);
    EXPECT_EQ(raw.pixelColor(50, 50), QColor(Qt::black));

    cut(in("logo.png"), {u"--edge"_s, u"0"_s});
    EXPECT_EQ(out(), raw) << "an edge of 0 is the unrefined cut-out";
    cut(in("logo.png"), {u"--edge"_s, u"1"_s});
    EXPECT_EQ(qAlpha(raw.pixel(50, 27)), 255);
    EXPECT_EQ(qAlpha(out().pixel(50, 27)), 0);

    const Ended subject = cut(in("logo.png"), {u"--method"_s, u"subject"_s});
    EXPECT_EQ(subject.object()["method"_L1], u"Subject"_s);
    EXPECT_TRUE(subject.object()["removedFraction"_L1].isNull());
}

TEST_F(CutoutTest, TouchesUp) {
    disc("ring.png", 100, Qt::red);
    QImage ring(in("ring.png"));
    QPainter(&ring).fillRect(QRect(45, 45, 10, 10), Qt::white);
    ASSERT_TRUE(ring.save(in("ring.png")));
    const Ended plain = cut(in("ring.png"));
    const Ended touched = cut(in("ring.png"), {u"--clean-edge"_s, u"--enclosed"_s, u"--trim"_s});
    EXPECT_LE(touched.object()["pixelWidth"_L1].toInt(), 50);
    EXPECT_EQ(touched.object()["removedFraction"_L1], plain.object()["removedFraction"_L1]);
    EXPECT_EQ(out().size(),
              QSize(touched.object()["pixelWidth"_L1].toInt(), touched.object()["pixelHeight"_L1].toInt()));
    EXPECT_EQ(qAlpha(out().pixel(25, 25)), 0);
    EXPECT_EQ(qAlpha(out().pixel(10, 25)), 255);
    const Ended subject = cut(disc("disc.png", 90), {u"--method"_s, u"subject"_s, u"--enclosed"_s});
    EXPECT_EQ(subject.status, 0);
    EXPECT_NE(subject.err.indexOf("only a flat background has"), -1);
}

TEST_F(CutoutTest, WithoutASubjectItFailsWithASuggestion) {
    const Ended none = cut(picture("flat.png", Qt::blue, {64, 40}));
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.error(), u"No subject found to cut out."_s);
    EXPECT_EQ(
        none.object()["suggestion"_L1],
        u"This works on a subject against a background — a logo, a product, a person. A flat graphic that already "
        u"fills the frame has nothing to separate."_s);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "out.png"));
    EXPECT_EQ(cut(in("flat.png"), {u"--method"_s, u"solid"_s}).object()["removedFraction"_L1], 1.0);
    EXPECT_EQ(qAlpha(out().pixel(5, 5)), 0);
    EXPECT_EQ(cut(in("none.png")).error(), u"Could not read none.png."_s);
}

TEST_F(CutoutTest, ALargePictureTakesLittleMoreThanItsPixels) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "a sanitizer takes terabytes of address space";
#endif
    constexpr int side = 8192;
    disc("large.jpg", side);
    // The pixels four times, and the libraries.
    m_beforeStart = [] {
        const rlimit limit{(4ULL * side * side * 4) + (700ULL << 20), RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
    };
    const Ended ended = cut(in("large.jpg"), {u"--edge"_s, u"0.3"_s});
    EXPECT_EQ(ended.status, 0) << ended.err.toStdString();
    EXPECT_EQ(QImageReader(in("out.png")).size(), QSize(side, side));
}

TEST_F(CutoutTest, ABrokenModelIsToldAndPassedOver) {
    writeFile(m_folder / "broken.onnx", "no network");
    EXPECT_EQ(json(u"settings subjectModel broken.onnx"_s.split(u' ')).object()["subjectModel"_L1], in("broken.onnx"));
    const Ended ended = cut(disc("scene.png", 160, QColor(200, 60, 40)), {u"--method"_s, u"subject"_s});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.object()["method"_L1], u"Subject"_s);
    EXPECT_THAT(ended.err.toStdString(), testing::HasSubstr("The subject model “broken.onnx” cannot be used:"));
    EXPECT_TRUE(json({u"settings"_s, u"subjectModel"_s, QString()}).object()["subjectModel"_L1].isNull());
    EXPECT_EQ(cut(in("scene.png"), {u"--method"_s, u"subject"_s}).err, QByteArray());
}

TEST_F(CutoutTest, RecentKeepsWhatADragWouldCarry) {
    const Ended ended = json({u"recent"_s, u"add"_s, disc("logo.png", 100), u"--cutout"_s, u"auto"_s});
    ASSERT_EQ(ended.status, 0) << ended.err.toStdString();
    EXPECT_EQ(ended.object()["path"_L1].toString(), text(root() / "Recent/logo cutout.png"));
    cut(in("logo.png"), {u"--edge"_s, u"0.3"_s});
    EXPECT_EQ(QImage(ended.object()["path"_L1].toString()), out());
}

} // namespace

} // namespace quillary::test
