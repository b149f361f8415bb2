// A window that takes every drop as a copy and reports what it holds: {"event":"drop","formats":[…],"uriList":base64,
// "sizes":{type:bytes},"possibleActions":n,"announced":[…]}, where "announced" are the types that the other program
// told the X server, before the toolkit makes its own of them. With --keep FOLDER the data of each format is written
// there, named by its place among the formats. Ends after --count drops or --timeout seconds.
#include "support/desktop/AnnouncedTypes.h"
#include "support/desktop/ToolWindow.h"

#include <QDropEvent>
#include <QFile>
#include <QJsonArray>
#include <QMimeData>
#include <QPainter>
#include <QRasterWindow>

namespace quillary::test {

namespace {

class DropTarget : public QRasterWindow {
public:
    DropTarget(const QCommandLineParser& parser, const AnnouncedTypes& announced)
        : m_left(parser.value(QStringLiteral("count")).toInt())
        , m_keep(parser.value(QStringLiteral("keep")))
        , m_announced(announced) {}

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
        int place = 0;
        for (const QString& type : data->formats()) {
            const QByteArray bytes = data->data(type);
            sizes.insert(type, bytes.size());
            if (!m_keep.isEmpty()) keep(bytes, place++);
        }
        report(
            QStringLiteral("drop"),
            {{QStringLiteral("formats"), QJsonArray::fromStringList(data->formats())},
             {QStringLiteral("uriList"), QString::fromLatin1(data->data(QStringLiteral("text/uri-list")).toBase64())},
             {QStringLiteral("sizes"), sizes},
             {QStringLiteral("announced"), QJsonArray::fromStringList(m_announced.types())},
             {QStringLiteral("possibleActions"), static_cast<int>(event->possibleActions().toInt())}});
        countDown(m_left);
    }

    void keep(const QByteArray& bytes, int place) const {
        QFile file(m_keep + u'/' + QString::number(place));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) qFatal("cannot write");
    }

    int m_left;
    QString m_keep;
    const AnnouncedTypes& m_announced;
};

} // namespace

} // namespace quillary::test

int main(int argc, char** argv) {
    using namespace quillary::test;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    addWindowOptions(parser);
    parser.addOption({QStringLiteral("keep"), QString(), QStringLiteral("FOLDER")});
    parser.process(application);
    AnnouncedTypes announced;
    if (QGuiApplication::platformName() == u"xcb") application.installNativeEventFilter(&announced);
    DropTarget window(parser, announced);
    return runWindow(window, parser, "drop_target");
}
