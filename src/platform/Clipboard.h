#pragma once

#include "platform/Pasteboard.h"

#include <memory>

namespace quillary::platform {

/// The desktop's clipboard.
class Clipboard {
public:
    virtual ~Clipboard() = default;

    /// What is on it now. Called on the main thread and answered at once; the result may then be asked on one other thread,
    /// where a slow owner keeps nobody waiting but the asker.
    virtual std::shared_ptr<Pasteboard> contents() = 0;
};

/// The clipboard of the running desktop session; needs the application object.
std::unique_ptr<Clipboard> systemClipboard();

} // namespace quillary::platform
