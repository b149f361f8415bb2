#include "cutout/TouchUp.h"

#include "cutout/MatteRefiner.h"
#include "cutout/SolidBackgroundRemover.h"
#include "cutout/TestPictures.h"

#include <QPainter>
#include <cmath>
#include <gtest/gtest.h>

namespace quillary {

namespace {

using namespace test;

/// A disc drawn over a ground with smooth edges.
QImage disc(QColor ink, QColor ground, QSize size = {160, 120}) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(ground);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ink);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(size.width() / 2.0, size.height() / 2.0), 41.3, 41.3);
    return picture;
}

QImage cut(const QImage& picture) {
    return SolidBackgroundRemover::remove(picture, {}, SolidBackgroundRemover::Colors::withinAlpha)->image;
}

int distance(QRgb a, QColor b) {
    return std::max({std::abs(qRed(a) - b.red()), std::abs(qGreen(a) - b.green()), std::abs(qBlue(a) - b.blue())});
}

/// The largest distance from `ink` among the pixels that are half there; those hardly there have no colour to speak of.
int worstRim(const QImage& cutout, QColor ink) {
    int worst = -1;
    for (int y = 0; y < cutout.height(); ++y)
        for (int x = 0; x < cutout.width(); ++x) {
            const QRgb pixel = qUnpremultiply(cutout.pixel(x, y));
            if (qAlpha(pixel) > 16 && qAlpha(pixel) < 200) worst = std::max(worst, distance(pixel, ink));
        }
    return worst;
}

} // namespace

TEST(TouchUp, ChangesNothingUnlessAsked) {
    const QImage picture = disc(QColor(200, 30, 40), Qt::white);
    const QImage raw = cut(picture);
    EXPECT_EQ(TouchUp::base(picture, raw, Cutout::Method::solid, {}).cacheKey(), raw.cacheKey());
    EXPECT_EQ(TouchUp::finish(picture, raw, {}, {}).image.cacheKey(), raw.cacheKey());
    const TouchUp::Result refined = TouchUp::finish(picture, raw, 0.4, {});
    EXPECT_EQ(refined.image, MatteRefiner::refine(raw, 0.4));
    EXPECT_EQ(refined.frame, picture.rect());
}

TEST(TouchUp, CleansTheEdgeOnBothSidesOfARefinement) {
    const struct {
        QColor ink, ground;
    } pairs[] = {
        {QColor(200, 30, 40), Qt::white}, {QColor(20, 20, 20), QColor(0, 177, 64)}, {Qt::white, QColor(10, 10, 60)}};
    for (const auto& [ink, ground] : pairs) {
        const QImage picture = disc(ink, ground);
        const QImage raw = cut(picture);
        for (const double amount : {0.0, 0.1, 0.3, 1.0}) {
            const QImage plain = MatteRefiner::refine(raw, amount);
            const QImage clean = TouchUp::finish(picture, raw, amount, {.cleanEdge = true}).image;
            const std::string at = ink.name().toStdString() + " at " + std::to_string(amount);
            EXPECT_LE(worstRim(clean, ink), 16) << at;
            for (int y = 0; y < plain.height(); ++y)
                for (int x = 0; x < plain.width(); ++x) {
                    const QRgb before = plain.pixel(x, y);
                    const QRgb after = clean.pixel(x, y);
                    ASSERT_EQ(qAlpha(before), qAlpha(after)) << at;
                    if (qAlpha(before) == 255 || qAlpha(before) == 0) {
                        ASSERT_EQ(before, after) << at;
                    }
                }
        }
        EXPECT_GT(worstRim(raw, ink), 50) << "there was something to clean";
    }
}

TEST(TouchUp, LeavesAnEdgeAloneThatHasNoColoursToTellApart) {
    const QImage photo = TestPictures::photo(90, 70, 4);
    QImage half = photo.convertToFormat(QImage::Format_RGBA8888);
    for (int y = 0; y < half.height(); ++y)
        for (int x = 0; x < half.width(); ++x) half.setPixelColor(x, y, QColor(90, 90, 90, 128));
    const QImage raw = half.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    EXPECT_EQ(TouchUp::cleanEdge(photo, raw, raw), raw) << "nothing opaque and nothing removed";
    EXPECT_EQ(TouchUp::cleanEdge(TestPictures::photo(9, 7, 4), raw, raw), raw) << "a picture of another size";
    const QImage pixel = TestPictures::filled(1, 1, Qt::white);
    EXPECT_EQ(TouchUp::finish(pixel, cut(pixel), 0.3, {true, true, true}).image.size(), QSize(1, 1));
}

TEST(TouchUp, ClearsEnclosedAreasButNoSpecks) {
    QImage picture = disc(Qt::black, Qt::white);
    const auto punch = [&](QRect hole) { QPainter(&picture).fillRect(hole, Qt::white); };
    punch({70, 50, 20, 20});
    punch({60, 40, 2, 2});
    punch({50, 60, 1, 12});
    const QImage raw = cut(picture);
    const QImage cleared = TouchUp::base(picture, raw, Cutout::Method::solid, {.enclosed = true});
    EXPECT_EQ(qAlpha(raw.pixel(80, 60)), 255);
    for (const QPoint corner : {QPoint(70, 50), QPoint(89, 69)}) EXPECT_EQ(qAlpha(cleared.pixel(corner)), 0);
    for (const QPoint kept : {QPoint(69, 49), QPoint(90, 69), QPoint(61, 41), QPoint(50, 66)})
        EXPECT_EQ(cleared.pixel(kept), raw.pixel(kept));
    EXPECT_EQ(TouchUp::base(picture, raw, Cutout::Method::subject, {.enclosed = true}), raw);

    // The words of a row are 64 pixels wide: holes that lie across them and end with them.
    for (int left = 55; left < 75; ++left) {
        QImage wide = TestPictures::filled(256, 15, Qt::white);
        QPainter painter(&wide);
        painter.fillRect(QRect(1, 1, 254, 13), Qt::black);
        painter.fillRect(QRect(left, 6, 64, 3), Qt::white);
        painter.end();
        const auto holed = SolidBackgroundRemover::remove(wide, {}, SolidBackgroundRemover::Colors::withinAlpha,
                                                          SolidBackgroundRemover::Reach::enclosedAreas);
        EXPECT_EQ(holed->removedFraction, (256 * 15 - 254 * 13 + 64 * 3) / (256.0 * 15)) << left;
    }
}

TEST(TouchUp, TrimsToWhatCanBeSeen) {
    const QImage picture = disc(Qt::black, Qt::white);
    const QImage raw = cut(picture);
    const TouchUp::Result trimmed = TouchUp::finish(picture, raw, {}, {.trim = true});
    EXPECT_EQ(trimmed.frame, QRect(38, 18, 84, 84));
    EXPECT_EQ(trimmed.image, raw.copy(trimmed.frame));
    QImage nothing(30, 20, QImage::Format_RGBA8888_Premultiplied);
    nothing.fill(Qt::transparent);
    EXPECT_EQ(TouchUp::visibleFrame(nothing), nothing.rect());
    nothing.setPixelColor(29, 0, QColor(0, 0, 0, 1));
    EXPECT_EQ(TouchUp::visibleFrame(nothing), QRect(29, 0, 1, 1));
}

} // namespace quillary
