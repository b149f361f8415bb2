#pragma once

#include "cli/PanelOptions.h"
#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "library/Storage.h"

#include <functional>

class QGuiApplication;
class QQuickWindow;

namespace quillary {

class Thumbnail;

namespace platform {
class Desktop;
class Instance;
struct StartRequest;
} // namespace platform

struct PanelServices {
    Storage& storage;
    AppSettings& settings;
    BuiltInLibrary& builtIns;
    const platform::Desktop& desktop;
    Thumbnail& thumbnails;
    platform::Instance* instance = nullptr; ///< hears of later starts; null when this one stands alone
};

/// When the program ends by itself: never, at the first frame on the screen (before any shelf is read), or when the
/// pictures of the shelf's first tiles stand there. A screenshot waits until nothing more is on its way to the screen.
enum class RunUntil { closed, firstFrame, firstTiles };

/// What a start with these options asks of a panel that is open already.
platform::StartRequest startRequest(const PanelOptions& options);

/// Chooses renderer and platform for the panel, and how its heap gives memory back. Before the application object is
/// made.
void preparePanelApplication(const PanelOptions& options);

/// Opens the panel in a window of its own and runs until it is closed. Returns the exit status: 0, or 1 when the panel
/// cannot be shown or the screenshot not be written. Whatever was to be saved has been saved when it returns.
///
/// `shown` is called when the window has been shown; what it drives or watches ends with the event loop.
int runPanel(QGuiApplication& application, const PanelServices& services, const PanelOptions& options,
             RunUntil until = RunUntil::closed, const std::function<void(QQuickWindow&, PanelModel&)>& shown = {});

} // namespace quillary
