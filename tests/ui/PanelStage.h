#pragma once

#include "imaging/Thumbnail.h"
#include "library/ui/ThumbnailProvider.h"
#include "panel/PanelContainerView.h"
#include "panel/PanelParts.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace quillary::test {

/// The panel's root view in its container over a real library in a folder of its own, in a window of its own.
class PanelStage : public PanelParts {
public:
    /// Clips have pictures when their frames can be had from somewhere.
    explicit PanelStage(const std::filesystem::path& builtInSets = {},
                        SoundPlayer::MakeOutput makeOutput = platform::systemAudioOutput,
                        Thumbnail::FrameSource frames = {})
        : PanelParts(builtInSets)
        , model({storage, settings, builtIns, clipboard, chooser, fileManager, work, saves, &ownChooser,
                 desktop.cacheFolder(), std::move(makeOutput)})
        , thumbnails(desktop.cacheFolder(), std::move(frames)) {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine.addImageProvider(QStringLiteral("thumbnail"), new ThumbnailProvider(thumbnails));
    }

    /// Shows the panel; false, with the reasons in `errors`, when its view cannot be made.
    bool show(QSize size) {
        view = make("Panel/PanelView", {{QStringLiteral("model"), QVariant::fromValue(&model)}});
        if (!view) return false;
        container.setParentItem(window.contentItem());
        container.onPaste = [this] { model.handlePaste(); };
        view->setParentItem(&container);
        resize(size);
        activate();
        return true;
    }
    /// A view of this file in the window; null, with the reasons in `errors`, when it cannot be made.
    std::unique_ptr<QQuickItem> make(const char* file, const QVariantMap& properties) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillary/%1.qml").arg(QLatin1String(file))));
        std::unique_ptr<QQuickItem> item;
        if (component.isReady())
            item.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties)));
        errors = component.errorString();
        if (item) item->setParentItem(window.contentItem());
        return item;
    }
    void activate() {
        window.show();
        window.requestActivate();
        comesTrue([this] { return window.isActive(); }, 2'000);
    }
    void resize(QSize size) {
        window.resize(size);
        container.setSize(size);
        if (view) view->setSize(size);
    }

    FolderChooser ownChooser;
    PanelModel model;
    Thumbnail thumbnails;
    QQmlEngine engine;
    QQuickWindow window;
    PanelContainerView container;
    std::unique_ptr<QQuickItem> view;
    QString errors;
};

} // namespace quillary::test
