// The panel as it starts, on the library given, gone at its first frame ("first") or when the first tiles stand
// ("tiles").
#include "app/PanelWindow.h"
#include "imaging/Thumbnail.h"
#include "platform/Bookmarks.h"
#include "platform/Desktop.h"
#include "platform/SettingsStore.h"

#include <QGuiApplication>
#include <string_view>

int main(int argc, char** argv) {
    using namespace quillary;
    if (argc < 3) return 2;
    const bool tiles = std::string_view(argv[2]) == "tiles";
    PanelOptions options;
    if (tiles) options.tab = PanelModel::Tab::library;
    preparePanelApplication(options);
    QGuiApplication application(argc, argv);

    const auto settingsStore = platform::userSettings();
    const auto bookmarks = platform::systemBookmarks();
    const auto desktop = platform::systemDesktop();
    Storage storage(*settingsStore, *bookmarks, *desktop, argv[1]);
    AppSettings settings(*settingsStore);
    BuiltInLibrary builtIns(BuiltInLibrary::installedFolder());
    Thumbnail thumbnails(desktop->cacheFolder());
    return runPanel(application, {storage, settings, builtIns, *desktop, thumbnails}, options,
                    tiles ? RunUntil::firstTiles : RunUntil::firstFrame);
}
