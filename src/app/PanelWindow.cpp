#include "app/PanelWindow.h"

#include "app/EnumWords.h"
#include "app/Finishing.h"
#include "app/WindowKeeper.h"
#include "base/FileUrl.h"
#include "base/Text.h"
#include "cli/ImageFile.h"
#include "library/ui/ThumbnailProvider.h"
#include "panel/FolderChooser.h"
#include "panel/QuillaryViewController.h"
#include "platform/Clipboard.h"
#include "platform/Desktop.h"
#include "platform/FileChooser.h"
#include "platform/FileManager.h"
#include "platform/Heap.h"
#include "platform/Instance.h"
#include "platform/ItemProvider.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QTimer>
#include <cstdio>
#include <utility>

namespace quillary {

namespace {

using namespace std::chrono_literals;

const QUrl rootView(QStringLiteral("qrc:/qt/qml/Quillary/Panel/PanelView.qml"));
constexpr QSize smallest{320, 300};
constexpr qint64 longestWait = 20'000; ///< ms
constexpr int quietTicks = 4;

/// A window of our own around the view that a host would otherwise give a place.
class PanelWindow : public QQuickWindow {
public:
    PanelWindow(QuillaryViewController& controller, const platform::Desktop& desktop) : m_controller(controller) {
        setTitle(QStringLiteral("Quillary"));
        setMinimumSize(smallest);
        resize(QuillaryViewController::initialSize.toSize());
        const bool light = desktop.colorScheme() == platform::Desktop::ColorScheme::light;
        setColor(light ? QColor(0xF4F4F6) : QColor(0x1C1C1F));
    }

    /// Closing tells of a last change, when this is a plain window already.
    ~PanelWindow() override { disconnect(this, nullptr, this, nullptr); }

    void host(PanelContainerView* view) {
        view->setParentItem(contentItem());
        m_controller.viewDidLayout();
        view->setFocus(true);
    }

