#pragma once

#include <QEvent>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointerEvent>
#include <QRect>
#include <QString>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <utility>

namespace quillary::test {

/// Prints one event as a line of JSON, at once.
inline void report(const QString& event, QJsonObject details = {}) {
    details.insert(QStringLiteral("event"), event);
    const QByteArray line = QJsonDocument(details).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

/// Reports when a window is on the screen for the first time, {"event":"ready"}, and where in it the pointer is:
/// {"event":"pointer","x":n,"y":n}. Under Wayland nobody else can tell.
class WindowReport : public QObject {
public:
    explicit WindowReport(QWindow* window) : QObject(window), m_window(window) { window->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Expose && m_window->isExposed() && !std::exchange(m_shown, true))
            QTimer::singleShot(0, this, [] { report(QStringLiteral("ready")); });
        if (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove) {
            const QPointF at = static_cast<QSinglePointEvent*>(event)->position();
            report(QStringLiteral("pointer"), {{QStringLiteral("x"), at.x()}, {QStringLiteral("y"), at.y()}});
        }
        return false;
    }

private:
    QWindow* m_window;
    bool m_shown = false;
};

/// "X,Y,W,H", as --place takes it: the toolkit keeps --geometry for itself.
inline QRect rectangle(const QString& text) {
    const QStringList sides = text.split(u',');
    const auto side = [&](qsizetype i) { return sides.value(i).toInt(); };
    return {side(0), side(1), side(2), side(3)};
}

} // namespace quillary::test
