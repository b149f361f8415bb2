// Owns the clipboard until it is killed: --data TYPE=FILE offers a file's bytes; --hang never answers anything,
// --hang-data tells its types and gives no data, --incr-stall stops in the middle of a long answer (X11).
#include "support/desktop/Offer.h"
#include "support/desktop/Report.h"
#include "support/desktop/StallingOwner.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>
#include <unistd.h>

int main(int argc, char** argv) {
    using namespace quillary::test;
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    Offer::addOptions(parser);
    parser.addOption({QStringLiteral("hang"), QStringLiteral("Answers nothing at all.")});
    parser.addOption({QStringLiteral("incr-stall"), QStringLiteral("Stops within an answer.")});
    parser.process(application);
    if (parser.isSet(QStringLiteral("incr-stall"))) return ownClipboardAndStall();

    QGuiApplication::clipboard()->setMimeData(new Offer(parser));
    const bool hangs = parser.isSet(QStringLiteral("hang"));
    const auto ready = [hangs] {
        report(QStringLiteral("ready"));
        while (hangs) pause();
    };
    // The X server knows the owner already, and whoever asks it at once gets no answer either.
    if (hangs && QGuiApplication::platformName() == u"xcb") ready();
    QTimer::singleShot(100, &application, ready);
    return QCoreApplication::exec();
}