    /// Reads the shelves once the first frame stands on the screen, and each time the window comes back to it.
    void appearAfterFirstFrame() {
        connect(
            this, &QQuickWindow::frameSwapped, this,
            [this] {
                m_controller.viewDidAppear();
                connect(this, &QWindow::visibilityChanged, this, &PanelWindow::appearAgain);
            },
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QQuickWindow::resizeEvent(event);
        m_controller.viewDidLayout();
    }

private:
    void appearAgain(Visibility now) {
        const bool shown = now != Hidden && now != Minimized;
        if (shown && !std::exchange(m_shown, shown)) m_controller.viewDidAppear();
        m_shown = shown;
    }

    QuillaryViewController& m_controller;
    bool m_shown = true;
};

void takeArguments(PanelModel& model, const std::vector<QString>& arguments) {
    std::vector<platform::ItemProvider> items;
    for (const QString& argument : arguments) {
        const auto file = pathOfFileUrl(argument.toUtf8());
        std::error_code ignored;
        items.push_back(
            platform::ItemProvider::file(file ? *file : std::filesystem::absolute(pathOf(argument), ignored)));
    }
    if (!items.empty()) model.handleDrop(items);
}

template <typename Enumeration>
QString wordIfAny(const std::optional<Enumeration>& value) {
    return value ? wordOf(*value) : QString();
}

void show(PanelModel& model, std::optional<PanelModel::Tab> tab, std::optional<PanelModel::LibraryKind> shelf) {
    if (shelf) {
        model.setTab(PanelModel::Tab::library);
        model.setLibraryKind(*shelf);
    }
    if (tab) model.setTab(*tab);
}

void takeRequest(PanelWindow& window, PanelModel& model, Finishing& finishing, const platform::StartRequest& request) {
    show(model, valueOf<PanelModel::Tab>(request.tab), valueOf<PanelModel::LibraryKind>(request.shelf));
    takeArguments(model, request.urls);
    // The toolkit takes the desktop's permission from there.
    if (!request.activationToken.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", request.activationToken.toUtf8());
    finishing.comeBack();
    if (window.windowStates().testFlag(Qt::WindowMinimized)) window.showNormal();
    window.raise();
    window.requestActivate();
}

/// Ends the program when the pictures of the first tiles stand on the screen.
class FirstTiles : public QObject {
public:
    FirstTiles(PanelWindow& window, PanelModel& model, const ThumbnailProvider& thumbnails) {
        connect(&window, &QQuickWindow::frameSwapped, this, [this, &window, &model, &thumbnails] {
            const bool made = model.imagesShelf()->visibleModel()->count() > 0 && !thumbnails.busy();
            m_frames = made ? m_frames + 1 : 0;
            if (m_frames == framesToShow) QMetaObject::invokeMethod(qApp, &QGuiApplication::quit, Qt::QueuedConnection);
            if (made) window.update();
        });
    }

private:
    /// A picture that was just made is on its way to its tile, and from there to the screen.
    static constexpr int framesToShow = 3;
    int m_frames = 0;
};

/// Waits until nothing more is on its way to the screen, then ends the program with a picture of the window.
class Screenshot : public QObject {
public:
    Screenshot(PanelWindow& window, PanelModel& model, const ThumbnailProvider& thumbnails, std::filesystem::path file)
        : m_window(window), m_model(model), m_thumbnails(thumbnails), m_file(std::move(file)) {
        m_waited.start();
        m_tick.setInterval(100ms);
        connect(&m_tick, &QTimer::timeout, this, &Screenshot::look);
        m_tick.start();
    }

private:
    void look() {
        const bool busy =
            m_model.staging() || m_model.importing() || !m_model.imagesShelf()->upToDate() || m_thumbnails.busy();
        m_quiet = busy ? 0 : m_quiet + 1;
        if (m_quiet < quietTicks && m_waited.elapsed() < longestWait) return;
        m_tick.stop();
        const bool done = cli::writePng(m_window.grabWindow(), m_file).has_value();
        if (!done) std::fprintf(stderr, "Could not write %s.\n", m_file.c_str());
        QGuiApplication::exit(done ? 0 : 1);
    }

    PanelWindow& m_window;
    PanelModel& m_model;
    const ThumbnailProvider& m_thumbnails;
    const std::filesystem::path m_file;
    QTimer m_tick;
    QElapsedTimer m_waited;
    int m_quiet = 0;
};

} // namespace

platform::StartRequest startRequest(const PanelOptions& options) {
    return {.urls = options.arguments,
            .tab = wordIfAny(options.tab),
            .shelf = wordIfAny(options.shelf),
            .activationToken =
                qEnvironmentVariable("XDG_ACTIVATION_TOKEN", qEnvironmentVariable("DESKTOP_STARTUP_ID"))};
}

void preparePanelApplication(const PanelOptions& options) {
    platform::giveFreedMemoryBack();
    const bool display = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (options.screenshot && !display && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // A small panel of flat shapes is drawn as fast by the processor, starts sooner and needs no graphics memory.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") && !qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

int runPanel(QGuiApplication& application, const PanelServices& services, const PanelOptions& options, RunUntil until,
             const std::function<void(QQuickWindow&, PanelModel&)>& shown) {
    QThreadPool work;
    QThreadPool saves;
    saves.setMaxThreadCount(1);
    const auto clipboard = platform::systemClipboard();
    const auto fileManager = platform::systemFileManager();
    FolderChooser ownChooser;
    const auto chooser = platform::systemFileChooser(ownChooser);

    int status = 1;
    {
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        auto* thumbnails = new ThumbnailProvider(services.thumbnails); // the engine's from here on
        engine.addImageProvider(QStringLiteral("thumbnail"), thumbnails);
        QuillaryViewController controller({services.storage, services.settings, services.builtIns, *clipboard, *chooser,
                                           *fileManager, work, saves, &ownChooser, services.desktop.cacheFolder()},
                                          services.desktop);
        PanelModel& model = controller.model();
        PanelWindow window(controller, services.desktop);
        // A picture of the panel shows it as it opens first.
        std::optional<WindowKeeper> keeper;
        if (!options.screenshot && until == RunUntil::closed) keeper.emplace(window, model, services.settings);
        show(model, options.tab, options.shelf);
        PanelContainerView* view = controller.loadView(engine, rootView);
        if (!view) return 1;
        window.host(view);
        if (until != RunUntil::firstFrame) window.appearAfterFirstFrame();
        window.show();
        Finishing finishing(window, model, saves, engine);
        takeArguments(model, options.arguments);
        if (shown) shown(window, model);
        if (services.instance)
            QObject::connect(services.instance, &platform::Instance::requested, &window,
                             [&](const platform::StartRequest& request) { takeRequest(window, model, finishing, request); });
        std::optional<Screenshot> screenshot;
        std::optional<FirstTiles> firstTiles;
        if (options.screenshot)
            screenshot.emplace(window, model, *thumbnails, *options.screenshot);
        else if (until == RunUntil::firstTiles)
            firstTiles.emplace(window, model, *thumbnails);
        else if (until == RunUntil::firstFrame)
            QObject::connect(&window, &QQuickWindow::frameSwapped, &application, &QGuiApplication::quit,
                             Qt::QueuedConnection);
        status = application.exec();
        // A start from now on is another panel.
        if (services.instance) services.instance->release();
    }
    saves.waitForDone();
    work.waitForDone();
    return status;
}

} // namespace quillary
