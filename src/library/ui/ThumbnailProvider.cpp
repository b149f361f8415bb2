#include "library/ui/ThumbnailProvider.h"

#include "base/FileUrl.h"
#include "base/Translation.h"
#include "imaging/Thumbnail.h"

#include <QPainter>
#include <QPainterPath>
#include <QQuickTextureFactory>
#include <algorithm>

namespace quillary {

namespace {

constexpr qreal cornerShare = 0.073; ///< of a tile's width
constexpr qreal marginShare = 0.1;

std::optional<std::filesystem::path> fileOf(const QString& id) {
    const qsizetype stamp = id.lastIndexOf(u'?');
    // On its way here the toolkit decodes what is text of a URL.
    return pathOfFileUrl(id.left(stamp).toUtf8());
}

} // namespace

/// Shared by the worker and the response, whichever lives longer.
struct ThumbnailProvider::Request {
    QString id;
    QSize size;
    std::stop_source stop;
    QMutex mutex;
    ThumbnailResponse* response = nullptr; ///< guarded by `mutex`
};

class ThumbnailResponse : public QQuickImageResponse {
public:
    ThumbnailResponse(ThumbnailProvider& provider, std::shared_ptr<ThumbnailProvider::Request> request)
        : m_provider(provider), m_request(std::move(request)) {
        m_request->response = this;
    }
    ~ThumbnailResponse() override {
        m_request->stop.request_stop();
        const QMutexLocker lock(&m_request->mutex);
        m_request->response = nullptr;
    }

    QQuickTextureFactory* textureFactory() const override {
        return m_image.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(m_image);
    }
    QString errorString() const override {
        return m_image.isNull() ? translate("Library", "There is no picture of this file.") : QString();
    }
    void cancel() override {
        m_request->stop.request_stop();
        if (m_provider.withdraw(*m_request)) finish({});
    }

    void finish(const QImage& image) {
        m_image = image;
        QMetaObject::invokeMethod(this, &QQuickImageResponse::finished, Qt::QueuedConnection);
    }
    static void finish(ThumbnailProvider::Request& request, const QImage& image) {
        const QMutexLocker lock(&request.mutex);
        if (request.response) request.response->finish(image);
    }

private:
    ThumbnailProvider& m_provider;
    std::shared_ptr<ThumbnailProvider::Request> m_request;
    QImage m_image;
};

ThumbnailProvider::ThumbnailProvider(Thumbnail& thumbnails)
    : ThumbnailProvider([&thumbnails](const std::filesystem::path& file, std::stop_token stop) {
        return thumbnails.load(file, std::move(stop));
    }) {}

ThumbnailProvider::ThumbnailProvider(Load load) : m_load(std::move(load)) {
    m_pool.setMaxThreadCount(2);
}

ThumbnailProvider::~ThumbnailProvider() {
    {
        const QMutexLocker lock(&m_mutex);
        for (const auto& request : m_waiting) request->stop.request_stop();
    }
    m_pool.waitForDone();
}

QQuickImageResponse* ThumbnailProvider::requestImageResponse(const QString& id, const QSize& requestedSize) {
    auto request = std::make_shared<Request>();
    request->id = id;
    request->size = requestedSize;
    auto* response = new ThumbnailResponse(*this, request);
    ++m_open;
    const QMutexLocker lock(&m_mutex);
    m_waiting.push_back(std::move(request));
    m_pool.start([this] { serve(); });
    return response;
}

bool ThumbnailProvider::withdraw(const Request& request) {
    const QMutexLocker lock(&m_mutex);
    const bool withdrawn = std::erase_if(m_waiting, [&](const auto& waiting) { return waiting.get() == &request; }) > 0;
    if (withdrawn) --m_open;
    return withdrawn;
}

void ThumbnailProvider::serve() {
    std::shared_ptr<Request> request;
    {
        const QMutexLocker lock(&m_mutex);
        if (m_waiting.empty()) return;
        request = std::move(m_waiting.back());
        m_waiting.pop_back();
    }
    const auto file = fileOf(request->id);
    QImage image;
    if (file && !request->stop.stop_requested())
        image = composed(m_load(*file, request->stop.get_token()), request->size);
    ThumbnailResponse::finish(*request, image);
    --m_open;
}

QImage ThumbnailProvider::composed(const QImage& thumbnail, QSize size) {
    if (thumbnail.isNull() || size.isEmpty()) return thumbnail;
    const bool opaque = !thumbnail.hasAlphaChannel();
    const QRectF tile(QPointF(), size);
    const qreal margin = opaque ? 0 : marginShare * size.width();
    const QRectF room = tile.adjusted(margin, margin, -margin, -margin);
    QRectF place(
        QPointF(),
        QSizeF(thumbnail.size()).scaled(room.size(), opaque ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio));
    place.moveCenter(room.center());

    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (opaque) {
        QPainterPath corners;
        corners.addRoundedRect(tile, cornerShare * size.width(), cornerShare * size.width());
        painter.setClipPath(corners);
    }
    painter.drawImage(place, thumbnail);
    return result;
}

} // namespace quillary
