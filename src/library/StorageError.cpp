#include "library/StorageError.h"

#include "base/Text.h"
#include "base/Translation.h"

namespace quillary {

StorageError StorageError::couldNotWrite(std::filesystem::path location, QString reason) {
    return {Kind::couldNotWrite, std::move(location), std::move(reason)};
}

StorageError StorageError::platform(QString reason) {
    return {Kind::platform, {}, std::move(reason)};
}

QString StorageError::description() const {
    switch (kind) {
    case Kind::couldNotWrite:
        return translate("Storage", "Could not write %1: %2").arg(shown(location.filename()), reason);
    case Kind::noRoot:
        return translate("Storage", "Could not open the Quillary folder.");
    case Kind::couldNotEncodePNG:
        return translate("Storage", "Could not encode that image as PNG.");
    case Kind::platform:
        break;
    }
    return reason;
}

} // namespace quillary
