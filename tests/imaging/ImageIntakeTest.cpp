#include "imaging/ImageIntake.h"

#include "base/Text.h"
#include "samples/Pictures.h"
#include "support/FakePasteboard.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillary {

namespace {

using test::FakePasteboard;

constexpr int longEdge = 512;

std::string text(const QString& string) {
    return string.toStdString();
}

/// One line that tells what was staged, or why not.
std::string told(const std::expected<PastedImage, ImageIntakeError>& result) {
    if (!result) return text(result.error().description());
    const auto& image = *result;
    const QString format = image.image.format() == QImage::Format_RGBA8888   ? QStringLiteral("rgba")
                           : image.image.format() == QImage::Format_RGBX8888 ? QStringLiteral("rgbx")
                           : image.image.format() == QImage::Format_ARGB32_Premultiplied
                               ? QStringLiteral("premultiplied")
                               : QStringLiteral("other");
    return text(QStringLiteral("%1×%2 %3%4 “%5” %6 %7")
                    .arg(image.pixelSize.width())
                    .arg(image.pixelSize.height())
                    .arg(format, image.hasAlphaChannel ? QStringLiteral(" alpha") : QString(), image.name,
                         image.formatLabel, image.provenance()));
}

QByteArray png(int width, int height) {
    return test::encoded(test::colourful(width, height), "PNG");
}
QByteArray svgDocument() {
    return test::svg("width=\"100\" height=\"50\"", "<rect width=\"9\" height=\"9\"/>");
}
QByteArray svgWithText(const QByteArray& before, const QByteArray& after) {
    return before + svgDocument() + after;
}

const QString pngType = QStringLiteral("image/png");
const QString tiffType = QStringLiteral("image/tiff");
const QString jpegType = QStringLiteral("image/jpeg");
const QString svgType = QStringLiteral("image/svg+xml");
const QString pdfType = QStringLiteral("application/pdf");
const QString textType = QStringLiteral("text/plain;charset=utf-8");
const QString urlType = QStringLiteral("text/uri-list");

TEST(ImageIntake, TakesTheFirstThatYieldsAnImage) {
    const QByteArray tiff = test::encoded(test::colourful(5, 4), "TIFF");
    const QByteArray jpeg = test::encoded(test::colourful(8, 8, QImage::Format_RGB32), "JPEG");
    const QByteArray bmp = test::encoded(test::colourful(6, 6, QImage::Format_RGB32), "BMP");
    const QByteArray webAddress("https://example.org/a/my%20logo.png\r\n");
    const struct {
        const char* what;
        FakePasteboard pasteboard;
        const char* expected;
    } rows[] = {
        {"nothing", {}, "No image on the clipboard."},
        {"only text", {{textType, "hello"}}, "No image on the clipboard."},
        {"PNG before TIFF, whatever the owner's order",
         {{tiffType, tiff}, {pngType, png(3, 2)}},
         "3×2 rgba alpha “Pasted Image” PNG Clipboard bitmap · image/png"},
        {"the other spelling of a type",
         {{QStringLiteral("public.png"), png(3, 2)}},
         "3×2 rgba alpha “Pasted Image” PNG Clipboard bitmap · image/png"},
        {"one pixel", {{pngType, png(1, 1)}}, "1×1 rgba alpha “Pasted Image” PNG Clipboard bitmap · image/png"},
        {"JPEG has no alpha", {{jpegType, jpeg}}, "8×8 rgbx “Pasted Image” JPEG Clipboard bitmap · image/jpeg"},
        {"a broken PNG passes to TIFF",
         {{pngType, png(30, 30).first(200)}, {tiffType, tiff}},
         "5×4 rgba alpha “Pasted Image” TIFF Clipboard bitmap · image/tiff"},
        {"an empty PNG passes to SVG",
         {{pngType, test::pngHeader(0, 5)}, {svgType, svgDocument()}},
         "512×256 premultiplied alpha “Pasted Image” SVG Rasterized from image/svg+xml"},
        {"SVG before PDF",
         {{pdfType, test::pdf(20, 10)}, {svgType, svgDocument()}},
         "512×256 premultiplied alpha “Pasted Image” SVG Rasterized from image/svg+xml"},
        {"a broken SVG passes to PDF",
         {{svgType, "<svg"}, {pdfType, test::pdf(20, 10)}},
         "512×256 premultiplied alpha “Pasted Image” PDF Rasterized from application/pdf"},
        {"a bitmap takes the address's name",
         {{urlType, webAddress}, {pngType, png(3, 2)}},
         "3×2 rgba alpha “my logo” PNG Clipboard bitmap · image/png"},
        {"a vector does not",
         {{urlType, webAddress}, {svgType, svgDocument()}},
         "512×256 premultiplied alpha “Pasted Image” SVG Rasterized from image/svg+xml"},
        {"SVG source in text",
         {{textType, svgWithText("see: ", " – that was it")}},
         "512×256 premultiplied alpha “Pasted Image” SVG Rasterized from image/svg+xml"},
        {"tags in capitals are no SVG", {{textType, svgDocument().toUpper()}}, "No image on the clipboard."},
        {"closing before opening",
         {{textType, "</svg> and <svg width=\"9\" height=\"9\">"}},
         "No image on the clipboard."},
        {"text of the longest length",
         {{textType, svgWithText({}, QByteArray(3'999'999 - svgDocument().size(), ' '))}},
         "512×256 premultiplied alpha “Pasted Image” SVG Rasterized from image/svg+xml"},
        {"text one longer",
         {{textType, svgWithText({}, QByteArray(4'000'000 - svgDocument().size(), ' '))}},
         "No image on the clipboard."},
        {"any other picture, named after the first type",
         {{QStringLiteral("text/html"), "<b>"}, {QStringLiteral("image/bmp"), bmp}},
         "6×6 rgbx “Pasted Image” HTML Clipboard bitmap · text/html"},
        {"the toolkit's own picture",
         {{QStringLiteral("application/x-qt-image"), bmp}},
         "6×6 rgbx “Pasted Image” X-QT-IMAGE Clipboard bitmap · application/x-qt-image"},
    };
    for (auto row : rows) EXPECT_EQ(told(ImageIntake::read(row.pasteboard, longEdge)), row.expected) << row.what;
}

TEST(ImageIntake, PrefersAFileOnThePasteboardAndTriesNothingElse) {
    const test::TemporaryFolder folder;
    const auto put = [&](const char* name, const QByteArray& bytes) {
        test::writeFile(folder / name, bytes);
        return QByteArray("file://" + QByteArray::fromStdString((folder / name).native()).toPercentEncoding("/"));
    };
    const QByteArray notes = put("notes.txt", "text");
    const QByteArray whole = put("Ä #1.png", png(4, 3));
    const QByteArray broken = put("broken.png", "nothing");
    const QByteArray gone = "file:///nowhere/x.png";

    const auto read = [&](const QByteArray& urls) {
        FakePasteboard pasteboard{{urlType, urls}, {pngType, png(9, 9)}};
        return told(ImageIntake::read(pasteboard, longEdge));
    };
    EXPECT_EQ(read(notes + "\r\n" + whole + "\r\n"),
              "4×3 rgba alpha “Ä #1” PNG File · " + (folder / "Ä #1.png").native());
    EXPECT_EQ(read(broken), "Could not read broken.png.");
    EXPECT_EQ(read(notes + "\r\n" + gone), "9×9 rgba alpha “notes” PNG Clipboard bitmap · image/png");
}

TEST(ImageIntake, ReadsFilesByTheirType) {
    const test::TemporaryFolder folder;
    const QImage opaque = test::colourful(10, 6, QImage::Format_RGB32);
    const struct {
        const char* name;
        QByteArray bytes;
        std::string expected; ///< {} stands for the path
    } rows[] = {
        {"a.b.png", png(7, 5), "7×5 rgba alpha “a.b” PNG File · {}"},
        {"Photo.JPG", test::encoded(opaque, "JPEG"), "10×6 rgbx “Photo” JPG File · {}"},
        {"scan.tif", test::encoded(opaque, "TIFF"), "10×6 rgbx “scan” TIF File · {}"},
        {"old.bmp", test::encoded(opaque, "BMP"), "10×6 rgbx “old” BMP File · {}"},
        {"caf\xe9.bmp", test::encoded(opaque, "BMP"), "10×6 rgbx “caf\ufffd” BMP File · {}"},
        {"caf\xe9.svg", svgDocument(), "512×256 premultiplied alpha “caf\ufffd” SVG Rasterized from caf\ufffd.svg"},
        {"brackets[1]", png(2, 2), "2×2 rgba alpha “brackets[1]”  File · {}"},
        {"logo.svg", svgDocument(), "512×256 premultiplied alpha “logo” SVG Rasterized from logo.svg"},
        {"logo.svgz", test::gzipped(svgDocument()),
         "512×256 premultiplied alpha “logo” SVGZ Rasterized from logo.svgz"},
        {"page.PDF", test::pdf(30, 60), "256×512 premultiplied alpha “page” PDF Rasterized from page.PDF"},
        {"really-a-bitmap.svg", png(7, 5), "7×5 rgba alpha “really-a-bitmap” SVG File · {}"},
        {"empty.png", {}, "Could not read empty.png."},
        {"no-columns.png", test::pngHeader(0, 8), "That image had no pixels."},
        {"no-rows.png", test::pngHeader(8, 0), "That image had no pixels."},
        {"huge.png", test::pngHeader(50'000, 50'000), "Could not read huge.png."},
        {"zero.svg", test::svg("width=\"0\" height=\"5\""), "That image had no pixels."},
        {"far-too-large.svg", test::svg("width=\"1000000000\" height=\"1000000000\""), "That image had no pixels."},
        {"broken.svg", svgDocument().chopped(8), "Could not read broken.svg."},
        {"svg.png", svgDocument(), "Could not read svg.png."},
        {"locked.pdf", test::lockedPdf(), "locked.pdf is locked with a password."},
        {"no.pdf", "%PDF-1.4\nnothing", "Could not read no.pdf."},
    };
    for (const auto& row : rows) {
        const auto file = folder / row.name;
        test::writeFile(file, row.bytes);
        std::string expected = row.expected;
        if (const auto at = expected.find("{}"); at != std::string::npos) expected.replace(at, 2, text(shown(file)));
        const auto result = ImageIntake::read(file, longEdge);
        EXPECT_EQ(told(result), expected);
        if (result) {
            EXPECT_EQ(result->sourceBytes, row.bytes.size()) << row.name;
        } else {
            const bool isLocked = result.error().kind == ImageIntakeError::Kind::lockedFile;
            EXPECT_EQ(text(result.error().recoverySuggestion()),
                      isLocked ? "Save a copy of it without the password, then use that." : "Try a PNG, TIFF or JPEG.");
        }
    }
}

TEST(ImageIntake, ReadsDataOfADeclaredType) {
    const struct {
        QByteArray data;
        QString type;
        const char* expected;
    } rows[] = {
        {png(3, 2), QStringLiteral("public.png"), "3×2 rgba alpha “name” PNG Clipboard bitmap · public.png"},
        {svgDocument(), QStringLiteral("public.svg-image"),
         "512×256 premultiplied alpha “name” SVG Rasterized from public.svg-image"},
        {test::gzipped(svgDocument()), QStringLiteral("image/svg+xml-compressed"),
         "512×256 premultiplied alpha “name” SVG Rasterized from image/svg+xml-compressed"},
        {test::pdf(20, 10), pdfType, "512×256 premultiplied alpha “name” PDF Rasterized from application/pdf"},
        {"junk", pngType, "No image on the clipboard."},
        {"junk", svgType, "No image on the clipboard."},
        {test::pngHeader(0, 1), pngType, "That image had no pixels."},
        {test::svg("width=\"0\" height=\"0\""), svgType, "That image had no pixels."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(told(ImageIntake::read(row.data, QStringLiteral("name"), row.type, longEdge)), row.expected);
}

} // namespace

} // namespace quillary
