#include "ui/PictureView.h"

#include "ui/PictureScaling.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QThreadPool>

namespace quillary {

namespace {

/// One picture on the screen, with its own opacity.
class LayerNode : public QSGOpacityNode {
public:
    void setPixels(QQuickWindow* window, const QImage& pixels) {
        removeAllChildNodes();
        delete m_image;
        m_image = nullptr;
        if (pixels.isNull()) return;
        m_image = window->createImageNode();
        m_image->setOwnsTexture(true);
        m_image->setTexture(window->createTextureFromImage(pixels));
        m_image->setFiltering(QSGTexture::Linear);
        appendChildNode(m_image);
    }
    void place(const QRectF& area) {
        if (m_image) m_image->setRect(area);
    }

private:
    QSGImageNode* m_image = nullptr;
};

class PictureNode : public QSGNode {
public:
    PictureNode() {
        appendChildNode(&previous);
        appendChildNode(&shown);
        previous.setFlag(OwnedByParent, false);
        shown.setFlag(OwnedByParent, false);
    }
    ~PictureNode() override { removeAllChildNodes(); }

    LayerNode previous;
    LayerNode shown;
};

} // namespace

PictureView::PictureView(QQuickItem* parent)
    : QQuickItem(parent)
    , m_scaling(*QThreadPool::globalInstance()) {
    setFlag(ItemHasContents);
    m_fade.setStartValue(0.0);
    m_fade.setEndValue(1.0);
    m_fade.setDuration(150);
    connect(&m_fade, &QVariantAnimation::valueChanged, this, &QQuickItem::update);
    connect(&m_fade, &QVariantAnimation::finished, this, [this] {
        m_previous = {};
        m_texturesOutdated = true;
        update();
    });
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
    Q_EMIT pictureChanged();
    Q_EMIT settledChanged();
    polish();
}

QRectF PictureView::fitted(QSizeF picture, QSizeF area) {
    if (picture.isEmpty() || area.isEmpty()) return {};
    const QSizeF size = picture.scaled(area, Qt::KeepAspectRatio);
    return {QPointF((area.width() - size.width()) / 2, (area.height() - size.height()) / 2), size};
}

void PictureView::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() == before.size()) return;
    m_outdated = true;
    polish();
    update();
}

void PictureView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    const bool entered = change == ItemSceneChange && data.window;
    if (!entered && change != ItemDevicePixelRatioHasChanged) return;
    m_outdated = true;
    polish();
}

void PictureView::updatePolish() {
    // A new size waits for the work that is under way; a new picture has cancelled it.
    if (m_outdated && window() && !m_scaling.busy()) requestScaled();
}

void PictureView::requestScaled() {
    const QSizeF area = fitted(m_picture.size(), size()).size() * window()->effectiveDevicePixelRatio();
    const QSize pixels = area.toSize().expandedTo({1, 1});
    if (!m_picture.isNull() && area.isEmpty()) return;
    m_outdated = false;
    const bool anotherPicture = m_picture.cacheKey() != m_shownKey;
    if (m_picture.isNull()) {
        show({}, anotherPicture);
        return;
    }
    if (!anotherPicture && m_shown.pixels.size() == pixels) {
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
        m_previous = std::exchange(m_shown, {});
        m_fade.stop();
        if (m_fade.duration() > 0 && isVisible()) m_fade.start();
        else m_previous = {};
    }
    m_reduced = std::move(scaled.reduced);
    m_shown = {std::move(scaled.pixels), m_picture.size()};
    m_shownKey = m_picture.cacheKey();
    m_texturesOutdated = true;
    Q_EMIT settledChanged();
    update();
    if (m_outdated) polish();
}

QSGNode* PictureView::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* root = static_cast<PictureNode*>(node);
    if (!root) {
        root = new PictureNode;
        m_texturesOutdated = true;
    }
    if (m_texturesOutdated) {
        root->previous.setPixels(window(), m_previous.pixels);
        root->shown.setPixels(window(), m_shown.pixels);
        m_texturesOutdated = false;
    }
    root->previous.place(fitted(m_previous.natural, size()));
    root->shown.place(fitted(m_shown.natural, size()));
    const bool fading = m_fade.state() == QAbstractAnimation::Running;
    const qreal progress = fading ? m_fade.currentValue().toReal() : 1;
    root->previous.setOpacity(1 - progress);
    root->shown.setOpacity(progress);
    return root;
}

} // namespace quillary
