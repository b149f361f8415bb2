#include "ui/Checkerboard.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace quillary {

namespace {

constexpr qreal groundOpacity = 0.14;
constexpr qreal cellOpacity = 0.07;

QColor withOpacity(QColor color, qreal opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

} // namespace

Checkerboard::Checkerboard(QQuickItem* parent) : QQuickPaintedItem(parent) {}

template <typename T>
void Checkerboard::set(T& property, T value) {
    if (property == value) return;
    property = value;
    Q_EMIT changed();
    update();
}

void Checkerboard::setSquare(qreal points) {
    set(m_square, points);
}
void Checkerboard::setRadius(qreal points) {
    set(m_radius, points);
}
void Checkerboard::setInk(QColor ink) {
    set(m_ink, ink);
}

QSize Checkerboard::cells(QSizeF area, qreal square) {
    const auto along = [square](qreal length) {
        return square > 0 ? std::max(1, static_cast<int>(std::ceil(length / square))) : 1;
    };
    return {along(area.width()), along(area.height())};
}

void Checkerboard::paint(QPainter* painter) {
    const QRectF area = boundingRect();
    if (m_radius > 0) {
        QPainterPath clip;
        clip.addRoundedRect(area, m_radius, m_radius);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setClipPath(clip);
    }
    painter->fillRect(area, withOpacity(m_ink, groundOpacity));
    const QColor cell = withOpacity(m_ink, cellOpacity);
    const QSize count = cells(area.size(), m_square);
    for (int row = 0; row < count.height(); ++row)
        for (int column = row % 2; column < count.width(); column += 2)
            painter->fillRect(QRectF(column * m_square, row * m_square, m_square, m_square), cell);
}

} // namespace quillary
