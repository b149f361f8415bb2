#include "blocks/ArrangementFailure.h"

#include "base/Translation.h"

namespace quillary {

QString ArrangementFailure::description() const {
    switch (kind) {
    case Kind::noMedia:
        return translate("Blocks", "Couldn’t copy the media for “%1”").arg(text);
    case Kind::alreadySaved:
        return translate("Blocks", "“%1” is already saved").arg(text);
    case Kind::notFCPXML:
        return translate("Blocks", "That isn’t a Final Cut clip");
    case Kind::unreadable:
    case Kind::storage:
        break;
    }
    return text;
}

} // namespace quillary
