#pragma once

class QKeyEvent;

namespace quillary::platform {

/// Whether Caps Lock was engaged when the key was pressed, which the toolkit's own modifiers do not tell.
bool capsLockEngaged(const QKeyEvent& event);

} // namespace quillary::platform
