#include "cutout/TestPictures.h"

#include <QColor>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <random>

namespace quillary::test::TestPictures {

namespace {

template <typename ColorAt>
QImage painted(int width, int height, const ColorAt& colorAt) {
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) image.setPixel(x, y, colorAt(x, y));
    return image;
}

QRgb grey(bool light) {
    return light ? 0xffffffff : 0xff000000;
}

int level(double value) {
    return static_cast<int>(std::clamp(value, 0.0, 255.0));
}

} // namespace

QImage filled(int width, int height, QColor color) {
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(color);
    return image;
}

QImage spiral(int width, int height) {
    return painted(width, height, [&](int x, int y) {
        const int ring = std::min({x, y, width - 1 - x, height - 1 - y});
        // A gap in each wall, on alternating sides, and a bar beside it: the way leads round every ring.
        const bool gap = x == ring && y == ring + 2 + ring % 4;
        const bool bar = ring % 2 == 0 && ring > 0 && x == ring && y == ring + 4;
        return grey((ring % 2 == 0 && !bar) || gap);
    });
}

QImage comb(int width, int height) {
    return painted(width, height, [&](int x, int y) { return grey(y == 0 || (x % 3 == 0 && y < height - 2)); });
}

QImage walls(int width, int height, double share, unsigned seed) {
    std::mt19937 random(seed);
    std::bernoulli_distribution isWall(share);
    return painted(width, height, [&](int x, int y) {
        const bool border = x == 0 || y == 0 || x == width - 1 || y == height - 1;
        return grey(!isWall(random) || border);
    });
}

QImage photo(int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> grain(-12, 12);
    return painted(width, height, [&](int x, int y) {
        const int g = grain(random);
        return qRgb(level(128 + 90 * std::sin(x * 0.05) + g), level(120 + 80 * std::cos(y * 0.04 + x * 0.01) + g),
                    level(90 + 60 * std::sin((x + y) * 0.03) + g));
    });
}

QImage blots(int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> phase(0, 6.3);
    const double a = phase(random);
    const double b = phase(random);
    return painted(width, height, [&](int x, int y) {
        const double depth = std::max(0.0, std::sin(x * 0.11 + a) * std::sin(y * 0.13 + b)) * 160;
        const double noise = static_cast<double>(random() % 7);
        return qRgb(level(200 - depth + noise), level(180 - depth * 0.6), level(90 + depth * 0.8 - noise));
    });
}

QImage withAlpha(QImage image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.scanLine(y)[x * 4 + 3] = static_cast<uchar>((x * 7 + y * 3) % 256);
    return image;
}

} // namespace quillary::test::TestPictures
