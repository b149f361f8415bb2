// A window out of which anything can be dragged: --data TYPE=FILE offers a file's bytes. Reports {"event":"dragged",
// "action":n} when a drag has ended; ends after --count drags or --timeout seconds.
#include "support/desktop/Offer.h"
#include "support/desktop/ToolWindow.h"

#include <QDrag>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QRasterWindow>

namespace quillary::test {

namespace {

class DragSource : public QRasterWindow {
public:
    explicit DragSource(const QCommandLineParser& parser)
        : m_parser(parser), m_left(parser.value(QStringLiteral("count")).toInt()) {}

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
        countDown(m_left);
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
    addWindowOptions(parser);
    parser.process(application);
    DragSource window(parser);
    return runWindow(window, parser, "drag_source");
}
