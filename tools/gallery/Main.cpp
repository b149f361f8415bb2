// Shows the panel in every state over a real library and saves a picture of each into the folder named as the argument:
// for looking at them.
#include "Chapter.h"
#include "base/Translation.h"

#include <QGuiApplication>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    quillary::installEnglish();
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    quillary::gallery::takePanel(folder);
    quillary::gallery::takeMedia(folder);
}
