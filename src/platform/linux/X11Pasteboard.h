#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/X11Selection.h"

namespace quillary::platform {

/// The X server's clipboard, or another of its selections, read over a connection of its own. Made on any thread, asked on one thread at a time.
class X11Pasteboard final : public Pasteboard {
public:
    explicit X11Pasteboard(X11Selection::Patience patience = X11Selection::Patience(),
                           const QByteArray& selection = QByteArrayLiteral("CLIPBOARD"));

    QStringList types() override;
    std::optional<QByteArray> data(const QString& type) override;

private:
    X11Selection m_clipboard;
    std::optional<QStringList> m_types;
};

} // namespace quillary::platform
