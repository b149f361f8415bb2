// A window out of which anything can be dragged: --data TYPE=FILE offers a file's bytes. Reports {"event":"dragged",
// "action":n} when a drag has ended; ends after --count drags or --timeout seconds.
#include "support/desktop/Offer.h"
#include "support/desktop/Report.h"

#include <QDrag>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QRasterWindow>
#include <QTimer>

namespace quillary::test {

namespace {

class DragSource : public QRasterWindow {
public:
    DragSource(const QCommandLineParser& parser, int count) : m_parser(parser), m_left(count) {}

protected:
    void mousePressEvent(QMouseEvent* event) override { m_pressedAt = event->position(); }
    void mouseMoveEvent(QMouseEvent* event) override {
        constexpr qreal farEnough = 4;
        if (!m_pressedAt || (event->position() - *m_pressedAt).manhattanLength() < farEnough) return;
        m_pressedAt.reset();
        auto* drag = new QDrag(this);
        drag->setMimeData(new Offer(m_parser));
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        drag->setPixmap(picture);
        const Qt::DropAction action = drag->exec(Qt::CopyAction);
        report(QStringLiteral("dragged"), {{QStringLiteral("action"), static_cast<int>(action)}});
        if (--m_left == 0) QTimer::singleShot(200, qGuiApp, &QCoreApplication::quit);
    }
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRect(QPoint(), size()), Qt::darkBlue); }

private:
    const QCommandLineParser& m_parser;
    int m_left;
    std::optional<QPointF> m_pressedAt;
};

} // namespace

} // namespace quillary::test

int main(int argc, char** argv) {
    using namespace quillary::test;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    Offer::addOptions(parser);
    parser.addOption({QStringLiteral("place"), QString(), QStringLiteral("X,Y,W,H"), QStringLiteral("0,0,300,300")});
    parser.addOption({QStringLiteral("count"), QString(), QStringLiteral("N"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("timeout"), QString(), QStringLiteral("SECONDS"), QStringLiteral("60")});
    parser.process(application);

    DragSource window(parser, parser.value(QStringLiteral("count")).toInt());
    new PointerReport(&window);
    window.setTitle(QStringLiteral("drag_source"));
    window.setGeometry(rectangle(parser.value(QStringLiteral("place"))));
    window.show();
    QTimer::singleShot(0, &window, [] { report(QStringLiteral("ready")); });
    QTimer::singleShot(parser.value(QStringLiteral("timeout")).toInt() * 1000, &application,
                       [] { QCoreApplication::exit(1); });
    return QCoreApplication::exec();
}
