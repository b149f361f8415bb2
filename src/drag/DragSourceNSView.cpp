#include "drag/DragSourceNSView.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "drag/DragPicture.h"
#include "platform/FileDrag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
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
    m_look.reset();
    if (m_picture && m_picture->isVisible() && !m_picture->size().isEmpty() && window()) {
        const QSizeF size = dragPictureSize(m_picture->size()) * window()->effectiveDevicePixelRatio();
        m_look = m_picture->grabToImage(size.toSize().expandedTo(QSize(1, 1)));
    }
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
    if (!m_look || m_look->image().isNull()) return {};
    QImage grabbed = m_look->image();
    grabbed.setDevicePixelRatio(window()->effectiveDevicePixelRatio());
    return grabbed;
}

void DragSourceNSView::startDrag(Load load, QPointF pressedAt, QPointF now) {
    const QImage picture =
        dragPicture(look(), m_title.isEmpty() ? load.name : m_title, window()->effectiveDevicePixelRatio());
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
