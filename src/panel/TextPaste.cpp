#include "panel/TextPaste.h"

#include "platform/Pasteboard.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QPointer>
#include <QQuickItem>

namespace quillary {

namespace {

/// Line breaks at the end are left out, others and what cannot be shown become blanks.
QString oneLine(QString text) {
    while (text.endsWith(u'\n') || text.endsWith(u'\r')) text.chop(1);
    for (QChar& letter : text)
        if (letter.category() == QChar::Other_Control) letter = u' ';
    return text;
}

} // namespace

void TextPaste::paste(const std::shared_ptr<platform::Pasteboard>& from, QQuickItem& field) {
    if (!from) return;
    m_reading.run([from](const std::stop_token&) { return from->string().value_or(QString()); },
                  [field = QPointer(&field)](const QString& text) {
                      const QString line = oneLine(text);
                      if (!field || !field->hasActiveFocus() || line.isEmpty()) return;
                      QInputMethodEvent typed;
                      typed.setCommitString(line);
                      QCoreApplication::sendEvent(field, &typed);
                  });
}

} // namespace quillary
