#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

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
};

} // namespace quillary
