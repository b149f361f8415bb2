#include "app/Application.h"

#include "base/Translation.h"

#include <QGuiApplication>
#include <cstdlib>

namespace quillary {

namespace {

/// Only while the application object is being made: the toolkit tells of a display that it cannot reach through its
/// message handler, and would then abort.
const std::function<int()>* endedBy = nullptr;

/// What it says of its plugins on the way is for developers.
void endAtFatal(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type == QtFatalMsg) std::_Exit((*endedBy)());
}

template <typename Application>
std::unique_ptr<QCoreApplication> named(int& argc, char** argv) {
    auto application = std::make_unique<Application>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillary"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUILLARY_VERSION));
    installEnglish();
    return application;
}

bool displayNamed() {
    const auto told = [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); };
    return told("DISPLAY") || told("WAYLAND_DISPLAY") || told("QT_QPA_PLATFORM");
}

} // namespace

std::unique_ptr<QCoreApplication> applicationWithoutDisplay(int& argc, char** argv) {
    return named<QCoreApplication>(argc, argv);
}

std::unique_ptr<QCoreApplication> applicationWithDisplay(int& argc, char** argv, const std::function<int()>& refused) {
    if (!displayNamed()) std::exit(refused());
    endedBy = &refused;
    const QtMessageHandler before = qInstallMessageHandler(endAtFatal);
    QGuiApplication::setDesktopFileName(QStringLiteral("com.tamsel.quillary"));
    auto application = named<QGuiApplication>(argc, argv);
    qInstallMessageHandler(before);
    endedBy = nullptr;
    return application;
}

} // namespace quillary
