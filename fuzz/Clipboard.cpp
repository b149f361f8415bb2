// Fills a clipboard with types and data that the bytes choose and reads an image from it: file lists and web addresses,
// names, HTML, SVG in text, declared bitmaps. What is drawn is drawn by the helper process, as in the panel.
#include "fuzz/Promise.h"
#include "imaging/ImageIntake.h"
#include "support/FakePasteboard.h"

#include <QCoreApplication>
#include <array>

using namespace quillary;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

// An entry: the number of its type, two bytes of length, the data.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array types{"text/plain;charset=utf-8",
                                      "text/uri-list",
                                      "x-special/gnome-copied-files",
                                      "text/html",
                                      "text/x-moz-url",
                                      "image/svg+xml",
                                      "image/png",
                                      "image/tiff",
                                      "image/jpeg",
                                      "UTF8_STRING",
                                      "image/bmp",
                                      "application/x-qt-image"};
    test::FakePasteboard clipboard;
    while (size >= 3) {
        const std::size_t length = std::min<std::size_t>(data[1] | data[2] << 8, size - 3);
        clipboard.put(QString::fromLatin1(types[data[0] % types.size()]),
                      QByteArray(reinterpret_cast<const char*>(data) + 3, static_cast<qsizetype>(length)));
        data += 3 + length;
        size -= 3 + length;
    }
    const QString name = ImageIntake::suggestedName(clipboard);
    fuzz::require(!name.isEmpty(), "there is always a name");
    constexpr int longEdge = 64;
    if (const auto image = ImageIntake::read(clipboard, longEdge)) {
        fuzz::require(!image->image.isNull() && !image->name.isEmpty(), "an image has pixels and a name");
        fuzz::require(QSizeF(image->image.size()) == image->pixelSize, "and knows its size");
    }
    return 0;
}
