#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/MimeReading.h"

#include <memory>

namespace quillary::platform {

/// The toolkit's clipboard: the way in where only the toolkit holds the window system's offer, as on Wayland.
///
/// Made on the main thread, asked on one thread at a time. The toolkit reads on the main thread only, so a question
/// from elsewhere is answered there, one type at a time, while the asker waits; it needs a running event loop. A type
/// that does not come in about a second ends the reading. Once the clipboard has changed, nothing more is read.
class ToolkitPasteboard final : public Pasteboard {
public:
    ToolkitPasteboard();
    ~ToolkitPasteboard() override;

    QStringList types() override { return m_types; }
    std::optional<QByteArray> data(const QString& type) override;

private:
    struct Reading;

    QStringList m_types;
    std::shared_ptr<Reading> m_reading;
    bool m_gaveUp = false;
};

} // namespace quillary::platform
