#include "imaging/Thumbnail.h"

#include "imaging/BitmapDecoder.h"
#include "imaging/RasterSize.h"
#include "imaging/Rasterizer.h"
#include "platform/OpenFile.h"
#include "platform/UniformTypes.h"

#include <QFile>
#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

const QString svgType = QStringLiteral("image/svg+xml");
const QString pdfType = QStringLiteral("application/pdf");

int longerSide(QSize size) {
    return std::max(size.width(), size.height());
}

/// Files and entries of the cache may have an alpha channel that no pixel uses; a tile asks whether there is one.
QImage withoutIdleAlpha(QImage image) {
    if (!image.hasAlphaChannel()) return image;
    image = std::move(image).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (std::any_of(row, row + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 255; })) return image;
    }
    return std::move(image).convertToFormat(QImage::Format_RGB32);
}

/// An entry of the cache at the size of a tile's picture. The original's shape, where it is known, decides the sides.
QImage scaledDown(const ThumbnailCache::Entry& entry, int longestSide) {
    const QSize have = entry.picture.size();
    const bool known = !entry.original.isEmpty() && longerSide(entry.original) >= longerSide(have);
    const QSize whole = known ? entry.original : have;
    QImage picture = withoutIdleAlpha(entry.picture);
    if (longerSide(have) <= longestSide) return picture;
    const auto size = RasterRule{RasterRule::Kind::fit, longestSide}(whole.width(), whole.height());
    return picture.scaled(static_cast<int>(size->width), static_cast<int>(size->height), Qt::IgnoreAspectRatio,
                                Qt::SmoothTransformation);
}

} // namespace

Thumbnail::Thumbnail(const fs::path& cacheFolder, FrameSource frames)
    : m_cache(cacheFolder / "thumbnails"), m_frames(std::move(frames)) {}

QImage Thumbnail::load(const fs::path& url, std::stop_token stop) {
    const auto state = ThumbnailCache::stateOf(url);
    if (!state || stop.stop_requested()) return {};
    const auto key = QByteArray::fromStdString(url.native());
    if (const auto known = remembered(key, *state)) return *known;

    const QString type = platform::contentType(url);
    const bool vector = platform::conforms(type, svgType) || platform::conforms(type, pdfType);
    const bool clip = m_frames && !type.startsWith(QStringLiteral("image/"));
    const QImage picture = made(url, *state, vector ? Kind::vector : clip ? Kind::clip : Kind::bitmap, stop);
    if (!picture.isNull() || !stop.stop_requested()) remember(key, *state, picture);
    return picture;
}

std::optional<QImage> Thumbnail::remembered(const QByteArray& key, const ThumbnailCache::FileState& state) {
    const QMutexLocker lock(&m_mutex);
    const Remembered* known = m_memory.object(key);
    if (!known || known->state != state) return {};
    return known->picture;
}

void Thumbnail::remember(const QByteArray& key, const ThumbnailCache::FileState& state, const QImage& picture) {
    const QMutexLocker lock(&m_mutex);
    m_memory.insert(key, new Remembered{state, picture}, picture.sizeInBytes() / 1024 + 1);
}

QImage Thumbnail::made(const fs::path& url, const ThumbnailCache::FileState& state, Kind kind, std::stop_token stop) {
    const auto size = kind == Kind::clip ? ThumbnailCache::Size::xLarge : ThumbnailCache::Size::large;
    const int side = kind == Kind::clip ? clipSide : pictureSide;
    if (const auto entry = m_cache.read(url, state, size)) {
        // Others draw small vectors small.
        if (kind != Kind::vector || longerSide(entry->picture.size()) >= side) return scaledDown(*entry, side);
    }
    if (m_cache.hasFailed(url, state)) return {};
    const auto entry = make(url, kind, stop);
    if (!entry.picture.isNull())
        m_cache.write(url, state, size, entry);
    else if (QFile file; !stop.stop_requested() && platform::openForReading(file, url))
        m_cache.writeFailure(url, state);
    return entry.picture.isNull() ? QImage() : scaledDown(entry, side);
}

ThumbnailCache::Entry Thumbnail::make(const fs::path& url, Kind kind, std::stop_token stop) const {
    switch (kind) {
    case Kind::vector: {
        const bool svg = platform::conforms(platform::contentType(url), svgType);
        const auto format = svg ? Rasterizer::Format::svg : Rasterizer::Format::pdf;
        return {Rasterizer::draw(url, format, {RasterRule::Kind::fit, pictureSide}, stop).value_or(QImage())};
    }
    case Kind::clip:
        return {m_frames(url, static_cast<int>(ThumbnailCache::Size::xLarge), stop)};
    case Kind::bitmap:
        break;
    }
    auto [picture, original] = BitmapDecoder::thumbnail(url, static_cast<int>(ThumbnailCache::Size::large));
    return {std::move(picture), original};
}

} // namespace quillary
