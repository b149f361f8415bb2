#include "platform/FileError.h"

#include <system_error>

namespace quillary::platform {

QString FileError::description() const {
    return QString::fromStdString(std::generic_category().message(code));
}

} // namespace quillary::platform
