#pragma once

#include <QString>

namespace quillary {

/// An entry of a module, which is loaded when it is first asked for and then stays. Modules lie beside the program or
/// in
/// ../lib/quillary. Null, with the reason, when the module is missing or has no such entry. Any thread.
QFunctionPointer moduleEntry(const char* fileName, const char* symbol, QString& reason);

} // namespace quillary
