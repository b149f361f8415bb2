#pragma once

#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "library/Storage.h"
#include "imaging/Thumbnail.h"
#include "library/ui/ThumbnailProvider.h"
#include "panel/PanelModel.h"
#include "platform/Clipboard.h"
#include "support/FakeBookmarks.h"
#include "support/FakeDesktop.h"
#include "support/FakeFiles.h"
#include "support/FakeSettingsStore.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QThreadPool>

namespace quillary::test {

/// The panel's root view over a real library in a folder of its own, in a window of its own.
class PanelStage {
public:
    /// Clips have pictures when their frames can be had from somewhere.
    explicit PanelStage(std::filesystem::path builtInSets = {},
                        SoundPlayer::MakeOutput makeOutput = platform::systemAudioOutput,
                        Thumbnail::FrameSource frames = {})
        : builtIns(std::move(builtInSets))
        , model({storage, settings, builtIns, clipboard, chooser, fileManager, work, saves, &ownChooser, desktop.cacheFolder(),
                 std::move(makeOutput)})
        , thumbnails(desktop.cacheFolder(), std::move(frames)) {
        saves.setMaxThreadCount(1);
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine.addImageProvider(QStringLiteral("thumbnail"), new ThumbnailProvider(thumbnails));
    }
    ~PanelStage() {
        root.reset();
        saves.waitForDone();
        work.waitForDone();
    }

    /// Shows the panel; false, with the reasons in `errors`, when its view cannot be made.
    bool show(QSize size) {
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillary/Panel/PanelView.qml")));
        if (component.isReady())
            root.reset(qobject_cast<QQuickItem*>(
                component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)}})));
        errors = component.errorString();
        if (!root) return false;
        root->setParentItem(window.contentItem());
        resize(size);
        window.show();
        return true;
    }
    void resize(QSize size) {
        window.resize(size);
        if (root) root->setSize(size);
    }

    /// Runs the event loop until the condition holds.
    template <typename Condition>
    static bool comesTrue(Condition condition, int milliseconds = 20'000) {
        const QDeadlineTimer limit(milliseconds);
        while (!condition() && !limit.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }
    static void wait(int milliseconds) {
        comesTrue([] { return false; }, milliseconds);
    }

    std::filesystem::path file(const std::string& name, const QImage& image) {
        const auto path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        image.save(QString::fromStdString(path.string()));
        return path;
    }

    TemporaryFolder folder;
    FakeSettingsStore store;
    FakeBookmarks bookmarks;
    FakeDesktop desktop{folder.path()};
    AppSettings settings{store};
    Storage storage{store, bookmarks, desktop, folder / "library"};
    BuiltInLibrary builtIns;
    FakeClipboard clipboard;
    QThreadPool work;
    QThreadPool saves;
    FakeFileChooser chooser;
    FakeFileManager fileManager;
    FolderChooser ownChooser;
    PanelModel model;
    Thumbnail thumbnails;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> root;
    QString errors;
};

} // namespace quillary::test
