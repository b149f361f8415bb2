#include "blocks/export/LeftOut.h"

namespace quillary {

namespace {

constexpr qsizetype mostNames = 4;
constexpr qsizetype longestName = 60;

QString shortened(const QString& name) {
    const QString line = name.simplified();
    return line.size() > longestName ? line.first(longestName) + u'…' : line;
}

} // namespace

void LeftOut::add(const QString& kind, const QString& name) {
    const auto [place, isNew] = m_places.try_emplace(kind, m_kinds.size());
    if (isNew) m_kinds.push_back({.label = kind, .names = {}});
    Kind& found = m_kinds[place->second];
    ++found.count;
    const QString called = shortened(name);
    if (called.isEmpty() || found.names.contains(called)) return;
    if (found.names.size() < mostNames)
        found.names.append(called);
    else
        found.hasMore = true;
}

QStringList LeftOut::texts() const {
    QStringList texts;
    for (const Kind& kind : m_kinds) {
        QString text = QStringLiteral("%1 (%2)").arg(kind.label).arg(kind.count);
        QStringList names;
        for (const QString& name : kind.names) names.append(QStringLiteral("“%1”").arg(name));
        if (kind.hasMore) names.append(QStringLiteral("…"));
        if (!names.isEmpty()) text += QStringLiteral(": ") + names.join(QStringLiteral(", "));
        texts.append(text);
    }
    return texts;
}

} // namespace quillary
