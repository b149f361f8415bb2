#include "drag/DragSourceNSView.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "drag/DragPicture.h"
#include "platform/FileDrag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QQmlEngine>
#include <QQuickAsyncImageProvider>
#include <QQuickWindow>
#include <algorithm>
#include <utility>

namespace quillary {

namespace {

/// Main thread only.
int dragsUnderWay = 0;

} // namespace

DragSourceNSView::DragSourceNSView(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
}

void DragSourceNSView::setTitle(const QString& title) {
    if (std::exchange(m_title, title) != title) Q_EMIT titleChanged();
}

void DragSourceNSView::setPicture(QQuickItem* picture) {
    if (m_picture == picture) return;
    m_picture = picture;
    Q_EMIT pictureChanged();
}

void DragSourceNSView::setPixels(const QImage& pixels) {
    if (pixels.cacheKey() == m_pixels.cacheKey()) return;
    m_pixels = pixels;
    Q_EMIT pixelsChanged();
}

void DragSourceNSView::setOpenHandCursor(bool on) {
    if (std::exchange(m_openHandCursor, on) == on) return;
    if (on)
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor();
    Q_EMIT openHandCursorChanged();
}

void DragSourceNSView::mousePressEvent(QMouseEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore();
        return;
    }
    m_pressedAt = event->position();
    setDidDrag(false);
    // A list that scrolls must not take the press over before it becomes a drag.
    setKeepMouseGrab(true);
    preparePicture();
}

void DragSourceNSView::preparePicture() {
    m_asked = nullptr;
    m_answered = {};
    m_look.reset();
    if (!m_pixels.isNull()) return;
    requestSource();
    grabPicture();
}

void DragSourceNSView::requestSource() {
    const QUrl address(m_source);
    const auto* engine = qmlEngine(this);
    if (!engine || address.scheme() != u"image") return;
    auto* provider = dynamic_cast<QQuickAsyncImageProvider*>(engine->imageProvider(address.host()));
    if (!provider) return;
    const QString id = address.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).sliced(1);
    auto* response = provider->requestImageResponse(id, {});
    m_asked = response;
    connect(response, &QQuickImageResponse::finished, this, [this, response] {
        const std::unique_ptr<QQuickTextureFactory> texture(response->textureFactory());
        if (m_asked == response && texture) m_answered = texture->image();
    });
    connect(response, &QQuickImageResponse::finished, response, &QObject::deleteLater);
}

void DragSourceNSView::grabPicture() {
    if (!m_picture || !m_picture->isVisible() || m_picture->size().isEmpty() || !window()) return;
    // An Image that fits what it shows leaves room around it, and may show it larger than it is.
    const QSizeF whole = m_picture->size();
    const QVariant width = m_picture->property("paintedWidth");
    QSizeF painted = width.isValid() ? QSizeF(width.toReal(), m_picture->property("paintedHeight").toReal()) : whole;
    if (painted.isEmpty()) painted = whole;
    painted = painted.boundedTo(whole);
    const QSizeF natural = m_picture->property("sourceSize").toSizeF();
    const QSizeF shown = dragPictureSize(natural.isEmpty() ? painted : natural);
    const qreal scale = std::max(shown.width() / painted.width(), shown.height() / painted.height());
    m_lookArea = QRectF(QPointF((1 - painted.width() / whole.width()) / 2, (1 - painted.height() / whole.height()) / 2),
                        QSizeF(painted.width() / whole.width(), painted.height() / whole.height()));
    const QSizeF pixels = whole * scale * window()->effectiveDevicePixelRatio();
    m_look = m_picture->grabToImage(pixels.toSize().expandedTo(QSize(1, 1)));
}

void DragSourceNSView::mouseMoveEvent(QMouseEvent* event) {
    if (m_didDrag || !m_pressedAt) return;
    const QPointF pressedAt = *m_pressedAt;
    if (!exceedsDragThreshold(pressedAt, event->position())) return;
    if (Load load = requestedLoad(event->timestamp()); load.data) startDrag(std::move(load), pressedAt, event->position());
}

