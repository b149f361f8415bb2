#include "drag/DragPicture.h"

#include <gtest/gtest.h>

using namespace quillary;

TEST(DragPicture, BeginsBeyondFourPoints) {
    struct Case {
        QPointF now;
        bool begins;
    };
    for (const auto& [now, begins] : {Case{{10, 10}, false},
                                      {{14, 10}, false},
                                      {{14.01, 10}, true},
                                      {{10, 5.9}, true},
                                      {{12.8, 12.8}, false},
                                      {{13, 13}, true}})
        EXPECT_EQ(exceedsDragThreshold({10, 10}, now), begins) << now.x() << ", " << now.y();
}

TEST(DragPicture, IsReducedAndNeverEnlarged) {
    struct Case {
        QSize pixels;
        qreal imageRatio;
        qreal screenRatio;
        QSizeF points;
    };
    for (const auto& [pixels, imageRatio, screenRatio, points] : {Case{{1000, 500}, 1, 1, {110, 55}},
                                                                  {{50, 20}, 1, 1, {50, 20}},
                                                                  {{50, 20}, 1, 2, {50, 20}},
                                                                  {{220, 440}, 2, 2, {55, 110}},
                                                                  {{4096, 4096}, 1, 1.5, {110, 110}},
                                                                  {{3000, 1}, 1, 1, {110, 1}}}) {
        QImage image(pixels, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.setDevicePixelRatio(imageRatio);
        const QImage picture = dragPicture(image, QStringLiteral("caption"), screenRatio);
        EXPECT_EQ(picture.deviceIndependentSize(), points) << pixels.width();
        EXPECT_EQ(picture.devicePixelRatio(), screenRatio);
        EXPECT_EQ(picture.pixelColor(picture.rect().center()), QColor(Qt::red));
    }
}

TEST(DragPicture, IsABadgeWithoutAnImage) {
    for (const std::optional<QImage>& none : {std::optional<QImage>(), std::optional(QImage())}) {
        const QImage small = dragPicture(none, QStringLiteral("a"), 2);
        EXPECT_EQ(small.height(), 48);
        EXPECT_GT(small.width(), 40);
        EXPECT_LT(small.width(), 80);
        EXPECT_EQ(small.pixelColor(0, 0).alpha(), 0) << "rounded corner";
        EXPECT_EQ(small.pixelColor(20, 4).alpha(), 191) << "black at three quarters";
    }
    const QImage wide = dragPicture({}, QString(200, u'W'), 1);
    EXPECT_EQ(wide.size(), QSize(220, 24));
    for (int x = 211; x < 220; ++x)
        for (int y = 6; y < 18; ++y) EXPECT_EQ(wide.pixelColor(x, y).lightness(), 0) << "the caption is cut off";
}

TEST(DragPicture, IsCentredOnThePress) {
    EXPECT_EQ(dragHotSpot({30, 30}, {30, 30}, {110, 55}), QPointF(55, 27.5));
    EXPECT_EQ(dragHotSpot({30, 30}, {35, 28}, {110, 55}), QPointF(60, 25.5));
}
