#pragma once

#include "base/Background.h"

#include <QImage>
#include <QQuickItem>
#include <QVariantAnimation>

namespace quillary {

/// Makes the images that models hand out known to QML, as values without members.
struct ImageValue {
    Q_GADGET
    QML_FOREIGN(QImage)
    QML_ANONYMOUS
};

class PictureLayer;

/// Shows a picture of any size, scaled to fit with its aspect ratio kept. It is scaled down on a worker, to the item's
/// size in device pixels; until that is done the picture before stays on the screen, then the new one fades in over it.
/// Main thread.
class PictureView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage picture READ picture WRITE setPicture NOTIFY pictureChanged FINAL)
    /// Shown at once where the picture would be, as it is and in place of it; null for none. When it goes, it stays on
    /// the screen until the picture is ready again.
    Q_PROPERTY(QImage standIn READ standIn WRITE setStandIn NOTIFY standInChanged FINAL)
    /// Of the picture on the screen, in device pixels.
    Q_PROPERTY(QSize pixelSize READ pixelSize NOTIFY pixelSizeChanged FINAL)
    /// Milliseconds; 0 shows a new picture at once.
    Q_PROPERTY(int fadeDuration READ fadeDuration WRITE setFadeDuration NOTIFY fadeDurationChanged FINAL)
    /// Whether what the screen shows is the given picture at the item's size.
    Q_PROPERTY(bool settled READ settled NOTIFY settledChanged FINAL)

public:
    explicit PictureView(QQuickItem* parent = nullptr);

    const QImage& picture() const { return m_picture; }
    void setPicture(const QImage& picture);
    const QImage& standIn() const { return m_standIn; }
    void setStandIn(const QImage& pixels);
    QSize pixelSize() const { return m_pixelSize; }
    int fadeDuration() const { return m_fade.duration(); }
    void setFadeDuration(int milliseconds);
    bool settled() const { return !m_scaling.busy() && !m_outdated; }

    /// Where a picture of that size comes to lie in an area.
    static QRectF fitted(QSizeF picture, QSizeF area);

Q_SIGNALS:
    void pictureChanged();
    void standInChanged();
    void pixelSizeChanged();
    void fadeDurationChanged();
    void settledChanged();

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;

private:
    struct Scaled {
        QImage pixels;
        QImage reduced;
    };

    void measure();
    void requestScaled();
    void show(Scaled scaled, bool anotherPicture);
    void endFade();

    Background m_scaling;
    QImage m_picture;
    QImage m_standIn;
    bool m_standInShown = false;
    QSize m_pixelSize;
    QImage m_reduced; ///< a smaller stand-in of a huge picture for every further size
    PictureLayer* m_shown;
    PictureLayer* m_previous;
    qint64 m_shownKey = 0; ///< the picture that is shown
    bool m_outdated = false;
    QVariantAnimation m_fade;
};

} // namespace quillary
