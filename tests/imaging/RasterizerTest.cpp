#include "imaging/Rasterizer.h"

#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <thread>

namespace quillary {

namespace {

using namespace std::chrono_literals;
using Rasterizer::Error;
using Rasterizer::Format;

std::expected<QImage, Error> draw(const QByteArray& document, int edge = 64) {
    return Rasterizer::draw(document, Format::svg, {RasterRule::Kind::enlarge, edge});
}

TEST(Rasterizer, FindsTheSizeOfADocument) {
    const QByteArray box("<rect x=\"10\" y=\"10\" width=\"20\" height=\"10\"/>");
    const struct {
        const char* attributes;
        std::optional<QSize> expected;
    } rows[] = {
        {"width=\"100\" height=\"50\"", QSize(200, 100)},
        {"width=\"1in\" height=\"48\"", QSize(200, 100)},
        {"width=\"10mm\" height=\"20mm\"", QSize(100, 200)},
        {"width=\"100%\" height=\"100%\" viewBox=\"0 0 30 60\"", QSize(100, 200)},
        {"viewBox=\"5 5 60 30\"", QSize(200, 100)},
        {"width=\"10\" viewBox=\"0 0 3 6\"", QSize(100, 200)},
        {"height=\"10\" viewBox=\"0 0 3 6\"", QSize(100, 200)},
        {"width=\"40000\" height=\"20\"", QSize(40000, 20)},
        {"", QSize(200, 133)},
        {"width=\"0\" height=\"0\"", std::nullopt},
        {"width=\"1e9\" height=\"1e9\"", std::nullopt},
    };
    for (const auto& row : rows) {
        const auto image = draw(test::svg(row.attributes, box), 200);
        EXPECT_EQ(image ? std::optional(image->size()) : std::nullopt, row.expected) << row.attributes;
        if (image) {
            EXPECT_EQ(image->format(), QImage::Format_ARGB32_Premultiplied);
        } else {
            EXPECT_EQ(image.error(), Error::notDrawn) << row.attributes;
        }
    }
}

TEST(Rasterizer, FillsTheWholePictureOnTransparency) {
    const auto image = draw(test::svg("width=\"3\" height=\"1\"", "<rect x=\"1\" width=\"2\" height=\"1\" "
                                                                  "fill=\"#ff0000\" fill-opacity=\"0.5\"/>"),
                            1024);
    ASSERT_TRUE(image);
    ASSERT_EQ(image->size(), QSize(1024, 341));
    EXPECT_EQ(image->pixel(0, 0), 0U);
    for (const QPoint corner : {QPoint(700, 0), QPoint(1023, 0), QPoint(1023, 340)})
        EXPECT_EQ(image->pixelColor(corner), QColor(255, 0, 0, 128)) << corner.x();
}

TEST(Rasterizer, DrawsTheFirstPageOfAPdf) {
    const auto image = Rasterizer::draw(test::pdf(20, 10), Format::pdf, {RasterRule::Kind::enlarge, 40});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(40, 20));
    EXPECT_EQ(image->pixel(20, 4), 0U);
    EXPECT_EQ(qAlpha(image->pixel(20, 15)), 127);
    EXPECT_EQ(qBlue(image->pixel(20, 15)), 0);
    EXPECT_LE(qRed(image->pixel(20, 15)), 127);
}

TEST(Rasterizer, ReadsNoOtherFile) {
    const test::TemporaryFolder folder;
    const QByteArray picture = test::encoded(test::colourful(8, 8, QImage::Format_RGB32), "PNG");
    test::writeFile(folder / "picture.png", picture);
    const QByteArray name = QByteArray::fromStdString((folder / "picture.png").native());
    for (const QByteArray& reference : {"file://" + name, name, QByteArray("picture.png")}) {
        const QByteArray document =
            test::svg("width=\"8\" height=\"8\"", "<image width=\"8\" height=\"8\" xlink:href=\"" + reference + "\"/>");
        test::writeFile(folder / "document.svg", document.toStdString());
        for (const Rasterizer::Source& source :
             {Rasterizer::Source(document), Rasterizer::Source(folder / "document.svg")}) {
            const auto image = Rasterizer::draw(source, Format::svg, {RasterRule::Kind::enlarge, 8});
            ASSERT_TRUE(image);
            EXPECT_EQ(image->pixel(4, 4), 0U) << reference.toStdString();
        }
    }
    const QByteArray embedded = "data:image/png;base64," + picture.toBase64();
    const auto image = draw(
        test::svg("width=\"8\" height=\"8\"", "<image width=\"8\" height=\"8\" xlink:href=\"" + embedded + "\"/>"), 8);
    ASSERT_TRUE(image);
    EXPECT_EQ(qAlpha(image->pixel(4, 4)), 255);
}

TEST(Rasterizer, SurvivesHostileDocuments) {
    QByteArray entities("<!DOCTYPE svg [<!ENTITY a0 \"ha\">");
    for (int i = 1; i < 12; ++i) {
        entities += "<!ENTITY a" + QByteArray::number(i) + " \"";
        for (int k = 0; k < 10; ++k) entities += "&a" + QByteArray::number(i - 1) + ';';
        entities += "\">";
    }
    entities += "]>" + test::svg("width=\"8\" height=\"8\"", "<text>&a11;</text>");
    const QByteArray outside = "<!DOCTYPE svg [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>" +
                               test::svg("width=\"8\" height=\"8\"", "<text y=\"6\">&x;</text>");
    QByteArray nested;
    constexpr int depth = 100'000;
    for (int i = 0; i < depth; ++i) nested += "<g>";

    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(draw(entities));
    if (const auto image = draw(outside)) {
        for (int y = 0; y < image->height(); ++y)
            for (int x = 0; x < image->width(); ++x) ASSERT_EQ(image->pixel(x, y), 0U);
    }
    EXPECT_FALSE(draw(test::svg("width=\"8\" height=\"8\"", nested)));
    EXPECT_EQ(Rasterizer::draw(test::lockedPdf(), Format::pdf, {RasterRule::Kind::enlarge, 8}).error(),
              Error::locked);
    EXPECT_EQ(draw({}).error(), Error::unreadable);
    EXPECT_LT(time.elapsed(), 10'000);
}

TEST(Rasterizer, EndsSlowDrawingInTimeOrWhenStopped) {
    QElapsedTimer time;
    time.start();
    std::stop_source source;
    const auto slow = [&](std::chrono::milliseconds limit) {
        return Rasterizer::draw(test::slowSvg(), Format::svg, {RasterRule::Kind::enlarge, 4096}, source.get_token(),
                                limit);
    };
    const auto late = slow(700ms);
    ASSERT_FALSE(late);
    EXPECT_EQ(late.error(), Error::notDrawn);
    std::jthread stopper([&] {
        std::this_thread::sleep_for(200ms);
        source.request_stop();
    });
    EXPECT_FALSE(slow(60s));
    EXPECT_LT(time.elapsed(), 10'000);
}

} // namespace

} // namespace quillary