void DragSourceNSView::mouseReleaseEvent(QMouseEvent* event) {
    const bool tap = m_pressedAt && !m_didDrag;
    m_pressedAt.reset();
    setDidDrag(false);
    setKeepMouseGrab(false);
    if (tap) Q_EMIT tapped(event->modifiers().toInt());
}

void DragSourceNSView::mouseUngrabEvent() {
    setKeepMouseGrab(false);
    if (std::exchange(m_pressedAt, std::nullopt)) setDidDrag(false);
}

void DragSourceNSView::hoverEnterEvent(QHoverEvent* event) {
    reportHover(event);
}

void DragSourceNSView::hoverMoveEvent(QHoverEvent* event) {
    reportHover(event);
}

void DragSourceNSView::hoverLeaveEvent(QHoverEvent* event) {
    Q_EMIT hoverEnded();
    event->ignore();
}

void DragSourceNSView::reportHover(QHoverEvent* event) {
    if (width() > 0) Q_EMIT hovered(std::clamp(event->position().x() / width(), 0.0, 1.0));
    event->ignore();
}

DragSourceNSView::Load DragSourceNSView::requestedLoad(quint64 now) {
    DragRequest request;
    if (!url) Q_EMIT urlRequested(&request);
    if (request.lateFiles) return {platform::fileDragData(std::move(request.lateFiles), now), m_title};
    if (request.item) return {platform::itemDragData(*request.item, now), request.item->suggestedName().value_or(QString())};
    std::vector<std::filesystem::path> files;
    if (url)
        if (auto file = url()) files.push_back(std::move(*file));
    for (const QString& asked : QStringList(request.url) + request.urls)
        if (auto file = pathOfFileUrl(asked.toUtf8())) files.push_back(std::move(*file));
    if (files.empty()) return {};
    const QString name = files.size() == 1 ? shown(files.front().filename()) : QString::number(files.size());
    return {platform::fileDragData(files, now), name};
}

std::optional<QImage> DragSourceNSView::look() const {
    if (image)
        if (auto given = image()) return given;
    if (!m_pixels.isNull()) return m_pixels;
    if (!m_answered.isNull()) return m_answered;
    if (!m_look || m_look->image().isNull()) return {};
    const QSizeF size = m_look->image().size();
    const QRectF area(m_lookArea.x() * size.width(), m_lookArea.y() * size.height(), m_lookArea.width() * size.width(),
                      m_lookArea.height() * size.height());
    QImage grabbed = m_look->image().copy(area.toAlignedRect());
    grabbed.setDevicePixelRatio(window()->effectiveDevicePixelRatio());
    return grabbed;
}

void DragSourceNSView::startDrag(Load load, QPointF pressedAt, QPointF now) {
    QImage picture =
        dragPicture(look(), m_title.isEmpty() ? load.name : m_title, window()->effectiveDevicePixelRatio());
    if (!platform::dragsAreTranslucent()) picture = withHardEdges(std::move(picture));
    // The application is the drag's parent: a list that is refreshed meanwhile may delete this item.
    auto* drag = new QDrag(QCoreApplication::instance());
    drag->setMimeData(load.data.release());
    drag->setPixmap(QPixmap::fromImage(picture));
    drag->setHotSpot(dragHotSpot(pressedAt, now, picture.deviceIndependentSize()).toPoint());

    setDidDrag(true);
    // Once this event is delivered: a drag has an event loop of its own, in which this item may end.
    QMetaObject::invokeMethod(
        drag, [self = QPointer(this), drag] { run(self, drag); }, Qt::QueuedConnection);
}

void DragSourceNSView::run(const QPointer<DragSourceNSView>& source, QDrag* drag) {
    if (!source || !source->m_didDrag) {
        drag->deleteLater();
        return;
    }
    // The drag takes the button's release for itself, so the press ends here.
    source->m_pressedAt.reset();
    source->ungrabMouse();
    ++dragsUnderWay;
    drag->exec(Qt::CopyAction);
    --dragsUnderWay;
    if (!source) return;
    source->m_look.reset();
    source->setDidDrag(false);
}

bool DragSourceNSView::anyUnderWay() {
    return dragsUnderWay > 0;
}

void DragSourceNSView::setDidDrag(bool on) {
    if (std::exchange(m_didDrag, on) != on) Q_EMIT draggingChanged();
}

} // namespace quillary
