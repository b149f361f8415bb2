#include "cutout/BackgroundRemover.h"

#include "cutout/TestPictures.h"
#include "cutout/TinyModel.h"
#include "support/TemporaryFolder.h"

#include <QPainter>
#include <functional>
#include <gtest/gtest.h>

namespace quillary {

namespace {

using namespace test;

/// A background of soft blots.
QImage ground() {
    QImage image = TestPictures::photo(480, 360, 3)
                       .scaled(20, 15)
                       .scaled(480, 360, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter(&image).fillRect(image.rect(), QColor(60, 80, 110, 190));
    return image;
}

/// A picture with something drawn on it in a light colour, and the same thing in white on black.
struct Scene {
    QImage picture = ground();
    QImage truth = QImage(480, 360, QImage::Format_Grayscale8);

    explicit Scene(const std::function<void(QPainter&)>& draw) {
        truth.fill(0);
        for (auto& [image, color] : {std::pair(&picture, QColor(230, 210, 110)), {&truth, QColor(Qt::white)}}) {
            QPainter painter(image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            draw(painter);
        }
    }
};

double overlap(const QImage& cutOut, const QImage& truth) {
    double both = 0;
    double either = 0;
    for (int y = 0; y < truth.height(); ++y)
        for (int x = 0; x < truth.width(); ++x) {
            const bool found = cutOut.constScanLine(y)[x * 4 + 3] >= 128;
            const bool right = truth.constScanLine(y)[x] >= 128;
            both += found && right;
            either += found || right;
        }
    return both / either;
}

/// Says what it is told to say.
class GivenMasker : public SubjectMasker {
public:
    using Answer = std::expected<std::optional<QImage>, QString>;
    explicit GivenMasker(Answer answer) : m_answer(std::move(answer)) {}
    Answer mask(const QImage&, std::stop_token) override { return m_answer; }

private:
    Answer m_answer;
};

} // namespace

TEST(BackgroundRemover, KeepsTheSubject) {
    const std::pair<const char*, std::function<void(QPainter&)>> subjects[] = {
        {"disc", [](QPainter& p) { p.drawEllipse(QPoint(250, 170), 90, 110); }},
        {"two",
         [](QPainter& p) {
             p.drawEllipse(QPoint(140, 170), 60, 80);
             p.drawRect(310, 120, 90, 120);
         }},
        {"cut off below",
         [](QPainter& p) {
             p.drawEllipse(QPoint(240, 130), 60, 70);
             p.drawRoundedRect(150, 190, 180, 260, 40, 40);
         }},
        {"with a hole", [](QPainter& p) {
             p.setClipRegion(QRegion(0, 0, 480, 360) - QRegion(190, 130, 100, 90, QRegion::Ellipse));
             p.drawEllipse(QPoint(240, 175), 130, 120);
         }}};
    for (const auto& [name, draw] : subjects) {
        const Scene scene(draw);
        const auto removed = BackgroundRemover::remove(scene.picture);
        ASSERT_TRUE(removed) << name << ": " << removed.error().description().toStdString();
        EXPECT_EQ(removed->image.size(), scene.picture.size());
        EXPECT_EQ(removed->image.format(), QImage::Format_RGBA8888_Premultiplied);
        EXPECT_GT(overlap(removed->image, scene.truth), 0.95) << name;
        const auto again = BackgroundRemover::remove(scene.picture);
        EXPECT_EQ(removed->image, again->image) << name;
    }
}

TEST(BackgroundRemover, SeesNoSubjectWhereThereIsNone) {
    QImage gradient(400, 300, QImage::Format_RGB32);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x) gradient.setPixel(x, y, qRgb(x / 2, y / 2, 120));
    QImage halves = TestPictures::filled(400, 300, QColor(90, 140, 220));
    QPainter(&halves).fillRect(0, 170, 400, 130, QColor(70, 110, 40));
    const std::pair<const char*, QImage> pictures[] = {{"flat", TestPictures::filled(400, 300, QColor(30, 90, 160))},
                                                       {"gradient", gradient},
                                                       {"noise", TestPictures::walls(400, 300, 0.5, 3)},
                                                       {"sky and ground", halves},
                                                       {"transparent", TestPictures::filled(400, 300, Qt::transparent)},
                                                       {"one pixel", TestPictures::filled(1, 1, Qt::red)},
                                                       {"a line", TestPictures::photo(1, 8192, 3)}};
    for (const auto& [name, picture] : pictures) {
        const auto removed = BackgroundRemover::remove(picture);
        ASSERT_FALSE(removed) << name;
        EXPECT_EQ(removed.error(), BackgroundRemovalError::noSubjectFound()) << name;
    }
}

TEST(BackgroundRemover, BlendsWithTheMask) {
    const QImage picture = TestPictures::filled(3, 1, QColor(200, 100, 50));
    QImage mask(3, 1, QImage::Format_Grayscale8);
    mask.scanLine(0)[0] = 0;
    mask.scanLine(0)[1] = 128;
    mask.scanLine(0)[2] = 255;
    GivenMasker masker{std::optional(mask)};
    const auto removed = BackgroundRemover::remove(picture, masker);
    ASSERT_TRUE(removed);
    const QByteArray expected("\0\0\0\0\x64\x32\x19\x80\xc8\x64\x32\xff", 12);
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(removed->constScanLine(0)), 12), expected);
}

