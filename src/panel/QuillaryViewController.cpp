#include "panel/QuillaryViewController.h"

#include "drag/PanelDropTarget.h"
#include "platform/Clipboard.h"
#include "platform/Desktop.h"
#include "platform/WindowManners.h"

#include <QQmlEngine>

namespace quillary {

namespace {

constexpr int fadeInMilliseconds = 150;

}

QuillaryViewController::QuillaryViewController(const PanelModel::Collaborators& with, const platform::Desktop& desktop,
                                               QObject* parent)
    : QObject(parent)
    , m_model(with)
    , m_desktop(desktop)
    , m_clipboard(with.clipboard)
    , m_textPaste(with.work) {
    m_desktop.watchManners(this, [this] { followManners(); });
}

QuillaryViewController::~QuillaryViewController() = default;

PanelContainerView* QuillaryViewController::loadView(QQmlEngine& engine, const QUrl& rootView) {
    QQmlComponent component(&engine, rootView);
    std::unique_ptr<QObject> root;
    if (component.isReady())
        root.reset(component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&m_model)}}));
    m_hosting = qobject_cast<QQuickItem*>(root.get());
    if (!m_hosting) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    m_view = std::make_unique<PanelContainerView>();
    m_view->setSize(initialSize);
    m_view->onPaste = [this] { m_model.handlePaste(); };
    m_view->onPasteText = [this](QQuickItem& field, PanelContainerView::Text text) {
        const bool copied = text == PanelContainerView::Text::copied;
        m_textPaste.paste(copied ? m_clipboard.contents() : m_clipboard.selection(), field);
    };
    root.release()->setParent(m_view.get());
    m_hosting->setParentItem(m_view.get());
    m_hosting->setOpacity(0);
    const auto follow = [this] { m_hosting->setSize(m_view->size()); };
    connect(m_view.get(), &QQuickItem::widthChanged, m_hosting, follow);
    connect(m_view.get(), &QQuickItem::heightChanged, m_hosting, follow);
    follow();
    if (auto* target = m_hosting->findChild<PanelDropTarget*>())
        connect(target, &PanelDropTarget::dropped, &m_model, &PanelModel::handleDrop);
    followManners();
    return m_view.get();
}

void QuillaryViewController::followManners() {
    if (!m_hosting) return;
    const bool still = m_desktop.prefersReducedMotion();
    m_hosting->setProperty("dark", m_desktop.colorScheme() == platform::Desktop::ColorScheme::dark);
    m_hosting->setProperty("reducedMotion", still);
    m_hosting->setProperty("keepsWindowsAbove", platform::keepsWindowsAbove());
    if (still && m_fade) m_fade->setCurrentTime(fadeInMilliseconds);
}

void QuillaryViewController::viewDidLayout() {
    if (!m_view || !m_view->parentItem()) return;
    m_view->setPosition({});
    m_view->setSize(m_view->parentItem()->size());
    reveal();
}

void QuillaryViewController::reveal() {
    if (m_revealed || !m_view || !m_view->parentItem()) return;
    m_revealed = true;
    // After the current layout, so that the first frame already has its final size.
    QMetaObject::invokeMethod(this, &QuillaryViewController::fadeIn, Qt::QueuedConnection);
}

void QuillaryViewController::fadeIn() {
    if (m_desktop.prefersReducedMotion()) {
        m_hosting->setOpacity(1);
        return;
    }
    m_fade = new QVariantAnimation(m_hosting);
    m_fade->setDuration(fadeInMilliseconds);
    m_fade->setStartValue(0.0);
    m_fade->setEndValue(1.0);
    connect(m_fade, &QVariantAnimation::valueChanged, m_hosting,
            [hosting = m_hosting](const QVariant& opacity) { hosting->setOpacity(opacity.toReal()); });
    m_fade->start(QAbstractAnimation::DeleteWhenStopped);
}

void QuillaryViewController::viewDidAppear() {
    reveal();
    m_model.appear();
}

} // namespace quillary
