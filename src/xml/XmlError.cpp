#include "xml/XmlError.h"

namespace quillary::xml {

QString XmlError::description() const {
    switch (kind) {
    case Kind::tooLarge:
        return QStringLiteral("The document is too large.");
    case Kind::noMemory:
        return QStringLiteral("There is not enough memory for the document.");
    case Kind::malformed:
        break;
    }
    if (line > 0) return QStringLiteral("Not a well-formed XML document: line %1, %2").arg(line).arg(reason);
    return QStringLiteral("Not a well-formed XML document: %1").arg(reason);
}

} // namespace quillary::xml
