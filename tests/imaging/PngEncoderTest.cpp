#include "imaging/PngEncoder.h"

#include "imaging/BitmapDecoder.h"
#include "samples/Pictures.h"

#include <gtest/gtest.h>
#include <random>

namespace quillary {

namespace {

/// The picture that a PNG must give back, in the decoders' spelling.
QImage expectedOf(const QImage& image) {
    if (image.format() == QImage::Format_RGBA8888_Premultiplied)
        return expectedOf(image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    if (image.format() == QImage::Format_ARGB32_Premultiplied) {
        QImage straight(image.size(), QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                straight.setPixel(x, y, qUnpremultiply(reinterpret_cast<const QRgb*>(image.constScanLine(y))[x]));
        return straight.convertToFormat(QImage::Format_RGBA8888);
    }
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
}

void expectSameBack(const QImage& image, const char* what) {
    const QByteArray png = pngData(image);
    const QImage expected = expectedOf(image);
    EXPECT_EQ(QImage::fromData(png, "PNG").convertToFormat(expected.format()), expected)
        << what << ' ' << image.width() << 'x' << image.height() << " format " << image.format();
    EXPECT_EQ(BitmapDecoder::decode(png).value_or(QImage()), expected)
        << what << ' ' << image.width() << 'x' << image.height() << " format " << image.format();
}

QImage noise(int width, int height) {
    std::mt19937 random(5);
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int i = 0; i < width * 4; ++i) image.scanLine(y)[i] = static_cast<uchar>(random());
    return image;
}

QImage gradient(int width, int height) {
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, QColor(x * 255 / width, y * 255 / height, (x + y) % 256, 255 - x * 128 / width));
    return image;
}

QImage flat(int width, int height) {
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(QColor(250, 250, 248));
    for (int y = height / 4; y < height / 2; ++y)
        for (int x = width / 3; x < width / 2; ++x) image.setPixelColor(x, y, QColor(20, 30, 200, x % 7 ? 255 : 128));
    return image;
}

/// Few colours in disorder: short repetitions at every distance.
QImage speckled(int width, int height) {
    std::mt19937 random(9);
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int grey = 245 + static_cast<int>(random() % 5);
            image.setPixelColor(x, y, QColor(grey, grey, grey - 2));
        }
    return image;
}

QImage transparent(int width, int height) {
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    return image;
}

TEST(PngEncoder, GivesEveryPixelBack) {
    const QSize sizes[] = {{1, 1},   {1, 2},   {3, 1},    {2, 3},    {5, 7},
                           {17, 33}, {64, 64}, {1, 3000}, {9000, 2}, {333, 257}};
    for (const QSize size : sizes) {
        for (const auto& [what, make] : {std::pair{"noise", &noise},
                                         {"gradient", &gradient},
                                         {"flat", &flat},
                                         {"speckled", &speckled},
                                         {"transparent", &transparent}}) {
            const QImage image = make(size.width(), size.height());
            for (const auto format : {QImage::Format_RGBA8888, QImage::Format_RGBX8888})
                expectSameBack(image.convertToFormat(format), what);
        }
    }
}

TEST(PngEncoder, TakesEveryFormat) {
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format)
        expectSameBack(test::colourful(37, 19, static_cast<QImage::Format>(format)), "format");
}

TEST(PngEncoder, DividesPremultipliedPixelsAsTheToolkitDoes) {
    QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
    for (int alpha = 0; alpha < 256; ++alpha) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(alpha));
        for (int value = 0; value < 256; ++value) row[value] = qPremultiply(qRgba(value, 255 - value, 128, alpha));
    }
    expectSameBack(image, "premultiplied");
    expectSameBack(image.convertToFormat(QImage::Format_RGBA8888_Premultiplied), "premultiplied bytes");
}

TEST(PngEncoder, JoinsBands) {
    // Large enough for several bands of unlike content, the border rows of which refer to each other.
    QImage image(1100, 1900, QImage::Format_RGBA8888);
    int y = 0;
    for (const auto make : {&noise, &flat, &transparent, &speckled, &gradient}) {
        const QImage part = make(1100, 380);
        for (int row = 0; row < 380; ++row, ++y) std::copy_n(part.constScanLine(row), 1100 * 4, image.scanLine(y));
    }
    expectSameBack(image, "bands");
    expectSameBack(image.convertToFormat(QImage::Format_RGB32), "bands");
}

TEST(PngEncoder, IsNearlyAsSmallAsTheToolkit) {
    for (const QImage& image : {noise(600, 400), flat(600, 400), speckled(600, 400), transparent(600, 400)}) {
        const auto theirs = static_cast<double>(test::encoded(image, "PNG").size());
        // Of a few kilobytes, the tables alone are a good part.
        EXPECT_LE(static_cast<double>(pngData(image).size()), theirs * 1.1 + 512);
    }
}

TEST(PngEncoder, LeavesNothingOfNothing) {
    EXPECT_TRUE(pngData({}).isEmpty());
    std::stop_source source;
    source.request_stop();
    EXPECT_TRUE(pngData(flat(64, 64), source.get_token()).isEmpty());
}

} // namespace

} // namespace quillary
