#include "Driver.h"

#include "app/PanelWindow.h"
#include "imaging/Thumbnail.h"
#include "platform/Bookmarks.h"
#include "platform/Desktop.h"
#include "platform/SettingsStore.h"
#include "support/Rounds.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace quillary::benchmark {

using namespace std::chrono_literals;

namespace {

constexpr int longestWait = 20'000; ///< ms
constexpr QPoint placeOfDrops{900, 250};

double threadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

QString beside(const char* program) {
    return QCoreApplication::applicationDirPath() + u'/' + QLatin1String(program);
}

/// A server of its own with one sink, told of by PULSE_SERVER; null where there is none.
std::unique_ptr<QProcess> soundServer(const std::filesystem::path& folder) {
    const QString socket = QString::fromStdString(folder / "sound");
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    qputenv("PULSE_COOKIE", QByteArray::fromStdString(folder / "cookie"));
    auto server = std::make_unique<QProcess>();
    server->start(QStringLiteral("pulseaudio"),
                  {QStringLiteral("-n"), QStringLiteral("--daemonize=no"), QStringLiteral("--exit-idle-time=-1"),
                   QStringLiteral("-L"),
                   QStringLiteral("module-native-protocol-unix auth-anonymous=1 socket=") + socket,
                   QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=nul rate=48000")});
    if (!server->waitForStarted()) return nullptr;
    for (int i = 0; i < 100 && !std::filesystem::exists(folder / "sound"); ++i)
        server->waitForFinished(100);
    return server;
}

void stop(QProcess* process) {
    if (!process) return;
    process->kill();
    process->waitForFinished();
}

/// Samples of 16 bits, the low byte first.
bool soundIn(const QByteArray& samples) {
    constexpr int audible = 400;
    for (qsizetype i = 0; i + 1 < samples.size(); i += 2) {
        const auto low = static_cast<unsigned char>(samples[i]);
        if (std::abs(static_cast<signed char>(samples[i + 1]) * 256 + low) > audible) return true;
    }
    return false;
}

} // namespace

Watch::Watch() : m_processor(threadMilliseconds()) {
    m_wall.start();
}

Span Watch::elapsed() const {
    return {static_cast<double>(m_wall.nsecsElapsed()) / 1e6, threadMilliseconds() - m_processor};
}

Blocked::Blocked() {
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.setInterval(1ms);
    m_tick.callOnTimeout([this] { turn(); });
    m_tick.start();
}

void Blocked::turn() {
    m_longest = longest();
    m_since = Watch();
}

Span Blocked::longest() const {
    const Span last = m_since.elapsed();
    return {std::max(last.wall, m_longest.wall), std::max(last.processor, m_longest.processor)};
}

int Driver::run(int argc, char** argv, const std::filesystem::path& folder,
                const std::function<void(Driver&)>& work) {
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder / "config"));
    qputenv("XDG_CACHE_HOME", QByteArray::fromStdString(folder / "cache"));
    preparePanelApplication({});
    QGuiApplication application(argc, argv);
    const auto server = soundServer(folder);
    int status = 0;
    {
        const auto settingsStore = platform::userSettings();
        const auto bookmarks = platform::systemBookmarks();
        const auto desktop = platform::systemDesktop();
        Storage storage(*settingsStore, *bookmarks, *desktop, folder / "library");
        AppSettings settings(*settingsStore);
        BuiltInLibrary builtIns(BuiltInLibrary::installedFolder());
        Thumbnail thumbnails(desktop->cacheFolder());
        status = runPanel(application, {storage, settings, builtIns, *desktop, thumbnails}, {}, RunUntil::closed,
                          [&](QQuickWindow& window, PanelModel& model) {
                              QTimer::singleShot(500ms, &window, [&] {
                                  Driver driver(window, model);
                                  work(driver);
                                  driver.print();
                                  QCoreApplication::quit();
                              });
                          });
    }
    if (server) {
        server->terminate();
        server->waitForFinished();
    }
    return status;
}

Driver::Driver(QQuickWindow& window, PanelModel& model) : m_window(window), m_model(model) {
    m_window.setPosition(0, 0);
    m_target.start(beside("drop_target"), {QStringLiteral("--place"), QStringLiteral("700,100,400,300"),
                                           QStringLiteral("--count"), QStringLiteral("100000"),
                                           QStringLiteral("--timeout"), QStringLiteral("100000")});
    require(comesTrue([&] { return m_target.canReadLine(); }), "another program's window");
    m_recorder.start(QStringLiteral("parec"),
                     {QStringLiteral("-d"), QStringLiteral("nul.monitor"), QStringLiteral("--raw"),
                      QStringLiteral("--format=s16le"), QStringLiteral("--channels=1"),
                      QStringLiteral("--rate=48000"), QStringLiteral("--latency-msec=5")});
    m_recorder.waitForStarted();
}

Driver::~Driver() {
    for (QProcess* process : {m_owner.get(), &m_target, &m_recorder}) stop(process);
}

bool Driver::comesTrue(const std::function<bool()>& condition) {
    QElapsedTimer waited;
    waited.start();
    QTimer wake;
    wake.start(20ms);
    while (!condition()) {
        if (waited.elapsed() > longestWait) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void Driver::settle() {
    // No window manager gives the keyboard back that another window took.
    m_window.requestActivate();
    require(comesTrue([&] { return m_window.isActive(); }), "the keyboard");
    QElapsedTimer quiet;
    quiet.start();
    comesTrue([&] {
        if (m_model.staging() || m_model.refining()) quiet.restart();
        return quiet.elapsed() > 1000;
    });
}

void Driver::nextFrame() {
    bool swapped = false;
    QObject here;
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &here, [&] { swapped = true; });
    m_window.update();
    require(comesTrue([&] { return swapped; }), "a frame");
}

void Driver::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&m_window, key, modifiers);
}

