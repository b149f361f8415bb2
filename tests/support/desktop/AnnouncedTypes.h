#pragma once

#include <QAbstractNativeEventFilter>
#include <QStringList>

namespace quillary::test {

/// Listens to the drags that enter the program's windows on an X server: the types as the other program announced them.
class AnnouncedTypes : public QAbstractNativeEventFilter {
public:
    const QStringList& types() const { return m_types; }

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    QStringList m_types;
};

} // namespace quillary::test
