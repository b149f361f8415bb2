#pragma once

#include "base/Background.h"
#include "panel/JobRecord.h"
#include "platform/HeldFile.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>
#include <filesystem>
#include <vector>

namespace quillary {

/// The work that an earlier life of the program left undone, or that was stopped: told, taken up again, or forgotten.
/// Work that another process still does is not among it. Main thread.
class UnfinishedWork : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    /// One line; empty when there is nothing to tell.
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    /// What is missing, as paths: files, and the library that a copy was made of.
    Q_PROPERTY(QStringList files READ files NOTIFY changed FINAL)

public:
    /// `notes` is the folder of the jobs' notes; `work` outlives this.
    UnfinishedWork(std::filesystem::path notes, QThreadPool& work, QObject* parent = nullptr);

    /// Looks for work that was for this library.
    void read(const std::filesystem::path& root);
    /// Does it now.
    Q_INVOKABLE void resume();
    /// Nobody will be asked again.
    Q_INVOKABLE void dismiss();

    QString text() const;
    QStringList files() const;

Q_SIGNALS:
    void changed();
    void resumed(const quillary::JobRecord& record);

private:
    struct Left {
        JobRecord record;
        platform::HeldFile notes;
    };
    void forget();

    const std::filesystem::path m_folder;
    std::vector<Left> m_left;
    Background m_reading;
};

} // namespace quillary
