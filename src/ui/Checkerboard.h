#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace quillary {

/// The transparency backdrop: ink at 14 % over the whole area, then ink at 7 % over every second cell, beginning with
/// the one in the top left corner. Cells at the right and bottom edges are cut off, not shrunk.
class Checkerboard : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// The side of a cell in points.
    Q_PROPERTY(qreal square READ square WRITE setSquare NOTIFY changed FINAL)
    /// Corner radius of the clip in points.
    Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY changed FINAL)
    /// White for dark surroundings.
    Q_PROPERTY(QColor ink READ ink WRITE setInk NOTIFY changed FINAL)

public:
    explicit Checkerboard(QQuickItem* parent = nullptr);

    qreal square() const { return m_square; }
    void setSquare(qreal points);
    qreal radius() const { return m_radius; }
    void setRadius(qreal points);
    QColor ink() const { return m_ink; }
    void setInk(QColor ink);

    /// Columns and rows that cover an area; at least one of each.
    static QSize cells(QSizeF area, qreal square);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    template <typename T>
    void set(T& property, T value);

    qreal m_square = 9;
    qreal m_radius = 0;
    QColor m_ink = Qt::white;
};

} // namespace quillary
