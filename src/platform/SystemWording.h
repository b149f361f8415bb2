#pragma once

#include <QString>

namespace quillary::platform {

/// A text of the panel as this system would put it: texts name keys and the program for files in one spelling ("⌘V",
/// "Finder"), each system has its own. Keys that are another program's own, such as an editor's, stay as they are. Any
/// thread.
QString inSystemWords(QString text);

} // namespace quillary::platform
