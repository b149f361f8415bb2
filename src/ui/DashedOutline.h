#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace quillary {

/// A dashed line along the inside of the item's rounded edge, one point wide: a place to drop something.
class DashedOutline : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed FINAL)
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY changed FINAL)

public:
    explicit DashedOutline(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) { setAntialiasing(true); }

    QColor color() const { return m_color; }
    void setColor(QColor color);
    qreal radius() const { return m_radius; }
    void setRadius(qreal points);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::gray;
    qreal m_radius = 0;
};

} // namespace quillary
