#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QRect>
#include <QString>
#include <cstdio>

namespace quillary::test {

/// Prints one event as a line of JSON, at once.
inline void report(const QString& event, QJsonObject details = {}) {
    details.insert(QStringLiteral("event"), event);
    const QByteArray line = QJsonDocument(details).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

/// "X,Y,W,H"
inline QRect rectangle(const QString& text) {
    const QStringList sides = text.split(u',');
    const auto side = [&](qsizetype i) { return sides.value(i).toInt(); };
    return {side(0), side(1), side(2), side(3)};
}

} // namespace quillary::test
