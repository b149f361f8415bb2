// A window out of which anything can be dragged: --data TYPE=FILE offers a file's bytes, --promise NAME promises on an
// X server to save a file of that name. Reports {"event":"dragged","action":n} when a drag has ended; ends after --count
// drags or --timeout seconds.
#include "support/desktop/Offer.h"
#include "support/desktop/ToolWindow.h"

#include <QDrag>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QRasterWindow>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

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
        auto* offer = new Offer(m_parser);
        if (const QString name = m_parser.value(QStringLiteral("promise")); !name.isEmpty()) {
            offer->setData(QStringLiteral("XdndDirectSave0"), "F");
            // Once the drag has the selection.
            QTimer::singleShot(0, this, [name] { promise(name.toUtf8()); });
        }
        drag->setMimeData(offer);
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        drag->setPixmap(picture);
        const Qt::DropAction action = drag->exec(Qt::CopyAction);
        report(QStringLiteral("dragged"), {{QStringLiteral("action"), static_cast<int>(action)}});
        countDown(m_left);
    }
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(QRect(QPoint(), size()), Qt::darkBlue); }

private:
    /// Puts the name on the window that owns the drag's data.
    static void promise(const QByteArray& name) {
        xcb_connection_t* server = xcb_connect(nullptr, nullptr);
        const auto atom = [server](const QByteArray& text) {
            const auto cookie = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(text.size()), text.constData());
            const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
                xcb_intern_atom_reply(server, cookie, nullptr), &std::free);
            return reply->atom;
        };
        const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
            xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, atom("XdndSelection")), nullptr),
            &std::free);
        xcb_change_property(server, XCB_PROP_MODE_REPLACE, owner->owner, atom("XdndDirectSave0"), atom("text/plain"), 8,
                            static_cast<std::uint32_t>(name.size()), name.constData());
        // The server reads no more of a connection that ends.
        std::free(xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
        xcb_disconnect(server);
    }

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
    parser.addOption({QStringLiteral("promise"), QString(), QStringLiteral("NAME")});
    parser.process(application);
    DragSource window(parser);
    return runWindow(window, parser, "drag_source");
}
