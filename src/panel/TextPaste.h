#pragma once

#include "base/Background.h"

#include <memory>

class QQuickItem;

namespace quillary {

namespace platform {
class Pasteboard;
}

/// Pastes text into text fields. The owner of the text is asked elsewhere and with a time limit, so one that hangs keeps
/// nobody waiting. Main thread.
class TextPaste : public QObject {
public:
    /// `work` outlives this.
    explicit TextPaste(QThreadPool& work) : m_reading(work) {}

    /// In place of what is selected in the field, as one line, unless the keyboard has left the field when the text comes
    /// or a newer paste was asked for. Nothing when there is no text, or none in time.
    void paste(const std::shared_ptr<platform::Pasteboard>& from, QQuickItem& field);

private:
    Background m_reading;
};

} // namespace quillary
