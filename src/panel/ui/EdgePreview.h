#pragma once

#include "base/Background.h"
#include "cutout/MatteRefiner.h"

#include <QImage>
#include <QObject>
#include <QRectF>
#include <QSize>
#include <QtQml/qqml.h>

namespace quillary {

/// The cut-out as it will look with another edge, at the size at which a view shows it: made within a millisecond or
/// two, while the refinement of the whole picture takes its time. The reduced base is laid ready on a worker as
/// soon as there is one. Main thread.
class EdgePreview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The cut-out before its refinement.
    Q_PROPERTY(QImage base READ base WRITE setBase NOTIFY baseChanged REQUIRED FINAL)
    /// The part of it that the view shows, in 0 … 1 of its width and height.
    Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged REQUIRED FINAL)
    /// How large the view shows that part, in device pixels.
    Q_PROPERTY(QSize pixelSize READ pixelSize WRITE setPixelSize NOTIFY pixelSizeChanged REQUIRED FINAL)
    /// The edge's strength, 0 to 1.
    Q_PROPERTY(double amount READ amount WRITE setAmount NOTIFY amountChanged REQUIRED FINAL)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged REQUIRED FINAL)
    /// Null while it is not active, and until the reduced base is ready.
    Q_PROPERTY(QImage picture READ picture NOTIFY pictureChanged FINAL)

public:
    explicit EdgePreview(QObject* parent = nullptr);

    const QImage& base() const { return m_base; }
    void setBase(const QImage& image);
    const QRectF& frame() const { return m_frame; }
    void setFrame(const QRectF& part);
    QSize pixelSize() const { return m_pixelSize; }
    void setPixelSize(QSize pixels);
    double amount() const { return m_amount; }
    void setAmount(double amount);
    bool active() const { return m_active; }
    void setActive(bool on);
    const QImage& picture() const { return m_picture; }

Q_SIGNALS:
    void baseChanged();
    void frameChanged();
    void pixelSizeChanged();
    void amountChanged();
    void activeChanged();
    void pictureChanged();

private:
    struct Reduced {
        MatteRefiner::Matte matte;
        double scale; ///< of the whole picture
    };

    void reduce();
    void update();

    Background m_reducing;
    QImage m_base;
    QRectF m_frame{0, 0, 1, 1};
    QSize m_pixelSize;
    double m_amount = 0;
    bool m_active = false;
    std::optional<Reduced> m_reduced;
    QImage m_picture;
};

} // namespace quillary
