// How long a receiver waits for the file of a drag: from `fileOnDisk` to the file, for pictures of 4096 × 4096 that were
// staged a second earlier, and at once after staging.
#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "panel/FolderChooser.h"
#include "panel/PanelModel.h"
#include "platform/Bookmarks.h"
#include "platform/Clipboard.h"
#include "platform/Desktop.h"
#include "platform/FileManager.h"
#include "platform/SettingsStore.h"
#include "support/Pictures.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

using namespace quillary;

namespace {

void runEvents(
    qint64 milliseconds, const std::function<bool()>& done = [] { return false; }) {
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < milliseconds && !done()) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

double dragMilliseconds(PanelModel& model, const std::filesystem::path& file, qint64 wait) {
    model.clear();
    model.load(file);
    runEvents(60'000, [&] { return model.stage() == PanelModel::Stage::loaded; });
    runEvents(wait);
    QElapsedTimer time;
    time.start();
    const auto dragged = model.fileOnDisk();
    const double spent = static_cast<double>(time.nsecsElapsed()) / 1e6;
    if (!dragged) std::exit(1);
    return spent;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    std::string pattern = (std::filesystem::temp_directory_path() / "quillary-drag-XXXXXX").string();
    const std::filesystem::path folder = mkdtemp(pattern.data());
    const auto settingsStore = platform::settingsIn(folder / "settings.conf");
    const auto bookmarks = platform::systemBookmarks();
    const auto desktop = platform::systemDesktop();
    const auto clipboard = platform::systemClipboard();
    const auto fileManager = platform::systemFileManager();
    FolderChooser chooser;
    Storage storage(*settingsStore, *bookmarks, *desktop, folder / "library");
    AppSettings settings(*settingsStore);
    BuiltInLibrary builtIns({});
    QThreadPool work;
    QThreadPool saves;
    saves.setMaxThreadCount(1);
    {
        PanelModel model({storage, settings, builtIns, *clipboard, chooser, *fileManager, work, saves});
        const auto file = folder / "photo.png";
        benchmark::Pictures::photo(4096).save(QString::fromStdString(file.string()), "PNG");
        constexpr int runs = 7;
        std::printf("%-28s %10s %10s %10s  ms to the file\n", "photo-like, 4096 x 4096", "median", "min", "max");
        for (const auto& [name, wait] : {std::pair("staged 1 s earlier", 1000), std::pair("staged just now", 0)}) {
            std::vector<double> times;
            for (int run = 0; run < runs; ++run) times.push_back(dragMilliseconds(model, file, wait));
            std::ranges::sort(times);
            std::printf("%-28s %10.2f %10.2f %10.2f\n", name, times[runs / 2], times.front(), times.back());
        }
    }
    saves.waitForDone();
    work.waitForDone();
    std::filesystem::remove_all(folder);
    return 0;
}
