#include "imaging/BitmapDecoder.h"

#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <QColorSpace>
#include <QImageWriter>
#include <QtMath>
#include <ctime>
#include <gtest/gtest.h>

namespace quillary {

namespace {

QImage decoded(const QByteArray& bytes) {
    return BitmapDecoder::decode(bytes).value_or(QImage());
}

TEST(BitmapDecoder, PassesSamplesUnchanged) {
    const struct {
        QImage::Format format;
        const char* file;
        QImage::Format expected;
    } rows[] = {
        {QImage::Format_RGBA8888, "PNG", QImage::Format_RGBA8888},
        {QImage::Format_RGB32, "PNG", QImage::Format_RGBX8888},
        {QImage::Format_Grayscale8, "PNG", QImage::Format_RGBX8888},
        {QImage::Format_Mono, "PNG", QImage::Format_RGBX8888},
        {QImage::Format_RGB32, "TIFF", QImage::Format_RGBX8888},
        {QImage::Format_RGB32, "BMP", QImage::Format_RGBX8888},
        {QImage::Format_RGB32, "ICO", QImage::Format_RGBA8888},
        {QImage::Format_RGB32, "PPM", QImage::Format_RGBX8888},
    };
    for (const auto& row : rows) {
        for (const QSize size : {QSize(1, 1), QSize(7, 3), QSize(65, 129)}) {
            const QImage given = test::colourful(size.width(), size.height(), row.format);
            const QImage read = decoded(test::encoded(given, row.file));
            EXPECT_EQ(read.format(), row.expected) << row.file << row.format;
            EXPECT_EQ(read, given.convertToFormat(row.expected)) << row.file << row.format << " " << size.width();
        }
    }
}

TEST(BitmapDecoder, ReadsPalettesAndDeepSamples) {
    QImage palette(4, 1, QImage::Format_Indexed8);
    palette.setColorTable({0xffff0000, 0x8000ff00, 0x00000000, 0xff0000ff});
    for (int x = 0; x < 4; ++x) palette.setPixel(x, 0, static_cast<uint>(x));
    EXPECT_EQ(decoded(test::encoded(palette, "PNG")).pixelColor(1, 0), QColor(0, 255, 0, 128));

    QImage deep(2, 1, QImage::Format_RGBA64);
    deep.setPixelColor(0, 0, QColor::fromRgba64(0x1234, 0xffff, 0x8000, 0xffff));
    deep.setPixelColor(1, 0, QColor::fromRgba64(0xffff, 0x4000, 0x0000, 0x8080));
    const QImage read = decoded(test::encoded(deep, "PNG"));
    EXPECT_EQ(read.pixelColor(0, 0), QColor(0x12, 0xff, 0x80, 0xff));
    EXPECT_EQ(read.pixelColor(1, 0), QColor(0xff, 0x40, 0x00, 0x80));
}

TEST(BitmapDecoder, TurnsPicturesUpright) {
    // Which quarter of the stored picture comes to the top left and the top right.
    const struct {
        int orientation;
        QColor topLeft, topRight;
    } rows[] = {
        {1, Qt::red, Qt::green}, {2, Qt::green, Qt::red}, {3, Qt::white, Qt::blue},  {4, Qt::blue, Qt::white},
        {5, Qt::red, Qt::blue},  {6, Qt::blue, Qt::red},  {7, Qt::white, Qt::green}, {8, Qt::green, Qt::white},
    };
    const auto near = [](QColor a, QColor b) {
        return qAbs(a.red() - b.red()) + qAbs(a.green() - b.green()) + qAbs(a.blue() - b.blue()) < 12;
    };
    for (const auto& row : rows) {
        const QImage read = decoded(test::orientedJpeg(row.orientation));
        ASSERT_EQ(read.size(), row.orientation < 5 ? QSize(64, 32) : QSize(32, 64));
        EXPECT_TRUE(near(read.pixelColor(4, 4), row.topLeft)) << row.orientation;
        EXPECT_TRUE(near(read.pixelColor(read.width() - 5, 4), row.topRight)) << row.orientation;
    }
    for (const QByteArray& stored : {test::turnedAvif(), test::turnedHeic()}) {
        const QImage read = decoded(stored);
        ASSERT_EQ(read.size(), QSize(8, 16));
        EXPECT_TRUE(near(read.pixelColor(2, 3), QColor(32, 64, 192))) << read.pixelColor(2, 3).name().toStdString();
        EXPECT_TRUE(near(read.pixelColor(2, 12), QColor(192, 48, 32))) << read.pixelColor(2, 12).name().toStdString();
    }
}

TEST(BitmapDecoder, ConvertsOtherColourSpacesAndLeavesOurs) {
    QImage image = test::colourful(16, 16);
    image.setColorSpace(QColorSpace::SRgb);
    QImage plain = image;
    plain.setColorSpace({});
    EXPECT_EQ(decoded(test::encoded(image, "PNG")), plain);

    QImage wide(1, 1, QImage::Format_RGBA8888);
    wide.setPixelColor(0, 0, QColor(100, 200, 100, 77));
    wide.setColorSpace(QColorSpace::DisplayP3);
    const QColor read = decoded(test::encoded(wide, "PNG")).pixelColor(0, 0);
    const QColor expected = wide.convertedToColorSpace(QColorSpace::SRgb).pixelColor(0, 0);
    EXPECT_NEAR(read.red(), expected.red(), 3);
    EXPECT_NEAR(read.green(), expected.green(), 3);
    EXPECT_NEAR(read.blue(), expected.blue(), 3);
    EXPECT_EQ(read.alpha(), 77);
    EXPECT_LT(read.red(), 90);
}

TEST(BitmapDecoder, AsksForTheIntentThatAProfileHas) {
    const QColor read = decoded(test::pngWithPerceptualProfile()).pixelColor(0, 0);
    EXPECT_GT(read.green(), 200);
    EXPECT_LT(read.red(), 80);
}

TEST(BitmapDecoder, TakesTheLargestPictureOfAnIcon) {
    const QImage small = test::colourful(16, 16);
    const QImage large = test::colourful(256, 256);
    const test::TemporaryFolder folder;
    for (const auto& [name, bytes, side] :
         {std::tuple{"first.ico", test::icon({large, small}), 256}, {"last.ico", test::icon({small, large}), 256},
          {"middle.ico", test::icon({small, test::colourful(48, 48), small}), 48},
          {"apple.icns", test::appleIcon(), 128}}) {
        EXPECT_EQ(decoded(bytes).size(), QSize(side, side)) << name;
        test::writeFile(folder / name, bytes.toStdString());
        EXPECT_EQ(BitmapDecoder::thumbnail(folder / name, 512).picture.size(), QSize(side, side)) << name;
    }
    EXPECT_EQ(decoded(test::icon({small, large})), large);
    EXPECT_EQ(decoded(test::appleIcon()).pixelColor(5, 5), QColor(Qt::white));
}

TEST(BitmapDecoder, RefusesWhatIsCutShort) {
    const QImage picture = test::colourful(90, 90, QImage::Format_RGB32);
    for (const char* format : {"PNG", "JPEG", "TIFF", "WEBP"}) {
        const QByteArray whole = test::encoded(picture, format);
        ASSERT_FALSE(decoded(whole).isNull()) << format;
        for (const qsizetype size : {whole.size() / 2, whole.size() * 9 / 10, qsizetype(20), qsizetype(1)})
            EXPECT_EQ(BitmapDecoder::decode(whole.first(size)).error(), BitmapDecoder::Error::unreadable)
                << format << ' ' << size;
    }
}

TEST(BitmapDecoder, AsksNoForeignLoaderAboutBytesOfNoBitmap) {
    // A complete compressed stream with more behind it: something that inflates it until all is read never ends.
    const QByteArray stream = QByteArray::fromHex("1f8b08000000000000034bcc4a0300c241243503000000") + QByteArray(150, 'x');
    EXPECT_EQ(BitmapDecoder::decode(stream).error(), BitmapDecoder::Error::unreadable);
    const test::TemporaryFolder folder;
    test::writeFile(folder / "a.png", stream);
    EXPECT_TRUE(BitmapDecoder::thumbnail(folder / "a.png", 220).picture.isNull());
}

TEST(BitmapDecoder, SurvivesBombs) {
    const std::clock_t start = std::clock(); // of the processor, which others may keep busy
    constexpr quint32 huge = 50'000;
    EXPECT_FALSE(BitmapDecoder::decode(test::pngHeader(huge, huge)));
    EXPECT_FALSE(BitmapDecoder::decode(test::pngHeader(0x7fffffff, 0x7fffffff)));
    // A frame of 60,000 by 60,000 on a canvas of nine by nine.
    const QByteArray gif =
        QByteArray::fromHex("47494638396109000900800000000000ffffff2c0000000060ea60ea0002048c8f1900003b");
    EXPECT_FALSE(BitmapDecoder::decode(gif));
    const test::TemporaryFolder folder;
    test::writeFile(folder / "a.gif", gif.toStdString());
    EXPECT_TRUE(BitmapDecoder::thumbnail(folder / "a.gif", 220).picture.isNull());
    // What is wrong with the profile may or may not cost the picture.
    constexpr qsizetype bomb = qsizetype(1) << 28;
    const auto read = BitmapDecoder::decode(test::pngWithProfileBomb(bomb));
    if (read) {
        EXPECT_EQ(read->size(), QSize(2, 2));
    }
    EXPECT_LT(std::clock() - start, 8 * CLOCKS_PER_SEC);
}

} // namespace

} // namespace quillary
