#include "platform/linux/X11Pasteboard.h"

#include "platform/linux/MimeReading.h"

namespace quillary::platform {

X11Pasteboard::X11Pasteboard(X11Selection::Patience patience, const QByteArray& selection)
    : m_clipboard(selection, patience) {}

QStringList X11Pasteboard::types() {
    if (m_types) return *m_types;
    QStringList types;
    for (const QByteArray& name : m_clipboard.targets()) {
        const QString type = QString::fromLatin1(name);
        if (!isBookkeeping(type)) types += type;
    }
    types.removeDuplicates();
    m_types = types;
    return types;
}

std::optional<QByteArray> X11Pasteboard::data(const QString& type) {
    // Some owners answer any question with whatever they have, so only what is offered is asked for.
    const auto spelling = offeredSpelling(types(), type);
    if (!spelling) return {};
    return m_clipboard.convert(spelling->toLatin1());
}

} // namespace quillary::platform
