#pragma once

#include "drag/DragRequest.h"

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

class QDrag;
class QMimeData;

namespace quillary {

/// An area that can be dragged out of the window as a file, as several, or as one item of other data. `FileDragSource`
/// in QML:
///
///     FileDragSource {
///         anchors.fill: parent
///         title: item.name
///         picture: thumbnail
///         onUrlRequested: request => request.url = model.dragFileUrl(item.url)
///         onTapped: select()
///     }
///
/// A press that moves more than 4 points asks for the file only then, so that it can be written at the last moment, and
/// drags its URL and nothing else (or those of several, in their order), to be copied. Without a file the press stays
/// alive and further motion asks again. A press that ends before is a tap. Right clicks and clicks with Control go to
/// what lies beneath, and so do hover events. Main thread.
class DragSourceNSView : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(FileDragSource)
    /// The caption of a drag without a picture; the file's name when it is empty.
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged FINAL)
    /// The item whose look the drag carries. It is painted when the button goes down.
    Q_PROPERTY(QQuickItem* picture READ picture WRITE setPicture NOTIFY pictureChanged FINAL)
    Q_PROPERTY(bool openHandCursor READ openHandCursor WRITE setOpenHandCursor NOTIFY openHandCursorChanged FINAL)
    /// Whether a drag from here is under way.
    Q_PROPERTY(bool dragging READ dragging NOTIFY draggingChanged FINAL)

public:
    explicit DragSourceNSView(QQuickItem* parent = nullptr);

    /// For owners in C++, asked instead of `urlRequested` and before `picture`.
    std::function<std::optional<std::filesystem::path>()> url;
    std::function<std::optional<QImage>()> image;

    const QString& title() const { return m_title; }
    void setTitle(const QString& title);
    QQuickItem* picture() const { return m_picture; }
    void setPicture(QQuickItem* picture);
    bool openHandCursor() const { return m_openHandCursor; }
    void setOpenHandCursor(bool on);
    bool dragging() const { return m_didDrag; }

    /// Whether a drag from any item of this program is under way. The toolkit's own answer stays true long after the
    /// end: it keeps the last drag for receivers that are slow to fetch.
    static bool anyUnderWay();

Q_SIGNALS:
    /// A drag begins: the handler writes the file's URL into the request, quickly.
    void urlRequested(quillary::DragRequest* request);
    /// A click that did not become a drag; `modifiers` as in MouseEvent.
    void tapped(int modifiers);
    /// The pointer moved inside: its horizontal position, 0 at the left edge and 1 at the right.
    void hovered(qreal fraction);
    void hoverEnded();
    void titleChanged();
    void pictureChanged();
    void openHandCursorChanged();
    void draggingChanged();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;

private:
    /// What the drag carries and its caption; null while there is nothing to drag.
    struct Load {
        std::unique_ptr<QMimeData> data;
        QString name;
    };
    Load requestedLoad(quint64 now);
    std::optional<QImage> look() const;
    void startDrag(Load load, QPointF pressedAt, QPointF now);
    static void run(const QPointer<DragSourceNSView>& source, QDrag* drag);
    void setDidDrag(bool on);
    void reportHover(QHoverEvent* event);

    QString m_title;
    QPointer<QQuickItem> m_picture;
    QSharedPointer<QQuickItemGrabResult> m_look;
    bool m_openHandCursor = false;
    std::optional<QPointF> m_pressedAt;
    bool m_didDrag = false;
};

} // namespace quillary
