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
class QQuickImageResponse;

namespace quillary {

/// Makes the picture that a drag carries known to QML, as a value without members.
struct DraggedImage {
    Q_GADGET
    QML_FOREIGN(QImage)
    QML_ANONYMOUS
};

/// An area that can be dragged out of the window as a file, as several, or as one item of other data. `FileDragSource`
/// in QML:
///
///     FileDragSource {
///         anchors.fill: parent
///         title: item.name
///         pixels: model.displayImage
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
    /// What the drag carries: a picture as it is, null for none; else that of an asynchronous image provider,
    /// "image://provider/id", asked for at its own size when the button goes down; else the look of an item, painted
    /// then, without the room that an Image leaves around what it shows.
    Q_PROPERTY(QImage pixels READ pixels WRITE setPixels NOTIFY pixelsChanged FINAL)
    Q_PROPERTY(QString source MEMBER m_source NOTIFY sourceChanged FINAL)
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
    const QImage& pixels() const { return m_pixels; }
    void setPixels(const QImage& pixels);
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
    void pixelsChanged();
    void sourceChanged();
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
    void preparePicture();
    void requestSource();
    void grabPicture();
    std::optional<QImage> look() const;
    void startDrag(Load load, QPointF pressedAt, QPointF now);
    static void run(const QPointer<DragSourceNSView>& source, QDrag* drag);
    void setDidDrag(bool on);
    void reportHover(QHoverEvent* event);

    QString m_title;
    QImage m_pixels;
    QString m_source;
    QPointer<QQuickItem> m_picture;
    QPointer<QQuickImageResponse> m_asked;
    QImage m_answered;
    QSharedPointer<QQuickItemGrabResult> m_look;
    QRectF m_lookArea; ///< of the grabbed picture, in 0 … 1 of its width and height
    bool m_openHandCursor = false;
    std::optional<QPointF> m_pressedAt;
    bool m_didDrag = false;
};

} // namespace quillary
