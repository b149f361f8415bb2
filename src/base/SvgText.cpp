#include "base/SvgText.h"

#include <algorithm>

namespace quillary {

QString svgIn(const QString& text) {
    constexpr qsizetype longest = 3'999'999;
    // Characters, not UTF-16 units: a pair counts once.
    if (text.size() > longest &&
        text.size() - std::ranges::count_if(text, [](QChar unit) { return unit.isLowSurrogate(); }) > longest)
        return {};
    const QString closing = QStringLiteral("</svg>");
    const qsizetype begin = text.indexOf(QLatin1String("<svg"));
    const qsizetype end = text.lastIndexOf(closing);
    if (begin < 0 || end < 0 || begin >= end) return {};
    return text.mid(begin, end + closing.size() - begin);
}

} // namespace quillary
