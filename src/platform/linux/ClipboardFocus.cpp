#include "platform/Clipboard.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QTimer>

namespace quillary::platform {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWait = 2s;

} // namespace

std::unique_ptr<QWindow> focusForClipboard() {
    if (!QGuiApplication::platformName().startsWith(u"wayland")) return {};
    auto window = std::make_unique<QRasterWindow>();
    window->setFlag(Qt::FramelessWindowHint);
    window->resize(1, 1);
    QEventLoop loop;
    QObject::connect(window.get(), &QWindow::activeChanged, &loop, [&] {
        if (window->isActive()) loop.quit();
    });
    QTimer::singleShot(longestWait, &loop, &QEventLoop::quit);
    window->show();
    window->requestActivate();
    loop.exec();
    return window;
}

} // namespace quillary::platform
