#pragma once

namespace quillary::platform {

/// What the window system lets a program decide about its windows: whether one stays above the others, and where it
/// stands. Main thread, with the application object.
bool keepsWindowsAbove();
bool placesWindows();

} // namespace quillary::platform
