#include "imaging/BitmapDecoder.h"

#include "base/Text.h"
#include "imaging/CodecModule.h"
#include "imaging/RasterSize.h"
#include "imaging/TgaReader.h"
#include "imaging/codecs/Codecs.h"
#include "imaging/png/Chunk.h"
#include "imaging/reduced/ReducedPicture.h"
#include "platform/OpenFile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QImageReader>
#include <QTransform>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>

namespace quillary::BitmapDecoder {

namespace {

std::unique_ptr<QIODevice> device(const Source& source) {
    if (const auto* bytes = std::get_if<QByteArray>(&source)) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(*bytes);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    auto file = std::make_unique<QFile>();
    if (!platform::openForReading(*file, std::get<std::filesystem::path>(source))) return nullptr;
    return file;
}

QByteArray firstBytes(const Source& source) {
    const auto from = device(source);
    constexpr qint64 enough = 32;
    return from ? from->read(enough) : QByteArray();
}

/// A PNG header that tells a width or height of 0, which no decoder accepts.
bool isEmptyPng(const QByteArray& start) {
    constexpr qsizetype sizes = 16;
    if (!start.startsWith("\x89PNG\r\n\x1a\n") || start.size() < sizes + 8) return false;
    return qFromBigEndian<quint32>(start.constData() + sizes) == 0 ||
           qFromBigEndian<quint32>(start.constData() + sizes + 4) == 0;
}

/// Upright, for an orientation as EXIF counts it.
QImage upright(QImage image, int orientation) {
    if (orientation < 2 || orientation > 8) return image;
    switch (orientation) {
    case 2:
        image.mirror(true, false);
        break;
    case 3:
        image.mirror(true, true);
        break;
    case 4:
        image.mirror(false, true);
        break;
    default:
        image = image.transformed(QTransform().rotate(orientation == 5 || orientation == 6 ? 90 : 270));
        if (orientation == 5 || orientation == 7) image.mirror(true, false);
    }
    return image;
}

enum class Colours { srgb, asStored };

/// The space of RGB samples with this profile; invalid when they are others, or it is more than the toolkit knows.
QColorSpace spaceOf(std::span<const std::byte> profile) {
    constexpr std::size_t kindAt = 16;
    if (profile.size() < kindAt + 4 || std::memcmp(profile.data() + kindAt, "RGB ", 4) != 0) return {};
    return QColorSpace::fromIccProfile(
        QByteArray(reinterpret_cast<const char*>(profile.data()), static_cast<qsizetype>(profile.size())));
}

std::expected<QImage, Error> decodePicture(codecs::Picture& picture, std::stop_token stop,
                                           Colours colours = Colours::srgb) {
    const codecs::Header header = picture.header();
    if (header.width < 1 || header.height < 1) return std::unexpected(Error::empty);
    if (!isDrawable(header.width, header.height)) return std::unexpected(Error::unreadable);
    QImage image(static_cast<int>(header.width), static_cast<int>(header.height),
                 header.hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
    if (image.isNull()) return std::unexpected(Error::unreadable);
    const QColorSpace space = spaceOf(header.colourProfile);
    const bool kept = space == QColorSpace(QColorSpace::SRgb) || (colours == Colours::asStored && space.isValid());
    if (!picture.decode(image.bits(), static_cast<std::size_t>(image.bytesPerLine()), kept, std::move(stop)))
        return std::unexpected(Error::unreadable);
    if (kept && colours == Colours::asStored) image.setColorSpace(space);
    return upright(std::move(image), header.orientation);
}

/// The toolkit's readers that draw nothing but bitmaps.
bool isBitmapFormat(const QByteArray& format) {
    static constexpr std::array known{"bmp", "cur", "gif", "icns", "ico",  "jpeg", "jpg",  "pbm", "pgm",
                                      "png", "ppm", "tif", "tiff", "wbmp", "webp", "xbm",  "xpm"};
    return std::ranges::any_of(known, [&](const char* name) { return format == name; });
}

/// The largest picture that the file holds, the first of equal ones. An icon holds several, and not every format tells
/// their sizes before they are read.
QImage readLargest(QImageReader& reader) {
    const QByteArray format = reader.format();
    const bool icon = format == "ico" || format == "icns";
    constexpr int most = 64;
    const int count = icon ? std::clamp(reader.imageCount(), 1, most) : 1;
    const auto area = [](QSize size) { return qint64(size.width()) * size.height(); };
    QImage largest;
    for (int index = 0; index < count; ++index) {
        if (index > 0 && !reader.jumpToImage(index)) break;
        const QSize size = reader.size();
        if (size.isValid() && (!isDrawable(size.width(), size.height()) || area(size) <= area(largest.size()))) continue;
        const QImage picture = reader.read();
        if (area(picture.size()) > area(largest.size())) largest = picture;
    }
    return largest;
}

std::expected<QImage, Error> decodeWithToolkit(const Source& source) {
    const auto from = device(source);
    if (!from) return std::unexpected(Error::unreadable);
    QImageReader reader(from.get());
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (std::holds_alternative<std::filesystem::path>(source) && !reader.canRead()) {
        // A format without a signature is known by its name alone.
        const auto extension = std::get<std::filesystem::path>(source).extension().native();
        if (!extension.empty()) reader.setFormat(QByteArray::fromStdString(extension.substr(1)).toLower());
    }
    if (!isBitmapFormat(reader.format()) || !reader.canRead()) return std::unexpected(Error::unreadable);
    QImage image = readLargest(reader);
    if (image.isNull()) return std::unexpected(Error::unreadable);
    if (image.colorSpace().isValid() && image.colorSpace() != QColorSpace(QColorSpace::SRgb))
        image.convertToColorSpace(QColorSpace::SRgb);
    image.setColorSpace({});
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
}

/// Within so many pixels, in the shape of the original, which is at least as large.
QImage fitted(const QImage& image, QSize original, int longestSide) {
    if (std::max(image.width(), image.height()) <= longestSide) return image;
    const auto size = RasterRule{RasterRule::Kind::fit, longestSide}(original.width(), original.height());
    if (!size) return image;
    return image.scaled(static_cast<int>(size->width), static_cast<int>(size->height), Qt::IgnoreAspectRatio,
                        Qt::SmoothTransformation);
}

/// The commonest files, read by quicker means. Absent for all others.
std::optional<Reduced> quickThumbnail(const std::filesystem::path& file, int longestSide) {
    constexpr qint64 largest = 64 << 20;
    QFile from;
    if (!platform::openForReading(from, file) || from.size() > largest) return {};
    const QByteArray bytes = from.readAll();
    const std::span data(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                         static_cast<std::size_t>(bytes.size()));
    // A picture an eighth of whose size is a little less than wanted is still sharp on its tile.
    const int least = longestSide - longestSide / 7;
    auto picture = bytes.startsWith("\xff\xd8") ? reduced::readJpeg(data, least) : reduced::readPng(data, longestSide);
    if (!picture) return {};
    QSize original = picture->original;
    if (picture->orientation > 4) original.transpose();
    QImage small = fitted(upright(std::move(picture->image), picture->orientation), original, longestSide);
    if (!picture->profile.isEmpty()) {
        const auto space = QColorSpace::fromIccProfile(picture->profile);
        if (!space.isValid()) return {};
        small.setColorSpace(space);
        if (space != QColorSpace(QColorSpace::SRgb)) small.convertToColorSpace(QColorSpace::SRgb);
        small.setColorSpace({});
    }
    return Reduced{small.convertToFormat(small.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888),
                   original};
}

codecs::Source moduleSource(const Source& source) {
    if (const auto* bytes = std::get_if<QByteArray>(&source))
        return std::span(reinterpret_cast<const std::byte*>(bytes->constData()),
                         static_cast<std::size_t>(bytes->size()));
    return std::get<std::filesystem::path>(source).native();
}

/// The toolkit's readers refuse what needs more than a limit of their own, which an honest picture may. Here it is what
/// the largest picture needs at eight bytes a pixel.
void liftToolkitLimit() {
    static const bool once = [] {
        constexpr auto megabytes = static_cast<int>(largestPixelCount * 8 >> 20);
        QImageReader::setAllocationLimit(megabytes);
        return true;
    }();
    Q_UNUSED(once)
}

/// A TGA by its name or by the mark at its end: it has no signature, and its first bytes look like a cursor's. Absent for
/// all others.
std::optional<QImage> tgaPicture(const Source& source) {
    constexpr qint64 markSize = 18;
    const auto* path = std::get_if<std::filesystem::path>(&source);
    const auto from = device(source);
    if (!from || from->isSequential()) return {};
    if (!path || lowercaseExtension(*path) != "tga") {
        if (!from->seek(std::max<qint64>(0, from->size() - markSize)) || !TgaReader::hasMark(from->read(markSize)))
            return {};
        from->seek(0);
    }
    constexpr qint64 largest = largestPixelCount * 4 + (1 << 20);
    const QImage picture = from->size() > largest ? QImage() : TgaReader::read(from->readAll());
    return picture.isNull() ? std::nullopt : std::optional(picture);
}

std::expected<QImage, Error> decodeWith(const Source& source, Colours colours, std::stop_token stop) {
    if (const auto* path = std::get_if<std::filesystem::path>(&source)) {
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(*path, ignored)) return std::unexpected(Error::unreadable);
    }
    if (isEmptyPng(firstBytes(source))) return std::unexpected(Error::empty);
    if (const auto from = device(source); from && png::isDamaged(*from)) return std::unexpected(Error::unreadable);

    if (auto picture = tgaPicture(source)) return *std::move(picture);
    if (codecs::Bitmaps* bitmaps = bitmapCodecs()) {
        auto opened = bitmaps->open(moduleSource(source));
        if (auto* picture = std::get_if<std::unique_ptr<codecs::Picture>>(&opened))
            return decodePicture(**picture, std::move(stop), colours);
        if (std::get<codecs::Failure>(opened) == codecs::Failure::broken) return std::unexpected(Error::unreadable);
    }
    if (stop.stop_requested()) return std::unexpected(Error::unreadable);
    liftToolkitLimit();
    return decodeWithToolkit(source);
}

} // namespace

std::expected<QImage, Error> decode(const Source& source, std::stop_token stop) {
    return decodeWith(source, Colours::srgb, std::move(stop));
}

std::expected<QImage, Error> decodeAsStored(const Source& source, std::stop_token stop) {
    return decodeWith(source, Colours::asStored, std::move(stop));
}

Reduced thumbnail(const std::filesystem::path& file, int longestSide) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) return {};
    if (auto quick = quickThumbnail(file, longestSide)) return *std::move(quick);
    if (codecs::Bitmaps* bitmaps = bitmapCodecs()) {
        auto opened = bitmaps->openThumbnail(file.native(), longestSide);
        if (auto* picture = std::get_if<std::unique_ptr<codecs::Picture>>(&opened)) {
            const codecs::Header& header = (*picture)->header();
            const QSize original(static_cast<int>(header.originalWidth), static_cast<int>(header.originalHeight));
            return {decodePicture(**picture, {}).value_or(QImage()), original};
        }
    }
    const QImage whole = decode(file).value_or(QImage());
    return {fitted(whole, whole.size(), longestSide), whole.size()};
}

bool hasBitmapSignature(const std::filesystem::path& file) {
    using namespace Qt::StringLiterals;
    static const std::array signatures{"\x89PNG\r\n\x1a\n"_ba, "\xff\xd8\xff"_ba, "II*\0"_ba, "MM\0*"_ba, "GIF8"_ba};
    const QByteArray start = firstBytes(file);
    return std::ranges::any_of(signatures, [&](const QByteArray& signature) { return start.startsWith(signature); });
}

} // namespace quillary::BitmapDecoder
