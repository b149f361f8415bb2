#include "platform/Clipboard.h"

#include "platform/FileDrag.h"
#include "platform/linux/ToolkitPasteboard.h"
#include "platform/linux/X11Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace quillary::platform {

namespace {

/// Writing goes through the toolkit everywhere.
class WritableClipboard : public Clipboard {
public:
    void offerFiles(const std::vector<std::filesystem::path>& files, const QByteArray& png) override {
        QGuiApplication::clipboard()->setMimeData(fileOfferData(files, png).release());
    }
    void offerText(const QString& text) override { QGuiApplication::clipboard()->setText(text); }
};

class X11Clipboard final : public WritableClipboard {
public:
    std::shared_ptr<Pasteboard> contents() override { return std::make_shared<X11Pasteboard>(); }
    std::shared_ptr<Pasteboard> selection() override {
        return std::make_shared<X11Pasteboard>(X11Selection::Patience(), QByteArrayLiteral("PRIMARY"));
    }
};

class ToolkitClipboard final : public WritableClipboard {
public:
    std::shared_ptr<Pasteboard> contents() override { return std::make_shared<ToolkitPasteboard>(); }
};

} // namespace

std::unique_ptr<Clipboard> systemClipboard() {
    QGuiApplication::clipboard()->blockSignals(true);
    if (QGuiApplication::platformName() == u"xcb") return std::make_unique<X11Clipboard>();
    return std::make_unique<ToolkitClipboard>();
}

} // namespace quillary::platform
