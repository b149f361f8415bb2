#pragma once

#include "base/Background.h"
#include "library/LibraryCopy.h"
#include "panel/FileJobs.h"
#include "values/ShelfCounts.h"

#include <QObject>
#include <QtQml/qqml.h>
#include <filesystem>
#include <memory>

namespace quillary {

class Storage;

/// The offer to copy the library's files after the library was put elsewhere, and the copying. The originals stay. Main
/// thread; counting and copying run in the background. A later copy goes on where one stopped.
class CopyJob : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the settings")
    /// Whether the user is to be asked.
    Q_PROPERTY(bool offered READ offered NOTIFY offeredChanged FINAL)
    Q_PROPERTY(int images READ images NOTIFY offeredChanged FINAL)
    Q_PROPERTY(int videos READ videos NOTIFY offeredChanged FINAL)
    Q_PROPERTY(int audio READ audio NOTIFY offeredChanged FINAL)
    Q_PROPERTY(int blocks READ blocks NOTIFY offeredChanged FINAL)
    Q_PROPERTY(int recent READ recent NOTIFY offeredChanged FINAL)
    Q_PROPERTY(bool copying READ copying NOTIFY progressChanged FINAL)
    Q_PROPERTY(int done READ done NOTIFY progressChanged FINAL)
    Q_PROPERTY(int total READ total NOTIFY progressChanged FINAL)
    /// What the last copy came to; empty before and while one runs.
    Q_PROPERTY(QString note READ note NOTIFY noteChanged FINAL)

public:
    /// All outlive the job.
    CopyJob(Storage& storage, FileJobs& jobs, QThreadPool& work, QObject* parent = nullptr);

    /// Offers to copy what the old root holds, if that is anything. An offer made before is void.
    void offer(const std::filesystem::path& from, const std::filesystem::path& to);
    Q_INVOKABLE void decline();
    /// Copies the selected shelves.
    Q_INVOKABLE void copy(bool images, bool videos, bool audio, bool blocks, bool recent);
    /// Goes on with a copy that was not finished; nothing while one runs.
    void resume(const std::filesystem::path& from, const std::filesystem::path& to, const CopySelection& selection);
    /// Ends the copy within the current file.
    Q_INVOKABLE void stop();

    bool offered() const { return m_offered; }
    const ShelfCounts& counts() const { return m_counts; }
    int images() const { return static_cast<int>(m_counts.images); }
    int videos() const { return static_cast<int>(m_counts.videos); }
    int audio() const { return static_cast<int>(m_counts.audio); }
    int blocks() const { return static_cast<int>(m_counts.blocks); }
    int recent() const { return static_cast<int>(m_counts.recent); }
    bool copying() const { return m_job != nullptr; }
    int done() const { return m_job ? m_job->progress.done.load() : 0; }
    int total() const { return m_job ? m_job->progress.total.load() : 0; }
    const QString& note() const { return m_note; }

Q_SIGNALS:
    void offeredChanged();
    void progressChanged();
    void noteChanged();
    /// The new root holds what was copied.
    void finished();

private:
    void setNote(const QString& text);

    Storage& m_storage;
    FileJobs& m_jobs;
    std::filesystem::path m_from;
    std::filesystem::path m_to;
    ShelfCounts m_counts;
    bool m_offered = false;
    QString m_note;
    std::shared_ptr<FileJob> m_job;
    Background m_counting;
    Background m_copying;
};

} // namespace quillary
