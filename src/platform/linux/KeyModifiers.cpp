#include "platform/KeyModifiers.h"

#include <QKeyEvent>

namespace quillary::platform {

bool capsLockEngaged(const QKeyEvent& event) {
    // The second modifier bit is Lock in the X protocol, and in the keymaps that Wayland compositors hand out.
    constexpr quint32 lockBit = 1U << 1U;
    return (event.nativeModifiers() & lockBit) != 0;
}

} // namespace quillary::platform
