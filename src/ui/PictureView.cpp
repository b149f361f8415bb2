#include "ui/PictureView.h"

#include "ui/PictureScaling.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QThreadPool>

namespace quillary {

/// One scaled picture on the screen. A single node, so that every renderer places it right.
class PictureLayer : public QQuickItem {
public:
    explicit PictureLayer(QQuickItem* parent) : QQuickItem(parent) { setFlag(ItemHasContents); }

    void show(const QImage& pixels, QSizeF natural) {
        m_pixels = pixels;
        m_natural = natural;
        m_textureOutdated = true;
        update();
    }
    void clear() { show({}, {}); }
    void takeFrom(PictureLayer& other) {
        show(other.m_pixels, other.m_natural);
        other.clear();
    }
    QSize pixels() const { return m_pixels.size(); }

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) override {
        if (m_pixels.isNull()) {
            delete node;
            return nullptr;
        }
        auto* image = static_cast<QSGImageNode*>(node);
        if (!image) {
            image = window()->createImageNode();
            image->setOwnsTexture(true);
            image->setFiltering(QSGTexture::Linear);
            m_textureOutdated = true;
        }
        if (m_textureOutdated) image->setTexture(window()->createTextureFromImage(m_pixels));
        m_textureOutdated = false;
        image->setRect(PictureView::fitted(m_natural, size()));
        return image;
    }
    void geometryChange(const QRectF& now, const QRectF& before) override {
        QQuickItem::geometryChange(now, before);
        update();
    }

private:
    QImage m_pixels;
    QSizeF m_natural; ///< of the whole picture
    bool m_textureOutdated = true;
};

PictureView::PictureView(QQuickItem* parent)
    : QQuickItem(parent)
    , m_scaling(*QThreadPool::globalInstance())
    , m_shown(new PictureLayer(this))
    , m_previous(new PictureLayer(this)) {
    m_fade.setStartValue(0.0);
    m_fade.setEndValue(1.0);
    m_fade.setDuration(150);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& progress) {
        m_shown->setOpacity(progress.toReal());
        m_previous->setOpacity(1 - progress.toReal());
    });
    connect(&m_fade, &QVariantAnimation::finished, m_previous, &PictureLayer::clear);
}

void PictureView::setFadeDuration(int milliseconds) {
    if (m_fade.duration() == milliseconds) return;
    m_fade.setDuration(milliseconds);
    Q_EMIT fadeDurationChanged();
}

void PictureView::setPicture(const QImage& picture) {
    if (picture.cacheKey() == m_picture.cacheKey()) return;
    m_picture = picture;
    m_reduced = {};
    m_scaling.cancel();
    m_outdated = true;
    measure();
    Q_EMIT pictureChanged();
    Q_EMIT settledChanged();
    polish();
}

void PictureView::setStandIn(const QImage& pixels) {
    if (pixels.cacheKey() == m_standIn.cacheKey()) return;
    m_standIn = pixels;
    m_outdated = true;
    if (pixels.isNull()) {
        polish();
    } else {
        m_scaling.cancel();
        endFade();
        m_shown->show(pixels, m_picture.size());
        m_standInShown = true;
    }
    Q_EMIT standInChanged();
    Q_EMIT settledChanged();
}

void PictureView::measure() {
    const qreal ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    const QSize pixels = (fitted(m_picture.size(), size()).size() * ratio).toSize();
    if (pixels == m_pixelSize) return;
    m_pixelSize = pixels;
    Q_EMIT pixelSizeChanged();
}

QRectF PictureView::fitted(QSizeF picture, QSizeF area) {
    if (picture.isEmpty() || area.isEmpty()) return {};
    const QSizeF size = picture.scaled(area, Qt::KeepAspectRatio);
    return {QPointF((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

void PictureView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() == before.size()) return;
    m_shown->setSize(now.size());
    m_previous->setSize(now.size());
    m_outdated = true;
    measure();
    polish();
}

void PictureView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    const bool entered = change == ItemSceneChange && data.window;
    if (!entered && change != ItemDevicePixelRatioHasChanged) return;
    m_outdated = true;
    measure();
    polish();
}

void PictureView::updatePolish() {
    // A new size waits for the work that is under way; a new picture has cancelled it.
    if (m_outdated && m_standIn.isNull() && window() && !m_scaling.busy()) requestScaled();
}

void PictureView::requestScaled() {
    if (!m_picture.isNull() && size().isEmpty()) return;
    const QSize pixels = m_pixelSize.expandedTo({1, 1});
    m_outdated = false;
    const bool anotherPicture = m_picture.cacheKey() != m_shownKey && !m_standInShown;
    if (m_picture.isNull()) {
        show({}, anotherPicture);
        return;
    }
    if (!anotherPicture && !m_standInShown && m_shown->pixels() == pixels) {
        Q_EMIT settledChanged();
        return;
    }
    m_scaling.run(
        [picture = m_picture, reduced = m_reduced, pixels](const std::stop_token& stop) -> Scaled {
            Scaled result;
            result.reduced = reduced.isNull() ? PictureScaling::reduced(picture, stop) : reduced;
            if (stop.stop_requested()) return {};
            const bool enough = result.reduced.width() >= pixels.width() && result.reduced.height() >= pixels.height();
            result.pixels = PictureScaling::scaledDown(enough ? result.reduced : picture, pixels);
            return result;
        },
        [this, anotherPicture](Scaled scaled) { show(std::move(scaled), anotherPicture); });
}

void PictureView::show(Scaled scaled, bool anotherPicture) {
    if (anotherPicture) {
        m_fade.stop();
        m_previous->takeFrom(*m_shown);
    }
    m_reduced = std::move(scaled.reduced);
    m_shown->show(scaled.pixels, m_picture.size());
    m_shownKey = m_picture.cacheKey();
    m_standInShown = false;
    if (anotherPicture && m_fade.duration() > 0 && isVisible()) {
        m_fade.start();
    } else if (anotherPicture) {
        endFade();
    }
    Q_EMIT settledChanged();
    if (m_outdated) polish();
}

void PictureView::endFade() {
    m_fade.stop();
    m_previous->clear();
    m_shown->setOpacity(1);
}

} // namespace quillary
