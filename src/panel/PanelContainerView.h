#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <functional>
#include <optional>

class QKeyEvent;

namespace quillary {

/// The view that fills the panel's window. It turns the paste command into a call, wherever the focus is inside the
/// panel except in a text field.
///
/// It also settles, for the whole window, who has the keyboard. A press anywhere beside the text field that is being
/// edited takes the focus from that field, before anybody hears of the press, and so does closing the window. A focus that is left to nobody, as by a
/// menu or a sheet that closes, comes back here and so to the control that had it last.
class PanelContainerView : public QQuickItem {
    Q_OBJECT

public:
    explicit PanelContainerView(QQuickItem* parent = nullptr);

    /// What a paste command does.
    std::function<void()> onPaste;
    /// What pastes text into a field that is being edited anywhere in the window: by the command, or what is selected
    /// elsewhere by the middle mouse button. The toolkit's own way would wait for the text.
    enum class Text { copied, selected };
    std::function<void(QQuickItem& field, Text text)> onPasteText;

    /// Control-V and Shift-Control-V, whatever else is pressed makes it another key; Caps Lock does too. True when the
    /// key was handled.
    bool performKeyEquivalent(const QKeyEvent& event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool pastesText(const QEvent& event) const;
    /// Ends the editing of a text field, unless this place of the scene lies in it.
    void leaveField(std::optional<QPointF> pressed);
    void takeLostFocus();

    QPointer<QQuickWindow> m_window;
};

} // namespace quillary
