// Feeds bytes to the whole intake of bitmaps, module and toolkit: from memory as the clipboard brings them, and from a
// file as a tile of the library does. One run for each format, by its seeds.
#include "fuzz/Promise.h"
#include "imaging/BitmapDecoder.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>

using namespace quillary;

namespace {

constexpr int side = 220;

void check(const QImage& picture) {
    fuzz::require(!picture.isNull(), "a picture that is read has pixels");
    fuzz::require(picture.format() == QImage::Format_RGBA8888 || picture.format() == QImage::Format_RGBX8888,
                  "pictures have one of two formats");
    // Every pixel is looked at: one that nobody wrote is found by nobody else.
    quint64 sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const uchar* row = picture.constScanLine(y);
        for (qsizetype i = 0; i < qsizetype(picture.width()) * 4; ++i) sum += row[i];
    }
    static volatile quint64 seen;
    seen = sum;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static const QCoreApplication application(*argc, *argv);
    // Loading the codecs takes longer than an execution may.
    static_cast<void>(BitmapDecoder::decode(QByteArray("none")));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (const auto picture = BitmapDecoder::decode(bytes)) check(*picture);
    if (const auto picture = BitmapDecoder::decodeAsStored(bytes)) check(*picture);
    const auto file = folder.path() / "picture";
    test::writeFile(file, std::string_view(reinterpret_cast<const char*>(data), size));
    const auto small = BitmapDecoder::thumbnail(file, side);
    fuzz::require(small.picture.width() <= side && small.picture.height() <= side, "thumbnails are small");
    return 0;
}
