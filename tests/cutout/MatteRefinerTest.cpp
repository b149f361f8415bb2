#include "cutout/MatteRefiner.h"

#include "cutout/SolidBackgroundRemover.h"
#include "cutout/TestPictures.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace quillary {

namespace {

using namespace test;

/// A plane of numbers that continues beyond its border.
struct Plane {
    int width;
    int height;
    std::vector<double> values;

    double at(int x, int y) const {
        return values[static_cast<std::size_t>(std::clamp(y, 0, height - 1)) * width + std::clamp(x, 0, width - 1)];
    }
};

double smallestInDisc(const Plane& alpha, int x, int y, int radius) {
    double least = 255;
    for (int dy = -radius; dy <= radius; ++dy)
        for (int dx = -radius; dx <= radius; ++dx)
            if (dx * dx + dy * dy <= radius * radius) least = std::min(least, alpha.at(x + dx, y + dy));
    return least;
}

double eroded(const Plane& alpha, int x, int y, double radius) {
    const int lower = static_cast<int>(radius);
    return std::lerp(smallestInDisc(alpha, x, y, lower), smallestInDisc(alpha, x, y, lower + 1), radius - lower);
}

/// Refinement written straight down: every value of the matte from its whole neighbourhood.
QImage plainlyRefined(const QImage& image, double amount) {
    const double radius = 5.0 * std::min(amount, 1.0);
    const double deviation = 0.15 * radius;
    Plane alpha{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) alpha.values.push_back(image.constScanLine(y)[x * 4 + 3]);
    constexpr int reach = 3;
    // The eroded alpha with what the blur needs beyond the border.
    Plane wide{image.width() + 2 * reach, image.height() + 2 * reach, {}};
    for (int y = 0; y < wide.height; ++y)
        for (int x = 0; x < wide.width; ++x) wide.values.push_back(eroded(alpha, x - reach, y - reach, radius));
    QImage result = image;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            double sum = 0;
            double weights = 0;
            for (int dy = -reach; dy <= reach; ++dy) {
                for (int dx = -reach; dx <= reach; ++dx) {
                    const double weight = std::exp(-(dx * dx + dy * dy) / (2 * deviation * deviation));
                    weights += weight;
                    sum += weight * wide.at(x + dx + reach, y + dy + reach);
                }
            }
            uchar* pixel = result.scanLine(y) + x * 4;
            for (int c = 0; c < 4; ++c) pixel[c] = static_cast<uchar>(std::lround(pixel[c] * (sum / weights) / 255));
        }
    }
    return result;
}

int largestDifference(const QImage& a, const QImage& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < a.width() * 4; ++i)
            largest = std::max(largest, std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]));
    return largest;
}

QImage cutOut(int width, int height) {
    const QImage picture = TestPictures::blots(width, height, 3);
    return SolidBackgroundRemover::remove(picture, {}, SolidBackgroundRemover::Colors::withinAlpha)->image;
}

} // namespace

TEST(MatteRefiner, EqualsThePlainReading) {
    const QImage pictures[] = {
        cutOut(200, 150), cutOut(65, 129), cutOut(64, 64), cutOut(1, 1), cutOut(1, 90), cutOut(131, 2),
        TestPictures::withAlpha(TestPictures::photo(150, 100, 8))
            .convertToFormat(QImage::Format_RGBA8888_Premultiplied),
        TestPictures::filled(80, 70, QColor(9, 8, 7, 128)).convertToFormat(QImage::Format_RGBA8888_Premultiplied),
        // Whose border is no edge.
        TestPictures::photo(70, 60, 1).convertToFormat(QImage::Format_RGBA8888_Premultiplied),
        TestPictures::filled(70, 60, Qt::transparent).convertToFormat(QImage::Format_RGBA8888_Premultiplied)};
    for (const QImage& picture : pictures)
        for (const double amount : {0.004, 0.1, 0.2, 0.5, 0.73, 1.0, 3.0}) {
            const QImage refined = MatteRefiner::refine(picture, amount);
            ASSERT_EQ(refined.size(), picture.size());
            EXPECT_EQ(refined.format(), picture.format());
            EXPECT_LE(largestDifference(refined, plainlyRefined(picture, amount)), 1)
                << picture.width() << "x" << picture.height() << " at " << amount;
        }
}

TEST(MatteRefiner, ReturnsItsInputWhereThereIsNothingToDo) {
    const QImage raw = cutOut(100, 80);
    for (const double amount : {-1.0, 0.0, 0.001, std::nan("")})
        EXPECT_EQ(MatteRefiner::refine(raw, amount).cacheKey(), raw.cacheKey()) << amount;
    EXPECT_TRUE(MatteRefiner::refine(QImage(), 1).isNull());
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(MatteRefiner::refine(raw, 1, stop.get_token()).cacheKey(), raw.cacheKey());
}

TEST(MatteRefiner, RefinesAgainFromTheSameInput) {
    const QImage raw = cutOut(300, 200);
    const MatteRefiner::Matte matte(raw);
    for (const double amount : {1.0, 0.2, 0.6, 0.2, 0.0})
        EXPECT_EQ(matte.refined(MatteRefiner::erosionRadius(amount)), MatteRefiner::refine(raw, amount)) << amount;
}

TEST(MatteRefiner, TakesOtherFormats) {
    const QImage raw = cutOut(90, 70);
    const QImage expected = MatteRefiner::refine(raw, 0.5);
    const auto swapped = MatteRefiner::refine(raw.convertToFormat(QImage::Format_ARGB32_Premultiplied), 0.5);
    EXPECT_EQ(swapped.convertToFormat(expected.format()), expected);
    const auto wide = MatteRefiner::refine(raw.convertToFormat(QImage::Format_RGBA64_Premultiplied), 0.5);
    EXPECT_EQ(wide.convertToFormat(expected.format()), expected);
}

} // namespace quillary
