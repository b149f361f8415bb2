#include "imaging/ImageTransform.h"

#include "imaging/BitmapDecoder.h"
#include "platform/FileAttributes.h"
#include "samples/Pictures.h"
#include "support/TemporaryFolder.h"

#include <QColorSpace>
#include <QImage>
#include <gmock/gmock.h>

namespace quillary {

namespace fs = std::filesystem;

namespace {

using ImageTransform::Operation;
using testing::HasSubstr;

class ImageTransformTest : public testing::Test {
protected:
    fs::path file(const fs::path& name, const QByteArray& bytes) { return test::writeFile(folder / name, bytes); }
    static QImage seen(const fs::path& url) { return BitmapDecoder::decode(url).value_or(QImage()); }

    const test::TemporaryFolder folder;
};

TEST_F(ImageTransformTest, TurnsTheWayItSays) {
    // Red, green, blue and white in reading order.
    const struct {
        Operation operation;
        QSize size;
        std::array<QColor, 4> quarters;
    } rows[] = {
        {Operation::rotateLeft, {32, 64}, {Qt::green, Qt::white, Qt::red, Qt::blue}},
        {Operation::rotateRight, {32, 64}, {Qt::blue, Qt::red, Qt::white, Qt::green}},
        {Operation::flipHorizontal, {64, 32}, {Qt::green, Qt::red, Qt::white, Qt::blue}},
        {Operation::flipVertical, {64, 32}, {Qt::blue, Qt::white, Qt::red, Qt::green}},
    };
    for (const auto& row : rows) {
        const auto url = file("a.png", test::encoded(QImage::fromData(test::orientedJpeg(1)), "PNG"));
        ASSERT_TRUE(ImageTransform::apply(row.operation, url));
        const QImage image = seen(url);
        EXPECT_EQ(image.size(), row.size);
        for (int i = 0; i < 4; ++i) {
            const QColor got =
                image.pixelColor(image.width() * (1 + i % 2 * 2) / 4, image.height() * (1 + i / 2 * 2) / 4);
            EXPECT_NEAR(got.red(), row.quarters[i].red(), 8) << i;
            EXPECT_NEAR(got.green(), row.quarters[i].green(), 8) << i;
            EXPECT_NEAR(got.blue(), row.quarters[i].blue(), 8) << i;
        }
        EXPECT_EQ(ImageTransform::operation(ImageTransform::rawValue(row.operation)), row.operation);
    }
    EXPECT_EQ(ImageTransform::operation(u"Rotate Left"), std::nullopt);
    EXPECT_EQ(ImageTransform::label(Operation::flipVertical), QStringLiteral("Flip Vertical"));
}

TEST_F(ImageTransformTest, GivesTheFirstPixelsBackAfterFourQuarters) {
    QImage wide = test::colourful(33, 14);
    wide.setColorSpace(QColorSpace::AdobeRgb);
    for (const QImage& image : {test::colourful(30, 21), test::colourful(1, 7, QImage::Format_RGB32), wide}) {
        const auto url = file("a.png", test::encoded(image, "PNG"));
        platform::setAttribute(url, "com.tamsel.quillary.source", "svg");
        fs::permissions(url, fs::perms::owner_read | fs::perms::owner_write);
        const QImage before = BitmapDecoder::decodeAsStored(url).value();
        for (int i = 0; i < 4; ++i) ASSERT_TRUE(ImageTransform::apply(Operation::rotateLeft, url));
        EXPECT_EQ(BitmapDecoder::decodeAsStored(url).value(), before);
        EXPECT_EQ(BitmapDecoder::decodeAsStored(url)->colorSpace(), before.colorSpace());
        EXPECT_EQ(platform::attribute(url, "com.tamsel.quillary.source"), "svg");
        EXPECT_EQ(fs::status(url).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    }
}

TEST_F(ImageTransformTest, StandsUprightFirst) {
    const auto url = file("turned.jpg", test::orientedJpeg(6));
    const QImage upright = seen(url);
    ASSERT_TRUE(ImageTransform::apply(Operation::flipHorizontal, url));
    EXPECT_EQ(seen(url), upright.mirrored(true, false).convertToFormat(upright.format()));
    EXPECT_TRUE(test::readFile(url).starts_with("\x89PNG"));
}

TEST_F(ImageTransformTest, WrapsVectorsInAGroup) {
    const struct {
        const char* attributes;
        Operation operation;
        const char* root;
        const char* transform;
    } rows[] = {
        {"viewBox=\"0 0 24 24\"", Operation::rotateRight, "viewBox=\"0 0 24 24\"", "translate(24,0) rotate(90)"},
        {"viewBox=\"0,0 , 100 50.5\" width=\"10cm\"", Operation::rotateLeft,
         "viewBox=\"0 0 50.5 100\" width=\"50.5\" height=\"100\"", "translate(0,100) rotate(-90)"},
        {"width=\"64px\" height=\"32px\"", Operation::rotateRight, "width=\"32\" height=\"64\" viewBox=\"0 0 32 64\"",
         "translate(32,0) rotate(90)"},
        {"viewBox=\"of four wise words\" width=\"8\" height=\"4\"", Operation::flipHorizontal,
         "width=\"8\" height=\"4\"", "translate(8,0) scale(-1,1)"},
        {"viewBox=\"5 5 10 20\"", Operation::flipVertical, "viewBox=\"5 5 10 20\"", "translate(0,20) scale(1,-1)"},
    };
    for (const auto& row : rows) {
        const auto url = file(
            "a.SVG", QByteArray("<!DOCTYPE svg [<!ENTITY e \"x\">]>\n<svg xmlns=\"http://www.w3.org/2000/svg\" ") +
                         row.attributes +
                         "><!--c--><metadata><m:o xmlns:m=\"urn:m\"/></metadata><path d=\"M0\"/>&e;<defs/>t</svg>");
        ASSERT_TRUE(ImageTransform::apply(row.operation, url)) << row.attributes;
        const std::string text = test::readFile(url);
        EXPECT_THAT(text, HasSubstr(row.root));
        EXPECT_THAT(text, HasSubstr("<metadata><m:o xmlns:m=\"urn:m\"/></metadata><defs/><g transform=\"" +
                                    std::string(row.transform) + "\"><!--c--><path d=\"M0\"/>&e;t</g></svg>"));
    }
    EXPECT_EQ(ImageTransform::clean(512), "512");
    EXPECT_EQ(ImageTransform::clean(512.5), "512.5");
    EXPECT_EQ(ImageTransform::clean(0.1), "0.1");
}

TEST_F(ImageTransformTest, TurnsFilesWhoseNamesAreNoText) {
    const auto bitmap = file("caf\xe9.bmp", test::encoded(test::colourful(20, 10), "BMP"));
    const auto vector = file("caf\xe9.svg", test::svg("viewBox=\"0 0 20 10\""));
    EXPECT_TRUE(ImageTransform::apply(Operation::rotateLeft, bitmap));
    EXPECT_EQ(seen(bitmap).size(), QSize(10, 20));
    EXPECT_TRUE(ImageTransform::apply(Operation::rotateLeft, vector));
    EXPECT_THAT(test::readFile(vector), HasSubstr("viewBox=\"0 0 10 20\""));
}

TEST_F(ImageTransformTest, LeavesWhatItCannotTurn) {
    const QByteArray picture = test::encoded(test::colourful(20, 10), "PNG");
    const std::pair<const char*, QByteArray> rows[] = {
        {"other.svg", "<html viewBox=\"0 0 1 1\"/>"},
        {"prefixed.svg", "<s:svg xmlns:s=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1 1\"/>"},
        {"flat.svg", test::svg("viewBox=\"0 0 10 0\"")},
        {"sizeless.svg", test::svg("")},
        {"words.svg", test::svg("viewBox=\"of four wise words\"")},
        {"infinite.svg", test::svg("viewBox=\"0 0 1e999 1\"")},
        {"torn.svg", "<svg viewBox=\"0 0 1 1\"><g></svg>"},
        {"bitmap.svg", picture},
        {"cut.png", picture.left(picture.size() / 2)},
        {"empty.png", ""},
        {"page.pdf", test::pdf(10, 10)},
        {"locked.png", picture},
        {"locked.svg", test::svg("viewBox=\"0 0 1 1\"")},
    };
    for (const auto& [name, bytes] : rows) {
        const auto url = file(name, bytes);
        if (std::string_view(name).starts_with("locked")) fs::permissions(url, fs::perms::owner_read);
        const auto date = fs::last_write_time(url);
        for (const Operation operation : ImageTransform::allOperations)
            EXPECT_FALSE(ImageTransform::apply(operation, url)) << name;
        EXPECT_EQ(test::readFile(url), bytes.toStdString()) << name;
        EXPECT_EQ(fs::last_write_time(url), date) << name;
    }
    EXPECT_FALSE(ImageTransform::apply(Operation::rotateLeft, folder / "absent.png"));
    EXPECT_FALSE(ImageTransform::apply(Operation::rotateLeft, folder.path()));
}

TEST_F(ImageTransformTest, FollowsALinkAndLeavesItOne) {
    const auto target = file("elsewhere/a.png", test::encoded(test::colourful(20, 10), "PNG"));
    fs::create_symlink(target, folder / "link.png");
    ASSERT_TRUE(ImageTransform::apply(Operation::rotateLeft, folder / "link.png"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.png"));
    EXPECT_EQ(seen(target).size(), QSize(10, 20));
}

} // namespace

} // namespace quillary