QQuickItem& Driver::view() const {
    return *m_window.contentItem()->childItems().front();
}

QQuickItem* Driver::part(const char* name) const {
    // Pages that were shown before stay, and the stage waits for its picture.
    const auto parts = view().findChildren<QQuickItem*>(QLatin1String(name));
    require(!parts.isEmpty(), name);
    const auto shown = std::ranges::find_if(parts, [](const QQuickItem* item) { return item->isVisible(); });
    return shown == parts.end() ? parts.front() : *shown;
}

void Driver::focusTiles() {
    part("tiles")->forceActiveFocus();
    settle();
}

void Driver::focusSearch() {
    for (auto* item : view().findChildren<QQuickItem*>())
        if (item->isVisible() && QByteArrayView(item->metaObject()->className()).startsWith("SearchField"))
            item->forceActiveFocus();
    settle();
}

QPoint Driver::middleOfStage() const {
    const QQuickItem* picture = part("stagedPicture");
    return m_window.mapToGlobal(picture->mapToScene(QPointF(picture->width() / 2, picture->height() / 2)).toPoint());
}

QPoint Driver::edgeOfStage() const {
    const QQuickItem* picture = part("stagedPicture");
    const QSizeF shown =
        QSizeF(m_model.displayImage().size()).scaled(picture->size(), Qt::KeepAspectRatio) - QSizeF(16, 16);
    const QPointF corner(picture->width() / 2 - shown.width() / 2, picture->height() / 2 - shown.height() / 2);
    return m_window.mapToGlobal(picture->mapToScene(corner).toPoint());
}

bool Driver::screenBecomes(QPoint (Driver::*where)() const, const std::function<bool(QColor)>& wanted) {
    bool seen = false;
    QObject here;
    QObject::connect(&m_window, &QQuickWindow::frameSwapped, &here, [&] {
        const QPoint place = (this->*where)();
        const QImage pixel = m_window.screen()->grabWindow(0, place.x(), place.y(), 1, 1).toImage();
        seen = seen || (!pixel.isNull() && wanted(pixel.pixelColor(0, 0)));
    });
    return comesTrue([&] { return seen; });
}

void Driver::ownClipboard(const QString& offer) {
    stop(m_owner.get());
    m_owner = std::make_unique<QProcess>();
    m_owner->start(beside("clipboard_owner"), {QStringLiteral("--data"), offer});
    require(comesTrue([&] { return m_owner->canReadLine(); }), "the clipboard's owner");
}

Driver::Drop Driver::dragOut(QPoint from) {
    m_target.readAllStandardOutput();
    QStringList words;
    const auto move = [&](QPoint to) {
        words << QStringLiteral("mousemove") << QString::number(to.x()) << QString::number(to.y())
              << QStringLiteral("sleep") << QStringLiteral("0.015");
    };
    move(from);
    words << QStringLiteral("mousedown") << QStringLiteral("1");
    for (int step = 1; step <= 6; ++step) move(from + QPoint(4 * step, 0));
    for (int step = 1; step <= 8; ++step) move(from + (placeOfDrops - from) * step / 8);
    move(placeOfDrops + QPoint(1, 1));
    words << QStringLiteral("mouseup") << QStringLiteral("1");

    const Blocked blocked;
    Watch released;
    bool done = false;
    QProcess pointer;
    QObject::connect(&pointer, &QProcess::finished, &pointer, [&] {
        released = Watch();
        done = true;
    });
    pointer.start(QStringLiteral("xdotool"), words);
    QByteArray told;
    Span arrived;
    require(comesTrue([&] {
                told += m_target.readAllStandardOutput();
                if (arrived.wall == 0 && told.contains("\"drop\"")) arrived = released.elapsed();
                return done && arrived.wall > 0;
            }),
            "the drop");
    require(told.contains("\"uriList\":\"ZmlsZT"), "the drop carries a file");
    return {blocked.longest(), arrived};
}

void Driver::silence() {
    QElapsedTimer quiet;
    quiet.start();
    require(comesTrue([&] {
                if (soundIn(m_recorder.readAllStandardOutput())) quiet.restart();
                return quiet.elapsed() > 500;
            }),
            "silence");
}

void Driver::waitForSound() {
    require(comesTrue([&] { return soundIn(m_recorder.readAllStandardOutput()); }), "the sound");
}

void Driver::note(const std::string& what, Span span, const char* detail) {
    const std::string name = what + detail;
    if (!m_noted.contains(name)) m_order.push_back(name);
    m_noted[name].push_back(span.wall);
}

void Driver::print() const {
    std::printf("%-62s %5s %9s %9s\n", "ms, whole program", "runs", "median", "95 %");
    for (const std::string& name : m_order) {
        std::vector<double> values = m_noted.at(name);
        std::ranges::sort(values);
        const auto at = [&](double part) {
            return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1) + 0.5)];
        };
        std::printf("%-62s %5zu %9.1f %9.1f\n", name.c_str(), values.size(), at(0.5), at(0.95));
    }
}

} // namespace quillary::benchmark
