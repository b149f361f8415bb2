#include "drag/DragPicture.h"

#include <gtest/gtest.h>

using namespace quillary;

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

TEST(DragPicture, KeepsItsColoursWhereEdgesAreHard) {
    QImage soft(3, 1, QImage::Format_ARGB32_Premultiplied);
    const QColor red(200, 40, 20);
    const int alphas[] = {100, 140, 255};
    for (int x = 0; x < 3; ++x) soft.setPixelColor(x, 0, QColor(red.red(), red.green(), red.blue(), alphas[x]));
    soft.setDevicePixelRatio(2);
    const QImage hard = withHardEdges(soft);
    EXPECT_EQ(hard.pixelColor(0, 0).alpha(), 0);
    EXPECT_NEAR(hard.pixelColor(1, 0).red(), red.red(), 2);
    EXPECT_EQ(hard.pixelColor(1, 0).alpha(), 255);
    EXPECT_EQ(hard.pixelColor(2, 0), red);
    EXPECT_EQ(hard.devicePixelRatio(), 2);
}

TEST(DragPicture, IsABadgeWithoutAnImage) {
    EXPECT_EQ(dragPicture(QImage(), QStringLiteral("a"), 2).height(), 48);
    const QImage wide = dragPicture({}, QString(200, u'W'), 1);
    EXPECT_EQ(wide.size(), QSize(220, 24));
    for (int x = 211; x < 220; ++x)
        for (int y = 6; y < 18; ++y) EXPECT_EQ(wide.pixelColor(x, y).lightness(), 0) << "the caption is cut off";
}
