#include "library/StorageError.h"

#include "base/Text.h"

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
        return QStringLiteral("Could not write ") + shown(location.filename()) + QStringLiteral(": ") + reason;
    case Kind::noRoot:
        return QStringLiteral("Could not open the Quillary folder.");
    case Kind::couldNotEncodePNG:
        return QStringLiteral("Could not encode that image as PNG.");
    case Kind::platform:
        break;
    }
    return reason;
}

} // namespace quillary
