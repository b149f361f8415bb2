#pragma once

#include <QDBusConnection>
#include <optional>

namespace quillary::platform {

/// The session's bus, if there is one: without it the D-Bus library would start one of its own. Main thread.
std::optional<QDBusConnection> sessionBus();

} // namespace quillary::platform
