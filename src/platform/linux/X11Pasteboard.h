#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/X11Selection.h"

namespace quillary::platform {

/// The X server's clipboard, read over a connection of its own. Made on any thread, asked on one thread at a time.
class X11Pasteboard final : public Pasteboard {
public:
    explicit X11Pasteboard(X11Selection::Patience patience = X11Selection::Patience());

    QStringList types() override;
    std::optional<QByteArray> data(const QString& type) override;

private:
    X11Selection m_clipboard;
    std::optional<QStringList> m_types;
};

} // namespace quillary::platform
