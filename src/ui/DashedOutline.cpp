#include "ui/DashedOutline.h"

#include <QPainter>

namespace quillary {

void DashedOutline::setColor(QColor color) {
    if (m_color == color) return;
    m_color = color;
    Q_EMIT changed();
    update();
}

void DashedOutline::setRadius(qreal points) {
    if (m_radius == points) return;
    m_radius = points;
    Q_EMIT changed();
    update();
}

void DashedOutline::paint(QPainter* painter) {
    QPen pen(m_color, 1);
    pen.setDashPattern({3, 3});
    painter->setPen(pen);
    painter->drawRoundedRect(boundingRect().adjusted(0.5, 0.5, -0.5, -0.5), m_radius, m_radius);
}

} // namespace quillary
