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

QString ArrangementFailure::missing(const QStringList& names) {
    constexpr qsizetype most = 4;
    if (names.size() == 1) return translate("Blocks", "%1 is missing.").arg(names.front());
    const bool isLong = names.size() > most;
    const QString last = isLong ? translate("Blocks", "%1 more", "files").arg(names.size() - (most - 1)) : names.back();
    const QString others = names.first(isLong ? most - 1 : names.size() - 1).join(QStringLiteral(", "));
    return translate("Blocks", "%1 and %2 are missing.", "files").arg(others, last);
}

QString ArrangementFailure::line() const {
    if (reason.isEmpty()) return description();
    return QStringLiteral("%1: %2").arg(description(), reason);
}

} // namespace quillary
