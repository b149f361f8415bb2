#include "panel/PanelContainerView.h"

#include "platform/KeyModifiers.h"

#include <QKeyEvent>
#include <QQuickWindow>

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

} // namespace quillary
