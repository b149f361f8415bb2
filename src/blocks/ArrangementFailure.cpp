#include "blocks/ArrangementFailure.h"

namespace quillary {

QString ArrangementFailure::description() const {
    switch (kind) {
    case Kind::noMedia:
        return QStringLiteral("Couldn’t copy the media for “%1”").arg(text);
    case Kind::alreadySaved:
        return QStringLiteral("“%1” is already saved").arg(text);
    case Kind::notFCPXML:
        return QStringLiteral("That isn’t a Final Cut clip");
    case Kind::unreadable:
    case Kind::storage:
        break;
    }
    return text;
}

} // namespace quillary
