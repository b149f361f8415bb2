#include "cutout/SolidBackgroundRemover.h"

#include "cutout/PlainBackgroundRemover.h"
#include "cutout/TestPictures.h"
#include "cutout/flat/BackgroundColor.h"

#include <QColor>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace quillary {

namespace {

using namespace test;
using Colors = SolidBackgroundRemover::Colors;

/// Where two pictures differ first, for a message; empty when they are the same.
std::string firstDifference(const QImage& a, const QImage& b) {
    if (a.size() != b.size() || a.format() != b.format()) return "size or format";
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (std::memcmp(a.constScanLine(y) + x * 4, b.constScanLine(y) + x * 4, 4) != 0)
                return std::to_string(x) + ", " + std::to_string(y);
    return {};
}

void expectPlain(const QImage& picture, const std::string& name) {
    const auto fast = SolidBackgroundRemover::remove(picture);
    const auto plain = plainlyRemoved(picture);
    ASSERT_TRUE(fast) << name;
    EXPECT_EQ(firstDifference(fast->image, plain.image), "") << name;
    EXPECT_EQ(fast->removedFraction, plain.removedFraction) << name;
}

constexpr struct {
    int width, height;
} sizes[] = {{1, 1},     {2, 1},    {1, 3},   {63, 5},  {64, 64},  {65, 33},
             {127, 129}, {128, 64}, {1, 700}, {700, 1}, {333, 217}};

} // namespace

TEST(SolidBackgroundRemover, EqualsThePlainReadingBitForBit) {
    for (const auto& [width, height] : sizes) {
        const std::pair<const char*, QImage> pictures[] = {
            {"flat", TestPictures::filled(width, height, QColor(12, 200, 77))},
            {"transparent", TestPictures::filled(width, height, Qt::transparent)},
            {"photo", TestPictures::photo(width, height, 5)},
            {"blots", TestPictures::blots(width, height, 3)},
            {"comb", TestPictures::comb(width, height)},
            {"spiral", TestPictures::spiral(width, height)},
            {"walls", TestPictures::walls(width, height, 0.4, 9)},
            {"sparse walls", TestPictures::walls(width, height, 0.25, 10)},
        };
        for (const auto& [name, picture] : pictures) {
            const std::string at = std::string(name) + " " + std::to_string(width) + "x" + std::to_string(height);
            expectPlain(picture, at);
            expectPlain(TestPictures::withAlpha(picture), at + " with alpha");
        }
    }
}

TEST(SolidBackgroundRemover, EqualsThePlainReadingOnLargeMazes) {
    expectPlain(TestPictures::comb(3001, 401), "a thousand corridors");
    expectPlain(TestPictures::spiral(601, 599), "spiral");
    expectPlain(TestPictures::walls(1500, 1400, 0.4, 1), "walls");
    expectPlain(TestPictures::filled(8192, 1, Qt::white), "8192x1");
    expectPlain(TestPictures::photo(1, 8192, 2), "1x8192");
}

TEST(SolidBackgroundRemover, TakesEveryFormat) {
    const QImage picture = TestPictures::withAlpha(TestPictures::blots(150, 90, 4));
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        const QImage converted = picture.convertToFormat(static_cast<QImage::Format>(format));
        expectPlain(converted, "format " + std::to_string(format));
    }
}

TEST(SolidBackgroundRemover, DecidesAtTheLimitsAsTheDistancesWould) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> channel(0, 1);
    int closeCalls = 0;
    for (int i = 0; i < 400'000; ++i) {
        const double r = channel(random);
        const cutout::BackgroundColor background(r, r, r);
        // Grey on grey: the distance is that of the channels, so that nearly equal ones can be aimed at.
        const auto byte = static_cast<unsigned>(std::lround((r + 0.14) * 255) + static_cast<int>(random() % 3) - 1);
        if (byte > 255) continue;
        const double difference = byte / 255.0 - r;
        const double d =
            std::sqrt(difference * difference + difference * difference + difference * difference) / 1.7320508;
        closeCalls += std::abs(d - 0.14) < 1e-4;
        ASSERT_EQ(background.isNear(byte * 0x010101U), d <= 0.14) << r << " " << byte;
    }
    EXPECT_GT(closeCalls, 100);
}

TEST(SolidBackgroundRemover, SoftensTheRimByItsDistance) {
    // The rim pixel is grey on a black border of many samples, so that its distance is its level.
    for (const auto& [level, alpha] : {std::pair(35, 0), {36, 1}, {51, 95}, {76, 251}, {77, 255}}) {
        QImage picture = TestPictures::filled(65, 65, Qt::black);
        picture.setPixel(32, 32, qRgb(level, level, level));
        const auto removed = SolidBackgroundRemover::remove(picture);
        ASSERT_TRUE(removed);
        EXPECT_EQ(removed->image.constScanLine(32)[32 * 4 + 3], alpha) << level;
    }
}

TEST(SolidBackgroundRemover, CutsColorsOffAtTheAlphaWhenAsked) {
    const QImage picture = TestPictures::blots(150, 90, 4);
    const auto raw = SolidBackgroundRemover::remove(picture);
    const auto fit = SolidBackgroundRemover::remove(picture, {}, Colors::withinAlpha);
    ASSERT_TRUE(raw && fit);
    EXPECT_EQ(raw->removedFraction, fit->removedFraction);
    for (int y = 0; y < picture.height(); ++y) {
        const uchar* a = raw->image.constScanLine(y);
        const uchar* b = fit->image.constScanLine(y);
        for (int i = 0; i < picture.width() * 4; ++i) ASSERT_EQ(b[i], std::min(a[i], a[i | 3])) << y << " " << i;
    }
}

} // namespace quillary
