#include "platform/SystemWording.h"

#include "base/Translation.h"

#include <utility>

namespace quillary::platform {

QString inSystemWords(QString text) {
    const std::pair<QString, QString> words[] = {
        {QStringLiteral("⌘V"), translate("SystemWording", "Ctrl+V")},
        {QStringLiteral("⌘⇧4"), translate("SystemWording", "Print", "the key that takes a screenshot")},
        {QStringLiteral("Finder"), translate("SystemWording", "file manager")},
    };
    for (const auto& [word, here] : words) text.replace(word, here);
    return text;
}

} // namespace quillary::platform
