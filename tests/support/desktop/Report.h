#pragma once

#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointerEvent>
#include <QRect>
#include <QString>
#include <QWindow>
#include <cstdio>

namespace quillary::test {

/// Prints one event as a line of JSON, at once.
inline void report(const QString& event, QJsonObject details = {}) {
    details.insert(QStringLiteral("event"), event);
    const QByteArray line = QJsonDocument(details).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

/// Reports where in its window the pointer is: {"event":"pointer","x":n,"y":n}. Under Wayland nobody else can tell.
class PointerReport : public QObject {
public:
    explicit PointerReport(QWindow* window) : QObject(window) { window->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove) {
            const QPointF at = static_cast<QSinglePointEvent*>(event)->position();
            report(QStringLiteral("pointer"), {{QStringLiteral("x"), at.x()}, {QStringLiteral("y"), at.y()}});
        }
        return false;
    }
};

/// "X,Y,W,H", as --place takes it: the toolkit keeps --geometry for itself.
inline QRect rectangle(const QString& text) {
    const QStringList sides = text.split(u',');
    const auto side = [&](qsizetype i) { return sides.value(i).toInt(); };
    return {side(0), side(1), side(2), side(3)};
}

} // namespace quillary::test
