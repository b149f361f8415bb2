#include "cli/CollectionPath.h"

#include "base/Text.h"

#include <QStringList>

namespace quillary::cli {

std::optional<QString> collectionOf(const std::optional<QString>& typed) {
    QStringList names;
    for (const QString& name : typed.value_or(QString()).split(collectionSeparator.toString()))
        if (!name.trimmed().isEmpty()) names.append(name.trimmed());
    return names.isEmpty() ? std::nullopt : std::optional(names.join(collectionSeparator));
}

} // namespace quillary::cli
