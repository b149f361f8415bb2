#pragma once

#include "base/Background.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>
#include <filesystem>
#include <functional>
#include <vector>

namespace quillary {

namespace platform {
class Clipboard;
class FileManager;
} // namespace platform

/// What is done with files for other programs: copying them, copying where they lie, showing them. Main thread.
class FileActions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")

public:
    /// All outlive this object. `longEdge` is that of vectors drawn as a picture; `tell` takes texts for the user.
    struct Services {
        platform::Clipboard& clipboard;
        platform::FileManager& fileManager;
        QThreadPool& work;
        std::function<int()> longEdge;
        std::function<void(const QString&)> tell;
    };
    explicit FileActions(Services with, QObject* parent = nullptr);

    // Files are named by their file: URLs; those that are gone are told of.

    /// Puts the files on the clipboard; of a single picture its PNG bytes as well, which are made in the background.
    /// The newest request wins.
    Q_INVOKABLE void copy(const QStringList& urls);
    /// The paths, one a line.
    Q_INVOKABLE void copyPath(const QStringList& urls);
    /// Where on the web each file was found, one a line; tells when of none anything is known.
    Q_INVOKABLE void copyCredits(const QStringList& urls);
    Q_INVOKABLE void showInFiles(const QStringList& urls);

private:
    std::vector<std::filesystem::path> present(const QStringList& urls) const;

    const Services m_with;
    Background m_copying;
};

} // namespace quillary
