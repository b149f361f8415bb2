#include "samples/Pictures.h"

#include <QBuffer>
#include <QPainter>
#include <QtEndian>
#include <array>

namespace quillary::test {

namespace {

QByteArray bigEndian(quint32 value) {
    std::array<char, 4> bytes;
    qToBigEndian(value, bytes.data());
    return {bytes.data(), bytes.size()};
}

quint32 crc(const QByteArray& bytes) {
    quint32 rest = ~0U;
    for (const char byte : bytes) {
        rest ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit) rest = rest & 1 ? rest >> 1 ^ 0xedb88320U : rest >> 1;
    }
    return ~rest;
}

QByteArray chunk(const QByteArray& type, const QByteArray& content) {
    return bigEndian(static_cast<quint32>(content.size())) + type + content + bigEndian(crc(type + content));
}

const QByteArray signature("\x89PNG\r\n\x1a\n", 8);

QByteArray header(quint32 width, quint32 height) {
    return chunk("IHDR", bigEndian(width) + bigEndian(height) + QByteArray("\x08\x06\0\0\0", 5));
}

/// Objects from number 1 on, with the table of their places.
QByteArray pdfOf(const QList<QByteArray>& objects, const QByteArray& trailer) {
    QByteArray file("%PDF-1.4\n");
    QByteArray table;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    const QByteArray count = QByteArray::number(objects.size() + 1);
    return file + "xref\n0 " + count + "\n0000000000 65535 f \n" + table + "trailer\n<</Root 1 0 R /Size " + count +
           trailer + ">>\nstartxref\n" + start + "\n%%EOF\n";
}

} // namespace

QByteArray encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format)) qFatal("no writer for %s", format);
    return bytes;
}

QImage colourful(int width, int height, QImage::Format format) {
    QImage image(width, height, QImage::Format_RGBA8888);
    for (int y = 0; y < height; ++y) {
        uchar* row = image.scanLine(y);
        for (int x = 0; x < width; ++x) {
            row[x * 4] = static_cast<uchar>(x * 37 + y * 11);
            row[x * 4 + 1] = static_cast<uchar>(x * 5 + y * 71);
            row[x * 4 + 2] = static_cast<uchar>(x * y + 13);
            row[x * 4 + 3] = static_cast<uchar>(x * 3 + y * 17);
        }
    }
    return image.convertToFormat(format);
}

