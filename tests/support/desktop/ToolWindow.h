#pragma once

#include "support/desktop/Report.h"

#include <QCommandLineParser>
#include <QGuiApplication>

namespace quillary::test {

/// The options that every window here has: --place X,Y,W,H, --count N and --timeout SECONDS.
inline void addWindowOptions(QCommandLineParser& parser) {
    parser.addOption({QStringLiteral("place"), QString(), QStringLiteral("X,Y,W,H"), QStringLiteral("0,0,400,300")});
    parser.addOption({QStringLiteral("count"), QString(), QStringLiteral("N"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("timeout"), QString(), QStringLiteral("SECONDS"), QStringLiteral("120")});
}

/// Shows a window under that title where it was asked to stand and serves it until the program ends, with 1 when the
/// time is over.
inline int runWindow(QWindow& window, const QCommandLineParser& parser, const char* title) {
    new WindowReport(&window);
    window.setTitle(QString::fromLatin1(title));
    window.setGeometry(rectangle(parser.value(QStringLiteral("place"))));
    window.show();
    QTimer::singleShot(parser.value(QStringLiteral("timeout")).toInt() * 1000, qGuiApp,
                       [] { QCoreApplication::exit(1); });
    return QCoreApplication::exec();
}

/// Counts one drag or drop; the program ends soon after the last.
inline void countDown(int& left) {
    if (--left == 0) QTimer::singleShot(200, qGuiApp, &QCoreApplication::quit);
}

} // namespace quillary::test
