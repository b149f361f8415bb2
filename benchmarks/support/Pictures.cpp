#include "support/Pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace quillary::benchmark::Pictures {

namespace {

/// A square of noise with structure at every scale: random values on lattices of all sizes, interpolated and added,
/// almost as strong in the fine ones as in the coarse. Mean 0, standard deviation 1.
std::vector<float> fractal(int side, unsigned seed) {
    std::vector<float> sum(static_cast<std::size_t>(side) * side, 0.0F);
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> uniform(-1, 1);
    float weight = 1;
    for (int cells = 2; cells <= side; cells *= 2, weight *= 0.9F) {
        const int points = cells + 1;
        std::vector<float> lattice(static_cast<std::size_t>(points) * points);
        for (float& value : lattice) value = uniform(random);
        const float step = static_cast<float>(cells) / static_cast<float>(side);
        for (int y = 0; y < side; ++y) {
            const float v = static_cast<float>(y) * step;
            const int j = static_cast<int>(v);
            const float b = v - static_cast<float>(j);
            const float* upper = &lattice[static_cast<std::size_t>(j) * points];
            const float* lower = upper + points;
            float* row = &sum[static_cast<std::size_t>(y) * side];
            for (int x = 0; x < side; ++x) {
                const float u = static_cast<float>(x) * step;
                const int i = static_cast<int>(u);
                const float a = u - static_cast<float>(i);
                row[x] +=
                    weight * std::lerp(std::lerp(upper[i], upper[i + 1], a), std::lerp(lower[i], lower[i + 1], a), b);
            }
        }
    }
    double squares = 0;
    for (const float value : sum) squares += double(value) * value;
    const auto deviation = static_cast<float>(std::sqrt(squares / static_cast<double>(sum.size())));
    for (float& value : sum) value /= deviation;
    return sum;
}

std::uint8_t sample(float value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0F, 255.0F));
}

} // namespace

QImage photo(int side) {
    // Optics are less sharp than the sensor: the structure has half its resolution, the grain all of it.
    const int half = (side + 1) / 2;
    const std::array channels{fractal(half, 11), fractal(half, 12), fractal(half, 13)};
    const auto common = fractal(half, 1);
    constexpr std::array level{120.0F, 128.0F, 110.0F};
    constexpr std::array strength{38.0F, 40.0F, 34.0F};
    std::mt19937 random(7);
    std::normal_distribution<float> grain(0, 1.6F);
    QImage image(side, side, QImage::Format_RGBA8888);
    for (int y = 0; y < side; ++y) {
        uchar* row = image.scanLine(y);
        const float light = 20.0F * static_cast<float>(y) / static_cast<float>(side);
        for (int x = 0; x < side; ++x) {
            const std::size_t at = static_cast<std::size_t>(y / 2) * half + x / 2;
            for (std::size_t c = 0; c < 3; ++c)
                row[x * 4 + c] =
                    sample(level[c] + strength[c] * common[at] + 9 * channels[c][at] + light + grain(random));
            row[x * 4 + 3] = 255;
        }
    }
    return image;
}

QImage flatLogo(int side) {
    QImage image(side, side, QImage::Format_RGBA8888);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 4096.0, side / 4096.0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(210, 40, 60), 520));
    painter.drawEllipse(QPointF(1700, 1900), 900, 900);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(30, 60, 160));
    painter.drawRect(QRectF(2420, 940, 960, 2320));
    painter.setBrush(QColor(20, 20, 24));
    QPainterPath slanted;
    slanted.addPolygon(QPolygonF({{300, 3180}, {2700, 3180}, {2560, 3620}, {160, 3620}}));
    painter.drawPath(slanted);
    std::mt19937 random(3);
    std::uniform_real_distribution<double> x(300, 3800);
    std::uniform_real_distribution<double> y(200, 700);
    std::uniform_real_distribution<double> radius(12, 70);
    painter.setBrush(Qt::NoBrush);
    for (int i = 0; i < 60; ++i) {
        const QPointF centre(x(random), y(random));
        const double r = radius(random);
        painter.setPen(QPen(QColor(60, 120, 40), r * 0.7));
        painter.drawEllipse(centre, r * 0.6, r * 0.6);
    }
    painter.end();
    return image;
}

QImage noisyLogo(int side) {
    QImage image = flatLogo(side);
    std::mt19937 random(20);
    std::uniform_int_distribution<int> noise(-2, 2);
    for (int y = 0; y < side; ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < side; ++x) {
            uchar* pixel = row + x * 4;
            const int grey = noise(random);
            const bool light = pixel[2] > 128;
            for (int c = 0; c < 3; ++c)
                pixel[c] = static_cast<uchar>(std::clamp(pixel[c] + grey - (light ? (c == 2 ? 7 : 5) : 0), 0, 255));
        }
    }
    return image;
}

QImage cutOut(int side) {
    QImage image = noisyLogo(side);
    for (int y = 0; y < side; ++y) {
        uchar* row = image.scanLine(y);
        for (uchar* pixel = row; pixel < row + side * 4; pixel += 4)
            if (pixel[0] > 225 && pixel[1] > 225 && pixel[2] > 225) std::fill_n(pixel, 4, uchar(0));
    }
    return image;
}

} // namespace quillary::benchmark::Pictures
