#include "panel/PanelContainerView.h"

#include "platform/KeyModifiers.h"

#include <QKeyEvent>
#include <QPointerEvent>

namespace quillary {

namespace {

bool editsText(const QQuickItem* item) {
    return item && (item->inherits("QQuickTextInput") || item->inherits("QQuickTextEdit"));
}

} // namespace

PanelContainerView::PanelContainerView(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setFlag(ItemIsFocusScope);
    setFocus(true);
}

bool PanelContainerView::performKeyEquivalent(const QKeyEvent& event) {
    if (window() && editsText(window()->activeFocusItem())) return false;
    if (event.key() != Qt::Key_V || platform::capsLockEngaged(event)) return false;
    // Shift is left out on purpose; Option and the system's own key make it another command.
    constexpr auto telling = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier | Qt::KeypadModifier;
    if ((event.modifiers() & telling) != Qt::ControlModifier) return false;
    if (onPaste) onPaste();
    return true;
}

void PanelContainerView::keyPressEvent(QKeyEvent* event) {
    if (!performKeyEquivalent(*event)) QQuickItem::keyPressEvent(event);
}

void PanelContainerView::mousePressEvent(QMouseEvent* event) {
    forceActiveFocus(Qt::MouseFocusReason);
    QQuickItem::mousePressEvent(event);
}

void PanelContainerView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange) return;
    if (m_window) {
        m_window->removeEventFilter(this);
        m_window->disconnect(this);
    }
    m_window = data.window;
    if (!m_window) return;
    m_window->installEventFilter(this);
    connect(m_window, &QQuickWindow::activeFocusItemChanged, this, &PanelContainerView::takeLostFocus);
}

bool PanelContainerView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin)
        leaveField(static_cast<QPointerEvent*>(event)->point(0).scenePosition());
    if (event->type() == QEvent::Close) leaveField({});
    if (pastesText(*event)) {
        auto* field = m_window->activeFocusItem();
        const bool key = event->type() == QEvent::KeyPress;
        if (onPasteText && editsText(field)) onPasteText(*field, key ? Text::copied : Text::selected);
        return true;
    }
    return QQuickItem::eventFilter(watched, event);
}

/// Keys only while a field has them; the middle button does nothing else anywhere.
bool PanelContainerView::pastesText(const QEvent& event) const {
    switch (event.type()) {
    case QEvent::KeyPress:
        return static_cast<const QKeyEvent&>(event).matches(QKeySequence::Paste) &&
               editsText(m_window->activeFocusItem());
    case QEvent::MouseButtonPress:
        return static_cast<const QMouseEvent&>(event).button() == Qt::MiddleButton;
    default:
        return false;
    }
}

void PanelContainerView::leaveField(std::optional<QPointF> pressed) {
    QQuickItem* field = m_window->activeFocusItem();
    if (!editsText(field) || !isAncestorOf(field)) return;
    if (!pressed || !field->contains(field->mapFromScene(*pressed))) field->setFocus(false, Qt::MouseFocusReason);
}

void PanelContainerView::takeLostFocus() {
    // An item that loses the focus without a heir leaves it to the window's content, and so does a popup that closes.
    if (m_window->activeFocusItem() == m_window->contentItem()) forceActiveFocus(Qt::OtherFocusReason);
}

} // namespace quillary
