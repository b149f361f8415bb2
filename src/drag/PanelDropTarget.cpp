#include "drag/PanelDropTarget.h"

#include "drag/DragSourceNSView.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <utility>

namespace quillary {

PanelDropTarget::PanelDropTarget(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemAcceptsDrops);
}

void PanelDropTarget::dragEnterEvent(QDragEnterEvent* event) {
    setTargeted(accept(event));
}

void PanelDropTarget::dragMoveEvent(QDragMoveEvent* event) {
    setTargeted(accept(event));
}

void PanelDropTarget::dragLeaveEvent(QDragLeaveEvent*) {
    setTargeted(false);
}

void PanelDropTarget::dropEvent(QDropEvent* event) {
    setTargeted(false);
    if (!accept(event)) return;
    // What the drop holds can be read only now; what is done with it waits until the other program is free again.
    auto items = platform::itemProviders(*event->mimeData());
    QMetaObject::invokeMethod(
        this, [this, items = std::move(items)] { Q_EMIT dropped(items); }, Qt::QueuedConnection);
}

bool PanelDropTarget::accept(QDropEvent* event) {
    if (DragSourceNSView::anyUnderWay() || !event->possibleActions().testFlag(Qt::CopyAction)) {
        event->ignore();
        return false;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return true;
}

void PanelDropTarget::setTargeted(bool on) {
    if (std::exchange(m_targeted, on) != on) Q_EMIT targetedChanged();
}

} // namespace quillary
