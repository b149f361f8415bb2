#include "imaging/BitmapDecoder.h"
#include "imaging/TgaReader.h"

#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillary {

namespace {

enum Kind { palette = 1, colour = 2, grey = 3, coded = 8 };
constexpr int fromRight = 16, fromTop = 32;

QByteArray word(int value) {
    const char bytes[] = {static_cast<char>(value & 255), static_cast<char>(value >> 8 & 255)};
    return {bytes, 2};
}

/// A pixel as the file stores it.
QByteArray stored(QRgb pixel, int bits) {
    QByteArray bytes;
    if (bits == 8) return bytes += static_cast<char>(qRed(pixel));
    if (bits <= 16)
        return word((qAlpha(pixel) > 0 ? 0x8000 : 0) | qRed(pixel) >> 3 << 10 | qGreen(pixel) >> 3 << 5 | qBlue(pixel) >> 3);
    for (const int sample : {qBlue(pixel), qGreen(pixel), qRed(pixel)}) bytes += static_cast<char>(sample);
    return bits == 32 ? bytes += static_cast<char>(qAlpha(pixel)) : bytes;
}

struct Form {
    int kind = colour;
    int bits = 24;
    int descriptor = 0; ///< bits of transparency, and the corner that comes first
    int paletteBits = 0;
};

/// Equal neighbours of a row become runs of at most five.
QByteArray tga(const QImage& image, const Form& form) {
    QByteArray colours;
    QList<QRgb> known;
    QByteArray body;
    QByteArray last;
    int run = 0;
    const auto flush = [&] {
        if (run > 0) body += static_cast<char>(128 | (run - 1)) + last;
        run = 0;
    };
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column) {
            const QRgb pixel = image.pixel(form.descriptor & fromRight ? image.width() - 1 - column : column,
                                           form.descriptor & fromTop ? row : image.height() - 1 - row);
            QByteArray bytes = stored(pixel, form.bits);
            if ((form.kind & 3) == palette) {
                if (!known.contains(pixel)) {
                    known += pixel;
                    colours += stored(pixel, form.paletteBits);
                }
                const int index = static_cast<int>(known.indexOf(pixel)) + 3;
                bytes = form.bits == 16 ? word(index) : QByteArray(1, static_cast<char>(index));
            } else if (form.kind % 8 == grey && form.bits == 16) {
                bytes = QByteArray(1, static_cast<char>(qRed(pixel))) + static_cast<char>(qAlpha(pixel));
            }
            if (!(form.kind & coded)) {
                body += bytes;
            } else if (run % 3 == 2 && bytes != last) { // some pixels stand by themselves
                flush();
                body += '\0' + bytes;
            } else {
                if (run == 5 || bytes != last) flush();
                last = bytes;
                ++run;
            }
        }
    }
    flush();
    QByteArray header("\4\0\0", 3);
    header[1] = static_cast<char>(known.isEmpty() ? 0 : 1);
    header[2] = static_cast<char>(form.kind);
    header += word(known.isEmpty() ? 0 : 3) + word(static_cast<int>(known.size())) + static_cast<char>(form.paletteBits) +
              word(0) + word(0) + word(image.width()) + word(image.height()) + static_cast<char>(form.bits) +
              static_cast<char>(form.descriptor);
    return header + "name" + colours + body;
}

/// Of few colours, so that all forms can hold it, with rows of runs.
QImage sample(bool greys, bool transparent) {
    QImage image(13, 7, QImage::Format_RGBA8888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const auto five = [](int value) { return value << 3 | value >> 2; };
            const int red = five((x / 3 * 5 + y) % 32);
            const QColor pixel(red, greys ? red : five((x + y * 4) / 4 % 32), greys ? red : five(y * 4 % 32),
                               transparent && x % 4 == 1 ? 0 : 255);
            image.setPixelColor(x, y, pixel);
        }
    return image;
}

TEST(TgaReader, ReadsEveryForm) {
    const struct {
        const char* what;
        Form form;
        bool transparent = false;
    } rows[] = {
        {"true colour", {colour, 24}},
        {"15 bits", {colour, 15}},
        {"16 bits without transparency", {colour, 16}},
        {"16 bits with", {colour, 16, 1}, true},
        {"32 bits with transparency", {colour, 32, 8}, true},
        {"32 bits that tell of none", {colour, 32, 0}},
        {"grey", {grey, 8}},
        {"grey with transparency", {grey, 16, 8}, true},
        {"palette", {palette, 8, 0, 24}},
        {"deep palette with transparency", {palette, 16, 0, 32}, true},
        {"small palette", {palette, 8, 0, 16}},
    };
    for (const auto& row : rows)
        for (const int way : {0, int(coded)})
            for (const int corner : {0, fromTop, fromRight, fromTop | fromRight}) {
                Form form = row.form;
                form.kind |= way;
                form.descriptor |= corner;
                const QImage given = sample((row.form.kind & 3) == grey, row.transparent);
                const QImage read = TgaReader::read(tga(given, form));
                ASSERT_FALSE(read.isNull()) << row.what << way << corner;
                EXPECT_EQ(read.hasAlphaChannel(), row.transparent) << row.what;
                EXPECT_EQ(read.convertToFormat(given.format()), given) << row.what << way << corner;
            }
}

TEST(TgaReader, IsKnownByNameOrMarkAndRefusesWhatIsCutShort) {
    const QImage given = sample(false, false);
    const QByteArray plain = tga(given, {});
    const test::TemporaryFolder folder;
    test::writeFile(folder / "A.TGA", plain.toStdString());
    test::writeFile(folder / "picture.tga", test::encoded(given, "PNG").toStdString());
    for (const char* name : {"A.TGA", "picture.tga"}) {
        const auto read = BitmapDecoder::decode(folder / name);
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(read->convertToFormat(given.format()), given) << name;
    }
    EXPECT_FALSE(BitmapDecoder::decode(plain));
    EXPECT_TRUE(BitmapDecoder::decode(plain + QByteArray(8, '\0') + QByteArray("TRUEVISION-XFILE.\0", 18)));
    const QByteArray runs = tga(given, {colour | coded, 24});
    for (const QByteArray& whole : {plain, runs})
        for (qsizetype size = 0; size < whole.size(); ++size) EXPECT_TRUE(TgaReader::read(whole.first(size)).isNull());
    QByteArray huge = runs;
    huge.replace(12, 4, "\xff\x3f\xff\x3f");
    EXPECT_TRUE(TgaReader::read(huge).isNull());
}

} // namespace

} // namespace quillary
