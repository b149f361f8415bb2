#include "base/Text.h"

#include <algorithm>

namespace quillary {

QString foldedForSearch(const QString& text) {
    const bool ascii = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
    if (ascii) return text.toLower();
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded().normalized(QString::NormalizationForm_KC);
}

QString shown(const std::filesystem::path& path) {
    return QString::fromUtf8(path.native());
}

QString shownStem(const std::filesystem::path& path) {
    return QString::fromUtf8(path.stem().native());
}

std::filesystem::path pathOf(const QString& text) {
    return {text.toStdString()};
}

std::string lowercaseExtension(const std::filesystem::path& path) {
    std::string extension = path.extension().native();
    if (!extension.empty()) extension.erase(0, 1);
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return extension;
}

QString counted(qsizetype number, QStringView noun) {
    const QString text = QString::number(number) + u' ' + noun.toString();
    return number == 1 ? text : text + u's';
}

} // namespace quillary
