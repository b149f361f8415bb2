#include "platform/Clipboard.h"

#include "platform/linux/ToolkitPasteboard.h"
#include "platform/linux/X11Pasteboard.h"

#include <QGuiApplication>

namespace quillary::platform {

namespace {

class X11Clipboard final : public Clipboard {
public:
    std::shared_ptr<Pasteboard> contents() override { return std::make_shared<X11Pasteboard>(); }
};

class ToolkitClipboard final : public Clipboard {
public:
    std::shared_ptr<Pasteboard> contents() override { return std::make_shared<ToolkitPasteboard>(); }
};

} // namespace

std::unique_ptr<Clipboard> systemClipboard() {
    if (QGuiApplication::platformName() == u"xcb") return std::make_unique<X11Clipboard>();
    return std::make_unique<ToolkitClipboard>();
}

} // namespace quillary::platform