TEST(BackgroundRemover, TellsWhyThereIsNoResult) {
    using Error = BackgroundRemovalError;
    const QImage picture = TestPictures::photo(30, 20, 1);
    const struct {
        GivenMasker::Answer answer;
        Error error;
    } cases[] = {{std::nullopt, Error::noSubjectFound()},
                 {std::unexpected(QStringLiteral("why")), Error::failed(QStringLiteral("why"))},
                 {QImage(3, 3, QImage::Format_Grayscale8), Error::failed(QStringLiteral("Could not apply the mask."))}};
    for (const auto& [answer, error] : cases) {
        GivenMasker masker(answer);
        EXPECT_EQ(BackgroundRemover::remove(picture, masker).error(), error);
    }
    EXPECT_EQ(BackgroundRemover::remove(QImage()).error(), Error::noImage());
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(BackgroundRemover::remove(picture, {}, stop.get_token()).error(), Error::stopped());
}

TEST(BackgroundRemover, RunsAModelOfTheUser) {
    const TemporaryFolder folder;
    const auto draw = [](QPainter& p) { p.drawEllipse(QPoint(250, 170), 90, 110); };
    Scene scene(draw);
    QPainter painter(&scene.picture);
    painter.fillRect(scene.picture.rect(), QColor(20, 200, 40));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(220, 30, 40));
    draw(painter);
    painter.end();
    const QByteArray model = tinyModel(4, -4);
    writeFile(folder / "red.onnx", model);
    const auto removed = BackgroundRemover::remove(scene.picture, folder / "red.onnx");
    ASSERT_TRUE(removed) << removed.error().description().toStdString();
    EXPECT_EQ(removed->note, QString());
    EXPECT_GT(overlap(removed->image, scene.truth), 0.95);

    const auto none = BackgroundRemover::remove(TestPictures::filled(64, 64, QColor(20, 200, 40)), folder / "red.onnx");
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error(), BackgroundRemovalError::noSubjectFound());
}

TEST(BackgroundRemover, PassesOverAModelOfNoUse) {
    const TemporaryFolder folder;
    writeFile(folder / "broken.onnx", "this is no model");
    writeFile(folder / "empty.onnx", "");
    const Scene scene([](QPainter& p) { p.drawEllipse(QPoint(250, 170), 90, 110); });
    for (const char* name : {"broken.onnx", "empty.onnx", "missing.onnx"}) {
        const auto removed = BackgroundRemover::remove(scene.picture, folder / name);
        ASSERT_TRUE(removed) << name;
        EXPECT_GT(overlap(removed->image, scene.truth), 0.95);
        const QString start = QStringLiteral("The subject model “%1” cannot be used: ").arg(QLatin1String(name));
        EXPECT_TRUE(removed->note.startsWith(start)) << removed->note.toStdString();
    }
}

} // namespace quillary
