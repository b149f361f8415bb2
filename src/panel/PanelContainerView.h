#pragma once

#include <QQuickItem>
#include <functional>

class QKeyEvent;

namespace quillary {

/// The view that fills the panel's window. It turns the paste command into a call, wherever the focus is inside the
/// panel except in a text field, and takes the focus when the user clicks beside every control.
class PanelContainerView : public QQuickItem {
    Q_OBJECT

public:
    explicit PanelContainerView(QQuickItem* parent = nullptr);

    /// What a paste command does.
    std::function<void()> onPaste;

    /// Control-V and Shift-Control-V, whatever else is pressed makes it another key; Caps Lock does too. True when the
    /// key was handled.
    bool performKeyEquivalent(const QKeyEvent& event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

} // namespace quillary
