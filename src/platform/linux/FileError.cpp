#include "platform/FileError.h"

#include "base/Translation.h"

#include <system_error>

namespace quillary::platform {

QString FileError::description() const {
    // The system's own text, "Device or resource busy", is about drives.
    if (code == EBUSY) return translate("Platform", "It is being changed by another program");
    return QString::fromStdString(std::generic_category().message(code));
}

} // namespace quillary::platform
