#include "xml/XmlError.h"

#include "base/Translation.h"

namespace quillary::xml {

QString XmlError::description() const {
    switch (kind) {
    case Kind::tooLarge:
        return translate("Xml", "The document is too large.");
    case Kind::noMemory:
        return translate("Xml", "There is not enough memory for the document.");
    case Kind::malformed:
        break;
    }
    if (line > 0) return translate("Xml", "Not a well-formed XML document: line %1, %2").arg(line).arg(reason);
    return translate("Xml", "Not a well-formed XML document: %1").arg(reason);
}

} // namespace quillary::xml
