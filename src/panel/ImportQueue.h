#pragma once

#include "base/Background.h"
#include "panel/BatchSave.h"
#include "panel/FileJobs.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace quillary {

class AppSettings;

namespace platform {
class Clipboard;
}

/// The batches that are being filed, one after another, and what the last one came to, until something newer takes its
/// place. Main thread; the filing is done in the background.
class ImportQueue : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("given by the model")
    Q_PROPERTY(bool importing READ importing NOTIFY progressChanged FINAL)
    Q_PROPERTY(int done READ done NOTIFY progressChanged FINAL)
    Q_PROPERTY(int total READ total NOTIFY progressChanged FINAL)

    /// Whether there is anything to tell or to ask of the last batch.
    Q_PROPERTY(bool hasResult READ hasResult NOTIFY resultChanged FINAL)
    /// What it came to, in one line; empty when that is told elsewhere.
    Q_PROPERTY(QString summary READ summary NOTIFY resultChanged FINAL)
    /// Why files are missing from it.
    Q_PROPERTY(QString explanation READ explanation NOTIFY resultChanged FINAL)
    Q_PROPERTY(bool isProblem READ isProblem NOTIFY resultChanged FINAL)
    // The files that were not saved, and why, in the same order.
    Q_PROPERTY(QStringList problemFiles READ problemFiles NOTIFY resultChanged FINAL)
    Q_PROPERTY(QStringList problemReasons READ problemReasons NOTIFY resultChanged FINAL)

    /// Whether the batch came in folders, so that `keepFolders` is a question.
    Q_PROPERTY(bool offersFolders READ offersFolders NOTIFY resultChanged FINAL)
    /// Whether what was saved lies in collections named after the folders that it came in. Setting it moves the files.
    Q_PROPERTY(bool keepFolders READ keepFolders WRITE setKeepFolders NOTIFY resultChanged FINAL)
    /// Whether files are being moved for it.
    Q_PROPERTY(bool refiling READ refiling NOTIFY resultChanged FINAL)

public:
    /// `saves` has one thread and is waited for when the program ends. All outlive the queue.
    struct Services {
        Storage& storage;
        AppSettings& settings;
        platform::Clipboard& clipboard;
        FileJobs& jobs;
        QThreadPool& saves;
    };
    explicit ImportQueue(const Services& with, QObject* parent = nullptr);

    /// Files a batch; folders are walked. A second batch waits for the first.
    void save(const std::vector<std::filesystem::path>& urls, const BatchTarget& target);
    /// Ends all batches within the current file.
    Q_INVOKABLE void stop();
    /// A batch that went another way tells what it came to; without a summary it only asks about its folders.
    void show(const BatchResult& result, const BatchTarget& target, const QString& summary);
    /// There is something newer to look at.
    Q_INVOKABLE void dismiss();
    /// Puts a list of files onto the clipboard.
    Q_INVOKABLE void copyText(const QString& text);

    struct Progress {
        int done = 0;
        int total = 0;
        bool operator==(const Progress&) const = default;
    };
    const std::optional<Progress>& progress() const { return m_progress; }
    bool importing() const { return m_progress.has_value(); }
    int done() const { return m_progress ? m_progress->done : 0; }
    int total() const { return m_progress ? m_progress->total : 0; }

    bool hasResult() const { return !m_summary.isEmpty() || offersFolders(); }
    const QString& summary() const { return m_summary; }
    QString explanation() const { return m_result.explanation(); }
    bool isProblem() const { return !m_summary.isEmpty() && (m_result.isProblem() || m_result.nothingToSave()); }
    QStringList problemFiles() const;
    QStringList problemReasons() const;
    bool offersFolders() const { return m_result.cameFromFolders(); }
    bool keepFolders() const { return m_folders.target.keepFolders; }
    void setKeepFolders(bool keep);
    bool refiling() const { return m_refiling; }

Q_SIGNALS:
    void progressChanged();
    void resultChanged();
    /// A batch was filed; what it came to is shown already.
    void finished(const quillary::BatchResult& result);
    /// Files of the last batch lie elsewhere now.
    void refiled();

private:
    void showProgress();

    Storage& m_storage;
    AppSettings& m_settings;
    platform::Clipboard& m_clipboard;
    FileJobs& m_jobs;
    Background m_saving;
    std::vector<std::shared_ptr<FileJob>> m_batches; ///< the running one first
    std::optional<Progress> m_progress;
    QString m_summary;
    BatchResult m_result;
    BatchFolders m_folders;
    bool m_refiling = false;
    quint64 m_shown = 0; ///< how often a result was shown
};

} // namespace quillary
