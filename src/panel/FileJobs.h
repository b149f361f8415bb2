#pragma once

#include "base/BatchProgress.h"
#include "panel/JobRecord.h"
#include "platform/HeldFile.h"

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

namespace quillary {

/// A piece of work on files that the user asked for and that is to be done, whatever becomes of the window: a batch, a
/// library copy, the media of a block. Shared by the main thread, which shows it, and the worker that does it.
///
/// What is not done is noted in a file of its own for as long as the job lives and stays there when it is stopped or
/// the program ends, so that the next start can tell.
class FileJob {
public:
    explicit FileJob(std::optional<platform::HeldFile> notes = {}) : m_notes(std::move(notes)) {}
    FileJob(const FileJob&) = delete;
    FileJob& operator=(const FileJob&) = delete;

    BatchProgress progress;        ///< in files
    std::atomic<double> part = 0;  ///< 0 to 1 of the file under way
    std::stop_token stopToken() const { return m_stop.get_token(); }
    void requestStop() { m_stop.request_stop(); }

    // The worker tells:

    /// What the job comes to, once that is known.
    void list(const std::vector<std::filesystem::path>& files);
    /// The file at this place of the list need not be done again.
    void done(std::size_t file);
    /// Nothing is left to do.
    void finish();
    /// All of these, for a batch. The job outlives it.
    BatchObserver observer();

    /// Leaves the notes to whoever looks for them next.
    void letGo();

private:
    std::stop_source m_stop;
    std::mutex m_mutex;
    std::optional<platform::HeldFile> m_notes;
};

/// Every job that is under way. Main thread.
class FileJobs : public QObject {
    Q_OBJECT

public:
    /// Where jobs of a cache folder are noted; empty for none.
    static std::filesystem::path notesIn(const std::filesystem::path& cacheFolder);
    static constexpr std::string_view suffix = ".job";

    explicit FileJobs(std::filesystem::path notes, QObject* parent = nullptr);
    /// Ends every job within the current file.
    ~FileJobs() override;

    /// The work that this record tells of begins.
    std::shared_ptr<FileJob> begin(const JobRecord& record);
    /// The same for work that leaves nothing when it is ended early, and of which nothing is noted.
    std::shared_ptr<FileJob> begin();
    /// Its result came home, with what went wrong, if anything did.
    void end(const std::shared_ptr<FileJob>& job, const QString& problem = {});
    /// Ends every job within the current file. What is not done stays noted.
    void stop();

    /// Keeps what came without a file until its job is done with it. Absent where nothing can be kept.
    std::optional<std::filesystem::path> keep(const QByteArray& contents, const std::string& name) const;
    /// Removes those of the files that `keep` made in this folder of notes.
    static void removeKept(const std::vector<std::filesystem::path>& files, const std::filesystem::path& notes);
    const std::filesystem::path& notes() const { return m_folder; }

    bool busy() const { return !m_running.empty(); }
    // Of all jobs since the last time that there were none.
    int done() const;
    int total() const;
    /// 0 to 1, files under way included.
    double fraction() const;
    const QStringList& problems() const { return m_problems; }

Q_SIGNALS:
    /// A job began or ended, or one that is under way came further.
    void changed();
    /// A job was ended early.
    void stopped();

private:
    std::shared_ptr<FileJob> take(std::shared_ptr<FileJob> job);

    std::filesystem::path m_folder;
    std::vector<std::shared_ptr<FileJob>> m_running;
    int m_ended = 0; ///< files of jobs that ended
    QStringList m_problems;
    QTimer m_tick;
};

} // namespace quillary
