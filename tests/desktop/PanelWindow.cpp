// A window with a drag source in its left half and a drop target in its right half, which reports all that happens:
// {"event":"asked"|"tapped"|"dragBegan"|"dragEnded"|"hovered"|"targeted"|"dropped"|"key", …}. --url, given once or
// more, says which file: URL is dragged, each for one question and the last for all that follow; an empty one stands
// for no file.
// --delete removes the drag source in the middle of a drag.
#include "base/FileUrl.h"
#include "drag/DragSourceNSView.h"
#include "drag/PanelDropTarget.h"
#include "platform/KeyModifiers.h"
#include "support/desktop/ToolWindow.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QQuickWindow>

namespace quillary::test {

namespace {

QJsonObject described(const platform::ItemProvider& item) {
    QJsonObject hashes;
    for (const QString& type : item.types())
        if (const auto bytes = item.data(type))
            hashes.insert(type, QString::fromLatin1(QCryptographicHash::hash(*bytes, QCryptographicHash::Md5).toHex()));
    return {{QStringLiteral("types"), QJsonArray::fromStringList(item.types())},
            {QStringLiteral("md5"), hashes},
            {QStringLiteral("file"), item.fileURL() ? QString::fromLatin1(fileUrl(*item.fileURL())) : QString()},
            {QStringLiteral("suggestedName"), item.suggestedName().value_or(QString())}};
}

void reportDrop(const std::vector<platform::ItemProvider>& items) {
    QJsonArray all;
    for (const auto& item : items) all.append(described(item));
    report(QStringLiteral("dropped"), {{QStringLiteral("items"), all}});
}

class KeyReport : public QQuickItem {
public:
    explicit KeyReport(QQuickItem* parent) : QQuickItem(parent) { setFocus(true); }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        report(QStringLiteral("key"), {{QStringLiteral("key"), event->key()},
                                       {QStringLiteral("capsLock"), platform::capsLockEngaged(*event)}});
    }
};

} // namespace

} // namespace quillary::test

int main(int argc, char** argv) {
    using namespace quillary;
    using namespace quillary::test;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    addWindowOptions(parser);
    parser.addOption({QStringLiteral("url"), QString(), QStringLiteral("URL")});
    parser.addOption({QStringLiteral("delete"), QString()});
    parser.process(application);

    QQuickWindow window;
    window.setColor(Qt::darkGray);
    window.setGeometry(rectangle(parser.value(QStringLiteral("place"))));

    auto* source = new DragSourceNSView(window.contentItem());
    source->setSize({window.width() / 2.0, qreal(window.height())});
    QStringList urls = parser.values(QStringLiteral("url"));
    source->url = [&]() -> std::optional<std::filesystem::path> {
        report(QStringLiteral("asked"));
        const QString url = urls.value(0);
        if (urls.size() > 1) urls.removeFirst();
        return pathOfFileUrl(url.toLatin1());
    };
    QObject::connect(source, &DragSourceNSView::tapped, [] { report(QStringLiteral("tapped")); });
    QObject::connect(source, &DragSourceNSView::hovered, [](qreal x) {
        report(QStringLiteral("hovered"), {{QStringLiteral("fraction"), x}});
    });
    QObject::connect(source, &DragSourceNSView::draggingChanged, source, [&, source] {
        report(source->dragging() ? QStringLiteral("dragBegan") : QStringLiteral("dragEnded"));
        if (source->dragging() && parser.isSet(QStringLiteral("delete"))) {
            QTimer::singleShot(200, source, [source] {
                delete source;
                report(QStringLiteral("deleted"));
            });
        }
    });

    KeyReport keys(window.contentItem());
    PanelDropTarget target(window.contentItem());
    target.setPosition({window.width() / 2.0, 0});
    target.setSize({window.width() / 2.0, qreal(window.height())});
    QObject::connect(&target, &PanelDropTarget::targetedChanged, [&] {
        report(QStringLiteral("targeted"), {{QStringLiteral("on"), target.targeted()}});
    });
    QObject::connect(&target, &PanelDropTarget::dropped, reportDrop);

    return runWindow(window, parser, "panel_window");
}
