#include "imaging/reduced/ReducedPicture.h"

#include "imaging/BitmapDecoder.h"
#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <QColorSpace>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

namespace quillary::reduced {

namespace {

std::span<const std::uint8_t> bytesOf(const QByteArray& file) {
    return {reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())};
}

/// Soft shapes with a texture, as compression is made for.
QImage scene(int width, int height, QImage::Format format = QImage::Format_RGB32) {
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgba((x / 3 + y / 5) % 256, (x * y / 900) % 256, 255 - x % 256, 55 + (x + y) % 201));
    return image.convertToFormat(format);
}

/// The mean of each square, the obvious way: red, green, blue (times alpha) and alpha.
QImage plainMeans(const QImage& whole, int side) {
    const QImage source = whole.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    QImage means((whole.width() + side - 1) / side, (whole.height() + side - 1) / side, source.format());
    for (int y = 0; y < means.height(); ++y)
        for (int x = 0; x < means.width(); ++x) {
            std::array<int, 4> sum{};
            int pixels = 0;
            for (int v = y * side; v < std::min((y + 1) * side, whole.height()); ++v)
                for (int u = x * side; u < std::min((x + 1) * side, whole.width()); ++u, ++pixels)
                    for (int c = 0; c < 4; ++c) sum[c] += source.constScanLine(v)[u * 4 + c];
            for (int c = 0; c < 4; ++c) means.scanLine(y)[x * 4 + c] = static_cast<uchar>(sum[c] / pixels);
        }
    return means;
}

/// The largest and the mean difference of two pictures' samples.
std::pair<int, double> difference(const QImage& a, const QImage& b) {
    EXPECT_EQ(a.size(), b.size());
    int most = 0;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < a.width() * 4; ++i) {
            const int apart = std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]);
            most = std::max(most, apart);
            sum += apart;
        }
    return {most, sum / (a.width() * a.height() * 4)};
}

} // namespace

TEST(ReducedJpeg, IsTheMeanOfEachBlock) {
    for (const auto& [width, height] : {std::pair{800, 600}, {801, 17}, {9, 1000}, {831, 833}}) {
        for (const auto format : {QImage::Format_RGB32, QImage::Format_Grayscale8}) {
            const QByteArray file = test::encoded(scene(width, height, format), "JPG");
            const auto picture = readJpeg(bytesOf(file), 100);
            ASSERT_TRUE(picture) << width;
            EXPECT_EQ(picture->original, QSize(width, height));
            const QImage whole = QImage::fromData(file);
            EXPECT_LT(difference(picture->image, plainMeans(whole, 8)).second, 4) << width << "×" << height;
        }
    }
    const QByteArray small = test::encoded(scene(790, 100), "JPG");
    EXPECT_FALSE(readJpeg(bytesOf(small), 100)) << "smaller than wanted";
}

TEST(ReducedPng, IsTheMeanOfEachSquare) {
    const auto indexed = scene(640, 400).convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
    const auto glassy = scene(640, 400, QImage::Format_ARGB32).convertToFormat(QImage::Format_Indexed8);
    for (const QImage& image :
         {scene(640, 400), scene(401, 1), scene(3, 777), scene(603, 401, QImage::Format_ARGB32),
          scene(640, 403, QImage::Format_Grayscale8), indexed, glassy, scene(199, 10), scene(7, 9)}) {
        const QByteArray file = test::encoded(image, "PNG");
        const auto picture = readPng(bytesOf(file), 100);
        ASSERT_TRUE(picture) << image.width() << " " << image.format();
        const int side = std::max(1, std::max(image.width(), image.height()) / 200);
        EXPECT_EQ(picture->image.hasAlphaChannel(), QImage::fromData(file).hasAlphaChannel());
        EXPECT_LE(difference(picture->image, plainMeans(QImage::fromData(file), side)).first, 2) << image.width();
    }
    EXPECT_FALSE(readPng(bytesOf(test::encoded(scene(640, 400, QImage::Format_RGBA64), "PNG")), 100));
    EXPECT_FALSE(readPng(bytesOf(test::pngWithProfileBomb(100'000'000)), 1));
}

/// Nothing but the sanitizers can tell more than that it ends.
TEST(ReducedPicture, SurvivesDamage) {
    std::mt19937 random(5);
    int read = 0;
    for (const char* format : {"JPG", "PNG"}) {
        const QByteArray whole = test::encoded(scene(320, 200), format);
        for (int round = 0; round < 1500; ++round) {
            QByteArray file = whole;
            for (unsigned i = random() % 4 + 1; i > 0; --i) {
                const qsizetype reach = round % 2 ? file.size() : std::min<qsizetype>(file.size(), 700);
                file[static_cast<qsizetype>(random() % static_cast<unsigned>(reach))] = static_cast<char>(random());
            }
            if (round % 5 == 0) file.truncate(static_cast<qsizetype>(random() % static_cast<unsigned>(file.size())));
            read += readJpeg(bytesOf(file), 20).has_value() || readPng(bytesOf(file), 20).has_value();
        }
    }
    EXPECT_GT(read, 0);
    for (const std::size_t size : {0U, 1U, 2U, 3U, 8U, 20U})
        EXPECT_FALSE(readJpeg(bytesOf(QByteArray(static_cast<qsizetype>(size), '\xff')), 1));
    EXPECT_EQ(exifOrientation(bytesOf("II*\0\xff\xff\xff\xff")), 1);
}

TEST(ReducedPicture, IsConvertedToSrgb) {
    const test::TemporaryFolder folder;
    const QImage plain = scene(2400, 1800);
    QImage p3 = plain;
    p3.setColorSpace(QColorSpace::SRgb);
    p3.convertToColorSpace(QColorSpace::DisplayP3);
    for (const char* format : {"JPG", "PNG"}) {
        const QByteArray bytes = test::encoded(p3, format);
        test::writeFile(folder / "p3", bytes);
        const auto reduced = BitmapDecoder::thumbnail(folder / "p3", 256);
        EXPECT_EQ(reduced.picture.size(), QSize(256, 192));
        EXPECT_EQ(reduced.original, QSize(2400, 1800));
        const QImage expected = plain.scaled(256, 192, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                    .convertToFormat(QImage::Format_RGBX8888);
        EXPECT_LT(difference(reduced.picture, expected).second, 6) << format;
        const QImage asStored = p3.scaled(256, 192).convertToFormat(QImage::Format_RGBX8888);
        EXPECT_GT(difference(asStored, expected).second, 8);
    }
}

} // namespace quillary::reduced
