#include "platform/WindowManners.h"

#include <QGuiApplication>

namespace quillary::platform {

namespace {

bool isX11() {
    return QGuiApplication::platformName() == u"xcb";
}

} // namespace

bool keepsWindowsAbove() {
    return isX11();
}

bool placesWindows() {
    return isX11();
}

} // namespace quillary::platform
