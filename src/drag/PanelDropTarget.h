#pragma once

#include "platform/ItemProvider.h"

#include <QQuickItem>
#include <vector>

namespace quillary {

/// An area that takes drops from other programs, whatever they hold, as copies. Drags of this program itself pass by.
class PanelDropTarget : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Whether a drag that would be taken is over the area.
    Q_PROPERTY(bool targeted READ targeted NOTIFY targetedChanged FINAL)

public:
    explicit PanelDropTarget(QQuickItem* parent = nullptr);

    bool targeted() const { return m_targeted; }

Q_SIGNALS:
    void targetedChanged();
    /// The items that were dropped, complete. Sent when the other program has been told that the drop is done.
    void dropped(const std::vector<quillary::platform::ItemProvider>& items);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool accept(QDropEvent* event);
    void setTargeted(bool on);

    bool m_targeted = false;
};

} // namespace quillary
