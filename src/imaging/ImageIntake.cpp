#include "imaging/ImageIntake.h"

#include "base/FileUrl.h"
#include "base/SvgText.h"
#include "base/Text.h"
#include "base/Try.h"
#include "imaging/BitmapDecoder.h"
#include "imaging/Rasterizer.h"
#include "platform/FileAttributes.h"
#include "platform/Pasteboard.h"
#include "platform/SuggestedName.h"
#include "platform/UniformTypes.h"

#include <algorithm>

namespace quillary::ImageIntake {

namespace {

using Result = std::expected<PastedImage, ImageIntakeError>;

std::optional<Rasterizer::Format> vectorFormat(const QString& type) {
    if (platform::conforms(type, vectorTypes().first())) return Rasterizer::Format::svg;
    if (platform::conforms(type, vectorTypes().last())) return Rasterizer::Format::pdf;
    return std::nullopt;
}

RasterRule ruleFor(int longEdge) {
    return {RasterRule::Kind::enlarge, longEdge};
}

PastedImage staged(QImage image, PastedImage::Source source, const QString& name, const QString& formatLabel) {
    const QSizeF size = image.size();
    const bool alpha = image.hasAlphaChannel();
    return {.image = std::move(image),
            .pixelSize = size,
            .hasAlphaChannel = alpha,
            .source = std::move(source),
            .name = name,
            .formatLabel = formatLabel};
}

/// Any picture that the desktop offers, in the owner's order.
QImage anyPicture(platform::Pasteboard& pasteboard, const QStringList& types, std::stop_token stop) {
    for (const QString& type : types) {
        if (stop.stop_requested()) break;
        const bool picture =
            type.startsWith(QLatin1String("image/")) || type == QLatin1String("application/x-qt-image");
        if (!picture || vectorFormat(type)) continue;
        const auto data = pasteboard.data(type);
        if (!data || data->isEmpty()) continue;
        if (auto image = BitmapDecoder::decode(*data, stop)) return *std::move(image);
    }
    return {};
}

Result readVectorFile(const std::filesystem::path& url, Rasterizer::Format format, int longEdge, std::stop_token stop) {
    auto image = Rasterizer::draw(url, format, ruleFor(longEdge), stop);
    if (!image && image.error() == Rasterizer::Error::locked) return std::unexpected(ImageIntakeError::lockedFile(url));
    if (!image && image.error() == Rasterizer::Error::unreadable)
        return std::unexpected(ImageIntakeError::unreadableFile(url));
    if (!image) return std::unexpected(ImageIntakeError::emptyImage());
    return staged(*std::move(image), PastedImage::RasterizedVector{shown(url.filename())}, shownStem(url), {});
}

Result readBitmapFile(const std::filesystem::path& url, std::stop_token stop) {
    auto image = BitmapDecoder::decode(url, stop);
    if (!image && image.error() == BitmapDecoder::Error::empty) return std::unexpected(ImageIntakeError::emptyImage());
    if (!image) return std::unexpected(ImageIntakeError::unreadableFile(url));
    return staged(*std::move(image), PastedImage::File{url}, shownStem(url), {});
}

} // namespace

namespace {

Result readOffer(platform::Pasteboard& pasteboard, int longEdge, std::stop_token stop) {
    const QStringList types = pasteboard.types();
    const auto dataOf = [&](const QString& type) -> std::optional<QByteArray> {
        const auto offered = std::ranges::find(types, type, platform::mimeName);
        if (stop.stop_requested() || offered == types.end()) return std::nullopt;
        return pasteboard.data(*offered);
    };

    for (const QString& type : bitmapPriority()) {
        const auto data = dataOf(type);
        if (!data) continue;
        if (auto image = read(*data, suggestedName(pasteboard), type, longEdge, stop)) return image;
    }
    for (const QString& type : vectorTypes()) {
        const auto data = dataOf(type);
        if (!data) continue;
        if (auto image = read(*data, PastedImage::defaultName(), type, longEdge, stop)) return image;
    }
    if (const auto text = stop.stop_requested() ? std::nullopt : pasteboard.string()) {
        const QString document = svgIn(*text);
        if (!document.isEmpty())
            if (auto image = read(document.toUtf8(), PastedImage::defaultName(), vectorTypes().first(), longEdge, stop))
                return image;
    }
    if (QImage image = anyPicture(pasteboard, types, stop); !image.isNull()) {
        const QString type = types.value(0, QStringLiteral("unknown"));
        return staged(std::move(image), PastedImage::Bitmap{type}, PastedImage::defaultName(), shortName(type));
    }
    return std::unexpected(ImageIntakeError::nothingUsable());
}

} // namespace

Result read(platform::Pasteboard& pasteboard, int longEdge, std::stop_token stop) {
    if (const auto url = fileURL(pasteboard)) return read(*url, longEdge, stop);
    auto image = readOffer(pasteboard, longEdge, stop);
    if (image && !stop.stop_requested()) image->webOrigin = pasteboard.webOrigin();
    return image;
}

Result read(const std::filesystem::path& url, int longEdge, std::stop_token stop) {
    if (stop.stop_requested()) return std::unexpected(ImageIntakeError::nothingUsable());
    const auto bytes = platform::regularFileSize(url);
    if (!bytes) return std::unexpected(ImageIntakeError::unreadableFile(url));

    const auto format = vectorFormat(platform::contentType(url));
    auto image = format && !BitmapDecoder::hasBitmapSignature(url) ? readVectorFile(url, *format, longEdge, stop)
                                                                   : readBitmapFile(url, stop);
    if (stop.stop_requested()) return std::unexpected(ImageIntakeError::nothingUsable());
    PastedImage read = TRY(std::move(image));
    read.formatLabel = QString::fromStdString(lowercaseExtension(url)).toUpper();
    read.sourceBytes = static_cast<qint64>(*bytes);
    read.webOrigin = platform::webOrigin(url);
    return read;
}

Result read(const QByteArray& data, const QString& named, const QString& type, int longEdge, std::stop_token stop) {
    if (const auto format = vectorFormat(type)) {
        auto image = Rasterizer::draw(data, *format, ruleFor(longEdge), stop);
        if (!image && image.error() == Rasterizer::Error::notDrawn && !stop.stop_requested())
            return std::unexpected(ImageIntakeError::emptyImage());
        if (!image && image.error() == Rasterizer::Error::locked)
            return std::unexpected(ImageIntakeError::lockedFile({}));
        if (!image) return std::unexpected(ImageIntakeError::nothingUsable());
        return staged(*std::move(image), PastedImage::RasterizedVector{type}, named, shortName(type));
    }
    auto image = BitmapDecoder::decode(data, stop);
    if (!image && image.error() == BitmapDecoder::Error::empty) return std::unexpected(ImageIntakeError::emptyImage());
    if (!image) return std::unexpected(ImageIntakeError::nothingUsable());
    return staged(*std::move(image), PastedImage::Bitmap{type}, named, shortName(type));
}

std::optional<std::filesystem::path> fileURL(platform::Pasteboard& pasteboard) {
    for (const QUrl& url : pasteboard.urls()) {
        const auto path = pathOfFileUrl(url.toEncoded());
        std::error_code ignored;
        if (!path || !std::filesystem::is_regular_file(*path, ignored)) continue;
        const QString type = platform::contentType(*path);
        if (std::ranges::any_of(acceptedFileTypes(),
                                [&](const QString& kind) { return platform::conforms(type, kind); }))
            return path;
    }
    return std::nullopt;
}

QString suggestedName(platform::Pasteboard& pasteboard) {
    const QList<QUrl> urls = pasteboard.urls();
    if (urls.isEmpty()) return PastedImage::defaultName();
    return platform::suggestedName(urls.first()).value_or(PastedImage::defaultName());
}

} // namespace quillary::ImageIntake
