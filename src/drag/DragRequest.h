#pragma once

#include "platform/ItemProvider.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace quillary {

/// The question that a drag source asks when a drag begins; its handler writes the answer into it.
class DragRequest : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("handed to the handler of urlRequested")
    /// The "file:" URL to carry, percent-encoded; empty when there is none.
    Q_PROPERTY(QString url MEMBER url FINAL)
    /// Several of them instead of one, in the order in which they are to be taken.
    Q_PROPERTY(QStringList urls MEMBER urls FINAL)

public:
    QString url;
    QStringList urls;
    /// For handlers in C++: what to carry instead of a file.
    std::optional<platform::ItemProvider> item;
    /// For handlers in C++: files that are still being made, asked for once another program wants them
    /// (platform::fileDragData).
    std::function<std::vector<std::filesystem::path>()> lateFiles;
};

} // namespace quillary
