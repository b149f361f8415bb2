#include "platform/SuggestedName.h"

#include <algorithm>

namespace quillary::platform {

std::optional<QString> suggestedName(const QUrl& address) {
    QString name = address.path(QUrl::FullyDecoded);
    while (name.endsWith(u'/')) name.chop(1);
    name = name.sliced(name.lastIndexOf(u'/') + 1);
    // Only what follows a dot inside the name is an extension.
    if (const qsizetype dot = name.lastIndexOf(u'.'); dot > 0) name.truncate(dot);
    name = name.replace(QStringLiteral("%20"), QStringLiteral(" ")).trimmed();

    constexpr qsizetype shortest = 2;
    constexpr qsizetype longest = 60;
    const QList<uint> characters = name.toUcs4();
    if (characters.size() < shortest || characters.size() > longest || name == address.host()) return {};
    if (std::ranges::none_of(characters, [](uint character) { return QChar::isLetter(character); })) return {};
    return name;
}

} // namespace quillary::platform