QByteArray orientedJpeg(int orientation) {
    QImage image(64, 32, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(0, 0, 32, 16, Qt::red);
    painter.fillRect(32, 0, 32, 16, Qt::green);
    painter.fillRect(0, 16, 32, 16, Qt::blue);
    painter.fillRect(32, 16, 32, 16, Qt::white);
    painter.end();
    QByteArray tag("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
    tag += static_cast<char>(orientation);
    tag += QByteArray("\0\0\0\0\0\0", 6);
    const auto size = static_cast<char>(tag.size() + 2);
    return encoded(image, "JPEG").insert(2, QByteArray("\xff\xe1\0", 3) + size + tag);
}

QByteArray turnedAvif() {
    return QByteArray::fromBase64(
        "AAAAHGZ0eXBhdmlmAAAAAGF2aWZtaWYxbWlhZgAAAPRtZXRhAAAAAAAAACFoZGxyAAAAAAAAAABwaWN0AAAAAAAAAAAAAAAAAAAAAA5waXRt"
        "AAAAAAABAAAAImlsb2MAAAAAREAAAQABAAAAAAEOAAEAAAAKAAAAJAAAACNpaW5mAAAAAAABAAAAFWluZmUCAAAAAAEAAGF2MDEAAAAAdGlw"
        "cnAAAABUaXBjbwAAABNjb2xybmNseAACAAIABoAAAAAMYXYxQ4EADAAAAAAUaXNwZQAAAAAAAAAQAAAACAAAABBwaXhpAAAAAAMICAgAAAAJ"
        "aXJvdAEAAAAYaXBtYQAAAAAAAAABAAEFgYIDhIUAAAAsbWRhdBIACgUYDL+wITIZFkAGGGGEALcZy6+bPxpdJH4xk+9UIdUDMA==");
}

QByteArray turnedHeic() {
    return QByteArray::fromBase64(
        "AAAAHGZ0eXBoZWljAAAAAG1pZjFoZWljbWlhZgAAAbRtZXRhAAAAAAAAACFoZGxyAAAAAAAAAABwaWN0AAAAAAAAAAAAAAAAAAAAAA5waXRt"
        "AAAAAAACAAAAEGlkYXQAAAAAABAACAAAADhpbG9jAQAAAERAAAIAAQAAAAAAAAHOAAEAAAAKAAAAOwACAAEAAAAAAAAAAQAAAAAAAAAIAAAA"
        "OGlpbmYAAAAAAAIAAAAVaW5mZQIAAAEAAQAAaHZjMQAAAAAVaW5mZQIAAAAAAgAAZ3JpZAAAAADfaXBycAAAALxpcGNvAAAAc2h2Y0MBA3AA"
        "AAAAAAAAAAAe8AD8/fj4AAAPAyAAAQAYQAEMAf//A3AAAAMAkAAAAwAAAwAeugJAIQABACdCAQEDcAAAAwCQAAADAAADAB6gIIEFluqumubA"
        "gAAAAwCAAAADAIQiAAEABkQBwXPBiQAAABRpc3BlAAAAAAAAAEAAAABAAAAAFGlzcGUAAAAAAAAAEAAAAAgAAAAQcGl4aQAAAAADCAgIAAAA"
        "CWlyb3QBAAAAG2lwbWEAAAAAAAAAAgABAoECAAIDA4SFAAAAGmlyZWYAAAAAAAAADmRpbWcAAgABAAEAAABDbWRhdAAAADcoAa8JyF0Y0COb"
        "Uf8Tv/vPoakzLfRInakv/OWs+7Xz6nETHfOVC/fU2EToy4azMmWA4zI73UMw");
}

QByteArray pngHeader(quint32 width, quint32 height) {
    return signature + header(width, height) + chunk("IDAT", "no zlib stream");
}

QByteArray pngWithProfileBomb(qsizetype size) {
    constexpr qsizetype lengthOfSize = 4;
    const QByteArray bomb = QByteArray("p\0\0", 3) + qCompress(QByteArray(size, '\0')).mid(lengthOfSize);
    QByteArray png = encoded(colourful(2, 2), "PNG");
    return png.insert(signature.size() + header(2, 2).size(), chunk("iCCP", bomb));
}

namespace {

template <typename Number>
QByteArray littleEndian(Number number) {
    number = qToLittleEndian(number);
    return QByteArray(reinterpret_cast<const char*>(&number), sizeof number);
}

/// An 8-bit lookup table from RGB to Lab in which red and green are swapped.
QByteArray swappingTable() {
    QByteArray table("mft1\0\0\0\0\3\3\2\0", 12);
    for (int i = 0; i < 9; ++i) table += bigEndian(i % 4 == 0 ? 0x10000 : 0);
    QByteArray linear;
    for (int i = 0; i < 256; ++i) linear += static_cast<char>(i);
    table += linear.repeated(3);
    struct Lab {
        int l, a, b;
    };
    // The corners of the sRGB cube, blue changing first, then what stands for red.
    for (const Lab& corner : {Lab{0, 0, 0}, {30, 68, -112}, {54, 81, 70}, {60, 94, -61},
                              Lab{88, -79, 81}, {91, -51, -15}, {98, -16, 93}, {100, 0, 0}}) {
        table += static_cast<char>(corner.l * 255 / 100);
        table += static_cast<char>(corner.a + 128);
        table += static_cast<char>(corner.b + 128);
    }
    return table + linear.repeated(3);
}

QByteArray perceptualProfile() {
    const QByteArray table = swappingTable();
    const QByteArray tags = bigEndian(1) + "A2B0" + bigEndian(144) +
                            bigEndian(static_cast<quint32>(table.size()));
    QByteArray header(128, '\0');
    header.replace(0, 4, bigEndian(static_cast<quint32>(144 + table.size())));
    header.replace(8, 4, QByteArray("\2\0\0\0", 4));
    header.replace(12, 12, "scnrRGB Lab ");
    header.replace(36, 4, "acsp");
    for (const auto& [at, value] : {std::pair{68, 0xf6d6U}, {72, 0x10000U}, {76, 0xd32dU}})
        header.replace(at, 4, bigEndian(value));
    return header + tags + table;
}

} // namespace

QByteArray pngWithPerceptualProfile() {
    constexpr qsizetype lengthOfSize = 4;
    QImage red(1, 1, QImage::Format_RGB32);
    red.fill(Qt::red);
    const QByteArray profile = QByteArray("p\0\0", 3) + qCompress(perceptualProfile()).mid(lengthOfSize);
    return encoded(red, "PNG").insert(signature.size() + header(1, 1).size(), chunk("iCCP", profile));
}

QByteArray gzipped(const QByteArray& bytes) {
    const QByteArray stream = qCompress(bytes);
    // Without the length before it, the header of the format and the sum behind it.
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\3", 10) + stream.sliced(6, stream.size() - 10) + littleEndian(crc(bytes)) +
           littleEndian(static_cast<quint32>(bytes.size()));
}

QByteArray icon(const QList<QImage>& pictures) {
    QByteArray folder = littleEndian(quint16(0)) + littleEndian(quint16(1)) + littleEndian(static_cast<quint16>(pictures.size()));
    QByteArray contents;
    const auto begin = static_cast<quint32>(folder.size() + 16 * pictures.size());
    for (const QImage& picture : pictures) {
        const QByteArray png = encoded(picture, "PNG");
        folder += static_cast<char>(picture.width() & 0xff);
        folder += static_cast<char>(picture.height() & 0xff);
        folder += littleEndian(quint16(0)) + littleEndian(quint16(1)) + littleEndian(quint16(32)) +
                  littleEndian(static_cast<quint32>(png.size())) + littleEndian(begin + static_cast<quint32>(contents.size()));
        contents += png;
    }
    return folder + contents;
}

QByteArray appleIcon() {
    const auto entry = [](const char* type, int side, QColor colour) {
        QImage picture(side, side, QImage::Format_ARGB32);
        picture.fill(colour);
        const QByteArray png = encoded(picture, "PNG");
        return type + bigEndian(static_cast<quint32>(png.size() + 8)) + png;
    };
    const QByteArray entries = entry("icp4", 16, Qt::black) + entry("ic07", 128, Qt::white) + entry("icp5", 32, Qt::black);
    return "icns" + bigEndian(static_cast<quint32>(entries.size() + 8)) + entries;
}

QByteArray pdf(int width, int height) {
    const QByteArray w = QByteArray::number(width);
    const QByteArray h = QByteArray::number(height);
    const QByteArray drawing = "/G gs 1 0 0 rg 0 0 " + w + ' ' + QByteArray::number(height / 2) + " re f";
    return pdfOf({"<</Type /Catalog /Pages 2 0 R>>", "<</Type /Pages /Kids [3 0 R] /Count 1>>",
                  "<</Type /Page /Parent 2 0 R /MediaBox [0 0 " + w + ' ' + h +
                      "] /Contents 4 0 R /Resources <</ExtGState <</G <</ca 0.5>>>>>>>>",
                  "<</Length " + QByteArray::number(drawing.size()) + ">>\nstream\n" + drawing + "\nendstream"},
                 {});
}

QByteArray lockedPdf() {
    // No password makes keys that agree with these.
    const QByteArray key = QByteArray(32, 'q').toHex();
    return pdfOf({"<</Type /Catalog /Pages 2 0 R>>", "<</Type /Pages /Kids [3 0 R] /Count 1>>",
                  "<</Type /Page /Parent 2 0 R /MediaBox [0 0 10 10]>>",
                  "<</Filter /Standard /V 1 /R 2 /P -4 /O <" + key + "> /U <" + key + ">>>"},
                 " /Encrypt 4 0 R /ID [<00112233445566778899aabbccddeeff> <00112233445566778899aabbccddeeff>]");
}

QByteArray svg(const QByteArray& attributes, const QByteArray& content) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" " + attributes +
           '>' + content + "</svg>";
}

QByteArray slowSvg() {
    QByteArray content =
        "<filter id=\"f\" x=\"0\" y=\"0\" width=\"1\" height=\"1\"><feTurbulence baseFrequency=\"0.05\" "
        "numOctaves=\"9\"/></filter>";
    constexpr int layers = 300;
    for (int i = 0; i < layers; ++i) content += "<rect width=\"100\" height=\"100\" filter=\"url(#f)\"/>";
    return svg("width=\"100\" height=\"100\"", content);
}

} // namespace quillary::test
