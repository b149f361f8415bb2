#include "platform/linux/SessionBus.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace quillary::platform {

namespace {

bool hasSessionBus() {
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")) return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

} // namespace

std::optional<QDBusConnection> sessionBus() {
    if (!QCoreApplication::instance() || !hasSessionBus()) return {};
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return {};
    return bus;
}

} // namespace quillary::platform
