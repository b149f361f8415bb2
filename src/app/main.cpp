#include "app/Application.h"
#include "app/PanelWindow.h"
#include "base/Translation.h"
#include "cli/CommandLine.h"
#include "imaging/Thumbnail.h"
#include "media/ClipFrames.h"
#include "platform/Bookmarks.h"
#include "platform/Desktop.h"
#include "platform/Instance.h"
#include "platform/SettingsStore.h"

#include <QGuiApplication>
#include <clocale>

using namespace quillary;

int main(int argc, char** argv) {
    CommandLine commandLine;
    if (const auto status = commandLine.parse(argc, argv)) return *status;

    const PanelOptions* panel = commandLine.panel();
    if (panel) preparePanelApplication(*panel);
    const auto noDisplay = [&] {
        return commandLine.fail(cli::CommandError(QStringLiteral("There is no display to talk to."),
                                                  QStringLiteral("Run it inside a desktop session.")));
    };
    const auto application = commandLine.needsDisplay() ? applicationWithDisplay(argc, argv, noDisplay)
                                                        : applicationWithoutDisplay(argc, argv);

    // Commands are for scripts as well and speak English everywhere, the system's own reasons included.
    if (panel)
        installLanguage(QLocale::system());
    else
        std::setlocale(LC_MESSAGES, "C");

    // A library or a picture of its own makes a start independent of the panel that may be open already.
    std::unique_ptr<platform::Instance> instance;
    if (panel && !commandLine.library() && !panel->screenshot) {
        instance = platform::systemInstance();
        if (!instance->claim()) {
            if (instance->handOver(startRequest(*panel))) return 0;
            // It ended meanwhile.
            static_cast<void>(instance->claim());
        }
    }

    const auto settingsStore = platform::userSettings();
    const auto bookmarks = platform::systemBookmarks();
    const auto desktop = platform::systemDesktop();
    Storage storage(*settingsStore, *bookmarks, *desktop, commandLine.library());
    AppSettings settings(*settingsStore);
    BuiltInLibrary builtIns(BuiltInLibrary::installedFolder());
    Thumbnail thumbnails(desktop->cacheFolder(), media::clipThumbnail);

    if (!panel) return commandLine.run({storage, settings, builtIns, *bookmarks, *desktop, thumbnails});

    if (commandLine.library())
        if (const auto root = storage.root(); !root) return commandLine.fail(root.error());
    auto& gui = static_cast<QGuiApplication&>(*application);
    return runPanel(gui, {storage, settings, builtIns, *desktop, thumbnails, instance.get()}, *panel);
}
