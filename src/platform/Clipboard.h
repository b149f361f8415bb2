#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>
#include <QString>
#include <QWindow>
#include <filesystem>
#include <memory>
#include <vector>

namespace quillary::platform {

/// The desktop's clipboard.
class Clipboard {
public:
    virtual ~Clipboard() = default;

    /// What is on it now. Called on the main thread and answered at once; the result may then be asked on one other
    /// thread, where a slow owner keeps nobody waiting but the asker.
    virtual std::shared_ptr<Pasteboard> contents() = 0;
    /// Likewise what is selected somewhere, where the middle mouse button pastes that; null where it does not.
    virtual std::shared_ptr<Pasteboard> selection() { return {}; }

    /// Puts files on it, as file managers do: their URLs, and before them a picture's PNG bytes, if there are any. Main
    /// thread.
    virtual void offerFiles(const std::vector<std::filesystem::path>& files, const QByteArray& png) = 0;
    virtual void offerText(const QString& text) = 0;
};

/// The clipboard of the running desktop session; needs the application object. From then on nobody in this process hears
/// from the toolkit that its clipboard changed: its text fields would ask the new owner for text, on the main thread.
std::unique_ptr<Clipboard> systemClipboard();

/// Some desktops tell the clipboard only to the program that has the focus. For a program without a window there: shows
/// a tiny one and waits until it has the focus, two seconds at most; keep it while reading. Null where none is needed.
std::unique_ptr<QWindow> focusForClipboard();

} // namespace quillary::platform
