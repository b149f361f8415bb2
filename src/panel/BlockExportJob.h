#pragma once

#include "base/Background.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>

namespace quillary {

class FileJob;
class FileJobs;
class Storage;

namespace platform {
class FileChooser;
}

/// Writing one block for another editor, or as a folder of its own: asks where to, works in the background, and tells
/// what came of it. One at a time. Main thread; what is ended early leaves nothing.
class BlockExportJob : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the shelf")
    Q_PROPERTY(quillary::BlockExportJob::Stage stage READ stage NOTIFY changed FINAL)
    /// How far a portable folder is, 0 to 1; -1 for work that tells no progress.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    /// The name of what was written, or why nothing was.
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed FINAL)
    Q_PROPERTY(QStringList leftOut READ leftOut NOTIFY changed FINAL)
    /// The file: URL of what was written.
    Q_PROPERTY(QString output READ output NOTIFY changed FINAL)

public:
    enum class Stage { Asking, Working, Done, Failed };
    Q_ENUM(Stage)
    enum class Format { Fcpxml, Otio };
    Q_ENUM(Format)

    /// All outlive the job.
    struct Services {
        Storage& storage;
        platform::FileChooser& chooser;
        QThreadPool& work;
        FileJobs& jobs;
    };
    explicit BlockExportJob(const Services& with, QObject* parent = nullptr);

    // Blocks are named by their file: URLs. The folder is asked for first; what is called off there changes nothing.

    Q_INVOKABLE void exportBlock(const QString& url, quillary::BlockExportJob::Format format, bool areTargetsRelative);
    Q_INVOKABLE void makePortable(const QString& url);
    /// Ends what is under way; nothing is left of it.
    Q_INVOKABLE void stop();
    /// Forgets the last outcome.
    Q_INVOKABLE void reset();

    Stage stage() const { return m_stage; }
    double progress() const;
    const QString& outcome() const { return m_outcome; }
    const QStringList& leftOut() const { return m_leftOut; }
    const QString& output() const { return m_output; }

Q_SIGNALS:
    void changed();
    void progressChanged();

private:
    struct Written {
        std::filesystem::path output;
        QStringList leftOut;
    };
    using Outcome = std::expected<Written, QString>;
    using Work = std::function<Outcome(const std::filesystem::path& folder, FileJob& job)>;
    void ask(const QString& message, bool tellsProgress, Work work);
    void begin(const Work& work, const std::filesystem::path& folder);
    void finish(const Outcome& outcome);
    void enter(Stage stage);

    const Services m_with;
    Stage m_stage = Stage::Asking;
    QString m_outcome;
    QStringList m_leftOut;
    QString m_output;
    std::filesystem::path m_lastFolder;
    int m_asked = 0; ///< answers to older questions do not count
    std::shared_ptr<FileJob> m_job; ///< under way
    bool m_tellsProgress = false;
    Background m_working;
};

} // namespace quillary
