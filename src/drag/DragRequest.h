#pragma once

#include "platform/ItemProvider.h"

#include <QObject>
#include <QString>
#include <QtQmlIntegration>
#include <optional>

namespace quillary {

/// The question that a drag source asks when a drag begins; its handler writes the answer into it.
class DragRequest : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("handed to the handler of urlRequested")
    /// The "file:" URL to carry, percent-encoded; empty when there is none.
    Q_PROPERTY(QString url MEMBER url FINAL)

public:
    QString url;
    /// For handlers in C++: what to carry instead of a file.
    std::optional<platform::ItemProvider> item;
};

} // namespace quillary
