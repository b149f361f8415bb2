#pragma once

#include "base/Background.h"
#include "cutout/MatteRefiner.h"

#include <QImage>
#include <QObject>
#include <QSize>
#include <QtQml/qqml.h>

namespace quillary {

/// The cut-out as it will look with another edge, at the size at which a view shows it: made within a millisecond or
/// two, while the refinement of the whole picture takes its time. The reduced raw cut-out is laid ready on a worker as
/// soon as there is one. Main thread.
class EdgePreview : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage rawCutout READ rawCutout WRITE setRawCutout NOTIFY rawCutoutChanged REQUIRED FINAL)
    /// How large the view shows the whole picture, in device pixels.
    Q_PROPERTY(QSize pixelSize READ pixelSize WRITE setPixelSize NOTIFY pixelSizeChanged REQUIRED FINAL)
    /// The edge's strength, 0 to 1.
    Q_PROPERTY(double amount READ amount WRITE setAmount NOTIFY amountChanged REQUIRED FINAL)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged REQUIRED FINAL)
    /// Null while it is not active, and until the reduced raw cut-out is ready.
    Q_PROPERTY(QImage picture READ picture NOTIFY pictureChanged FINAL)

public:
    explicit EdgePreview(QObject* parent = nullptr);

    const QImage& rawCutout() const { return m_rawCutout; }
    void setRawCutout(const QImage& image);
    QSize pixelSize() const { return m_pixelSize; }
    void setPixelSize(QSize pixels);
    double amount() const { return m_amount; }
    void setAmount(double amount);
    bool active() const { return m_active; }
    void setActive(bool on);
    const QImage& picture() const { return m_picture; }

Q_SIGNALS:
    void rawCutoutChanged();
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
    QImage m_rawCutout;
    QSize m_pixelSize;
    double m_amount = 0;
    bool m_active = false;
    std::optional<Reduced> m_reduced;
    QImage m_picture;
};

} // namespace quillary
