#include "panel/ui/EdgePreview.h"

#include "ui/PictureScaling.h"

#include <algorithm>

namespace quillary {

EdgePreview::EdgePreview(QObject* parent) : QObject(parent), m_reducing(*QThreadPool::globalInstance()) {}

void EdgePreview::setBase(const QImage& image) {
    if (image.cacheKey() == m_base.cacheKey()) return;
    m_base = image;
    Q_EMIT baseChanged();
    reduce();
}

void EdgePreview::setFrame(const QRectF& part) {
    if (part == m_frame) return;
    m_frame = part;
    Q_EMIT frameChanged();
    reduce();
}

void EdgePreview::setPixelSize(QSize pixels) {
    if (pixels == m_pixelSize) return;
    m_pixelSize = pixels;
    Q_EMIT pixelSizeChanged();
    reduce();
}

void EdgePreview::setAmount(double amount) {
    if (amount == m_amount) return;
    m_amount = amount;
    Q_EMIT amountChanged();
    update();
}

void EdgePreview::setActive(bool on) {
    if (on == m_active) return;
    m_active = on;
    Q_EMIT activeChanged();
    update();
}

void EdgePreview::reduce() {
    m_reducing.cancel();
    m_reduced.reset();
    update();
    if (m_base.isNull() || m_pixelSize.isEmpty() || m_frame.isEmpty()) return;
    const QSize whole = QSizeF(m_pixelSize.width() / m_frame.width(), m_pixelSize.height() / m_frame.height()).toSize();
    using Result = std::optional<Reduced>;
    m_reducing.run(
        [raw = m_base, pixels = whole](const std::stop_token& stop) -> Result {
            const int handySide = 4 * std::max(pixels.width(), pixels.height());
            const QImage handy = PictureScaling::reduced(raw, stop, handySide);
            if (stop.stop_requested()) return {};
            const QImage small = PictureScaling::scaledDown(handy, pixels);
            return Reduced{MatteRefiner::Matte(small), static_cast<double>(small.width()) / raw.width()};
        },
        [this](Result result) {
            m_reduced = std::move(result);
            update();
        });
}

void EdgePreview::update() {
    QImage picture;
    if (m_active && m_reduced)
        picture = m_reduced->matte.refined(MatteRefiner::erosionRadius(m_amount) * m_reduced->scale);
    if (m_frame != QRectF(0, 0, 1, 1) && !picture.isNull()) {
        const QSizeF size = picture.size();
        picture = picture.copy(QRectF(m_frame.x() * size.width(), m_frame.y() * size.height(),
                                      m_frame.width() * size.width(), m_frame.height() * size.height())
                                   .toRect());
    }
    if (picture.isNull() && m_picture.isNull()) return;
    m_picture = picture;
    Q_EMIT pictureChanged();
}

} // namespace quillary
