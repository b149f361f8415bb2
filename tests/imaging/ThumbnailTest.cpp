#include "imaging/Thumbnail.h"

#include "imaging/Fixtures.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillary {

namespace {

TEST(Thumbnail, FitsEveryKindOfFile) {
    const test::TemporaryFolder folder;
    const struct {
        const char* name;
        QByteArray bytes;
        QSize expected;
    } rows[] = {
        {"small.png", test::encoded(test::colourful(20, 10), "PNG"), {20, 10}},
        {"wide.png", test::encoded(test::colourful(1000, 100), "PNG"), {220, 22}},
        {"tall.tiff", test::encoded(test::colourful(30, 600, QImage::Format_RGB32), "TIFF"), {11, 220}},
        {"thin.png", test::encoded(test::colourful(2000, 1), "PNG"), {220, 1}},
        {"plain.bmp", test::encoded(test::colourful(440, 220, QImage::Format_RGB32), "BMP"), {220, 110}},
        {"turned.jpg", test::orientedJpeg(6), {32, 64}},
        {"icon.svg", test::svg("width=\"24\" height=\"24\""), {220, 220}},
        {"line.svg", test::svg("width=\"1000\" height=\"1\""), {220, 1}},
        {"page.pdf", test::pdf(1000, 500), {220, 110}},
        {"empty.svg", test::svg("width=\"0\" height=\"1\""), {}},
        {"broken.png", "no picture", {}},
    };
    for (const auto& row : rows) {
        test::writeFile(folder / row.name, {row.bytes.constData(), static_cast<std::size_t>(row.bytes.size())});
        EXPECT_EQ(Thumbnail::load(folder / row.name).size(), row.expected.isValid() ? row.expected : QSize(0, 0))
            << row.name;
    }
    EXPECT_TRUE(Thumbnail::load(folder / "absent.png").isNull());
}

TEST(Thumbnail, ShowsAFileThatWasOverwritten) {
    const test::TemporaryFolder folder;
    QImage image(300, 300, QImage::Format_RGB32);
    for (const QColor colour : {QColor(Qt::red), QColor(Qt::blue)}) {
        image.fill(colour);
        const QByteArray bytes = test::encoded(image, "PNG");
        test::writeFile(folder / "same.png", {bytes.constData(), static_cast<std::size_t>(bytes.size())});
        EXPECT_EQ(Thumbnail::load(folder / "same.png").pixelColor(100, 100), colour);
    }
}

} // namespace

} // namespace quillary
