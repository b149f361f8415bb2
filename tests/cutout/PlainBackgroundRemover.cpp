#include "cutout/PlainBackgroundRemover.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillary::test {

namespace {

struct Color {
    double r, g, b;
};

class Picture {
public:
    explicit Picture(const QImage& picture)
        : image(picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied))
        , width(image.width())
        , height(image.height()) {}

    uchar* pixel(int x, int y) { return image.scanLine(y) + x * 4; }
    Color color(int x, int y) {
        const uchar* p = pixel(x, y);
        return {p[0] / 255.0, p[1] / 255.0, p[2] / 255.0};
    }

    QImage image;
    int width;
    int height;
};

double distance(const Color& a, const Color& b) {
    return std::sqrt((a.r - b.r) * (a.r - b.r) + (a.g - b.g) * (a.g - b.g) + (a.b - b.b) * (a.b - b.b)) / 1.7320508;
}

Color meanOfBorder(Picture& picture) {
    const int shorter = std::min(picture.width, picture.height);
    const int step = shorter >= 64 ? shorter / 64 : 1;
    std::vector<Color> samples;
    for (int x = 0; x < picture.width; x += step) {
        samples.push_back(picture.color(x, 0));
        samples.push_back(picture.color(x, picture.height - 1));
    }
    for (int y = 0; y < picture.height; y += step) {
        samples.push_back(picture.color(0, y));
        samples.push_back(picture.color(picture.width - 1, y));
    }
    Color sum{};
    for (const Color& sample : samples) sum = {sum.r + sample.r, sum.g + sample.g, sum.b + sample.b};
    const auto count = static_cast<double>(samples.size());
    return {sum.r / count, sum.g / count, sum.b / count};
}

} // namespace

PlainRemoval plainlyRemoved(const QImage& given) {
    Picture picture(given);
    const int width = picture.width;
    const int height = picture.height;
    const Color background = meanOfBorder(picture);

    std::vector<char> mask(static_cast<std::size_t>(width) * height, 0);
    std::vector<std::pair<int, int>> stack;
    const auto marked = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < width && y < height && mask[static_cast<std::size_t>(y) * width + x] != 0;
    };
    const auto visit = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= width || y >= height || marked(x, y)) return;
        if (distance(picture.color(x, y), background) > 0.14) return;
        mask[static_cast<std::size_t>(y) * width + x] = 1;
        stack.emplace_back(x, y);
    };
    for (int x = 0; x < width; ++x) {
        visit(x, 0);
        visit(x, height - 1);
    }
    for (int y = 0; y < height; ++y) {
        visit(0, y);
        visit(width - 1, y);
    }
    while (!stack.empty()) {
        const auto [x, y] = stack.back();
        stack.pop_back();
        visit(x - 1, y);
        visit(x + 1, y);
        visit(x, y - 1);
        visit(x, y + 1);
    }

    double removed = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uchar* pixel = picture.pixel(x, y);
            if (marked(x, y)) {
                pixel[3] = 0;
                ++removed;
            } else if (marked(x - 1, y) || marked(x + 1, y) || marked(x, y - 1) || marked(x, y + 1)) {
                const double d = distance(picture.color(x, y), background);
                if (d < 0.3) pixel[3] = static_cast<uchar>(255 * std::clamp((d - 0.14) / 0.16, 0.0, 1.0));
            }
        }
    }
    return {picture.image, removed / (static_cast<double>(width) * height)};
}

} // namespace quillary::test
