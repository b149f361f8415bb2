// A window that takes every drop as a copy and reports what it holds: {"event":"drop","formats":[…],"uriList":base64,
// "sizes":{type:bytes},"action":n}. Ends after --count drops or --timeout seconds.
#include "support/desktop/Report.h"

#include <QCommandLineParser>
#include <QDropEvent>
#include <QGuiApplication>
#include <QJsonArray>
#include <QMimeData>
#include <QPainter>
#include <QRasterWindow>
#include <QTimer>

namespace quillary::test {

namespace {

class DropTarget : public QRasterWindow {
public:
    explicit DropTarget(int count) : m_left(count) {}

protected:
    bool event(QEvent* event) override {
        switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
            accept(static_cast<QDropEvent*>(event));
            return true;
        case QEvent::Drop:
            accept(static_cast<QDropEvent*>(event));
            take(static_cast<QDropEvent*>(event));
            return true;
        default:
            return QRasterWindow::event(event);
        }
    }
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRect(QPoint(), size()), Qt::darkGreen); }

private:
    static void accept(QDropEvent* event) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }

    void take(const QDropEvent* event) {
        const QMimeData* data = event->mimeData();
        QJsonObject sizes;
        for (const QString& type : data->formats()) sizes.insert(type, data->data(type).size());
        report(
            QStringLiteral("drop"),
            {{QStringLiteral("formats"), QJsonArray::fromStringList(data->formats())},
             {QStringLiteral("uriList"), QString::fromLatin1(data->data(QStringLiteral("text/uri-list")).toBase64())},
             {QStringLiteral("sizes"), sizes},
             {QStringLiteral("possibleActions"), static_cast<int>(event->possibleActions().toInt())}});
        if (--m_left == 0) QTimer::singleShot(200, qGuiApp, &QCoreApplication::quit);
    }

    int m_left;
};

} // namespace

} // namespace quillary::test

int main(int argc, char** argv) {
    using namespace quillary::test;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("geometry"), QString(), QStringLiteral("X,Y,W,H"), QStringLiteral("0,0,300,300")});
    parser.addOption({QStringLiteral("count"), QString(), QStringLiteral("N"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("timeout"), QString(), QStringLiteral("SECONDS"), QStringLiteral("60")});
    parser.process(application);

    DropTarget window(parser.value(QStringLiteral("count")).toInt());
    window.setTitle(QStringLiteral("drop_target"));
    window.setGeometry(rectangle(parser.value(QStringLiteral("geometry"))));
    window.show();
    QTimer::singleShot(0, &window, [] { report(QStringLiteral("ready")); });
    QTimer::singleShot(parser.value(QStringLiteral("timeout")).toInt() * 1000, &application,
                       [] { QCoreApplication::exit(1); });
    return QCoreApplication::exec();
}
