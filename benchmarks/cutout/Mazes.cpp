#include "cutout/Mazes.h"

#include <QRect>
#include <QRgb>
#include <random>

namespace quillary::benchmark::Mazes {

namespace {

constexpr QRgb black = 0xff000000;
constexpr int pitch = 4;

QImage white(int side) {
    QImage image(side, side, QImage::Format_RGBA8888);
    image.fill(Qt::white);
    return image;
}

void wall(QImage& image, const QRect& area) {
    for (int y = area.top(); y <= area.bottom(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = area.left(); x <= area.right(); ++x) row[x] = black;
    }
}

} // namespace

QImage comb(int side) {
    QImage image = white(side);
    for (int x = 1; x + pitch < side; x += pitch) wall(image, QRect(x, 1, pitch - 1, side - 2));
    wall(image, QRect(1, side - 2, side - 2, 1));
    return image;
}

QImage serpentine(int side) {
    QImage image = white(side);
    wall(image, QRect(1, 1, side - 2, 1));
    wall(image, QRect(1, side - 2, side - 2, 1));
    wall(image, QRect(side - pitch, 1, pitch - 1, side - 2));
    bool gapBelow = true;
    for (int x = 1; x + pitch < side; x += pitch, gapBelow = !gapBelow)
        wall(image, QRect(x, gapBelow ? 2 : 3, pitch - 1, side - 5));
    wall(image, QRect(1, 1, pitch - 1, side - 2));
    auto* top = reinterpret_cast<QRgb*>(image.scanLine(1));
    top[pitch] = 0xffffffff;
    return image;
}

QImage spiral(int side) {
    QImage image = white(side);
    QRect ring(2, 2, side - 4, side - 4);
    while (ring.width() > 2 * pitch && ring.height() > 2 * pitch) {
        wall(image, QRect(ring.left(), ring.top(), ring.width(), 1));
        wall(image, QRect(ring.right(), ring.top(), 1, ring.height()));
        wall(image, QRect(ring.left(), ring.bottom(), ring.width(), 1));
        wall(image, QRect(ring.left(), ring.top() + 2, 1, ring.height() - 2));
        // Closes the ring of corridor between this wall and the next, so that there is one way only.
        wall(image, QRect(ring.left() + 1, ring.top() + 2, 1, 1));
        ring.adjust(2, 2, -2, -2);
    }
    return image;
}

QImage randomWalls(int side) {
    QImage image = white(side);
    std::mt19937 random(1);
    for (int y = 1; y < side - 1; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 1; x < side - 1; ++x)
            if (random() % 5 < 2) row[x] = black;
    }
    return image;
}

} // namespace quillary::benchmark::Mazes
