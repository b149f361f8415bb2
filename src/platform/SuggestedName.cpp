#include "platform/SuggestedName.h"

#include <algorithm>

namespace quillary::platform {

std::optional<QString> suggestedName(const QUrl& address) {
    QString name = address.adjusted(QUrl::StripTrailingSlash).fileName(QUrl::FullyDecoded);
    if (const auto dot = name.lastIndexOf(u'.'); dot > 0) name.truncate(dot);
    name = name.replace(QStringLiteral("%20"), QStringLiteral(" ")).trimmed();
    if (name.size() < 2 || name.size() > 60 || name == address.host()) return {};
    if (std::ranges::none_of(name, [](QChar c) { return c.isLetter(); })) return {};
    return name;
}

} // namespace quillary::platform
