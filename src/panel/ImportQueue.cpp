#include "panel/ImportQueue.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "library/AppSettings.h"
#include "platform/Clipboard.h"

#include <utility>

namespace quillary {

namespace fs = std::filesystem;

ImportQueue::ImportQueue(const Services& with, QObject* parent)
    : QObject(parent)
    , m_storage(with.storage)
    , m_settings(with.settings)
    , m_clipboard(with.clipboard)
    , m_jobs(with.jobs)
    , m_saving(with.saves) {
    connect(&m_jobs, &FileJobs::changed, this, &ImportQueue::showProgress);
}

void ImportQueue::save(const std::vector<fs::path>& urls, const BatchTarget& target) {
    JobRecord record{.kind = JobRecord::Kind::batch, .root = {}, .files = urls, .target = target};
    if (const auto root = m_storage.root()) record.root = *root;
    const auto job = m_jobs.begin(record);
    m_batches.push_back(job);
    showProgress();
    m_saving.every(
        [urls, target, job, &storage = m_storage, longEdge = m_settings.vectorLongEdge()](const std::stop_token&) {
            BatchResult result =
                performSave(urls, storage, target, longEdge, job->progress, job->stopToken(), job->observer());
            if (!job->stopToken().stop_requested()) job->finish();
            return result;
        },
        [this, job, target](const BatchResult& result) {
            std::erase(m_batches, job);
            m_jobs.end(job, result.problem());
            showProgress();
            show(result, target, result.summary());
            Q_EMIT finished(result);
        });
}

void ImportQueue::stop() {
    for (const auto& job : m_batches) job->requestStop();
}

void ImportQueue::show(const BatchResult& result, const BatchTarget& target, const QString& summary) {
    ++m_shown;
    m_summary = summary;
    m_result = result;
    m_folders = {.target = target, .saved = result.saved};
    m_refiling = false;
    Q_EMIT resultChanged();
}

void ImportQueue::dismiss() {
    if (hasResult()) show({}, {}, {});
}

void ImportQueue::copyText(const QString& text) {
    m_clipboard.offerText(text);
}

void ImportQueue::setKeepFolders(bool keep) {
    if (keep == keepFolders() || m_refiling || !offersFolders()) return;
    m_refiling = true;
    Q_EMIT resultChanged();
    struct Refiled {
        BatchFolders folders;
        QStringList reasons;
    };
    m_saving.every(
        [folders = m_folders, keep, &storage = m_storage](const std::stop_token&) mutable {
            QStringList reasons = folders.file(storage, keep);
            return Refiled{std::move(folders), std::move(reasons)};
        },
        [this, shown = m_shown](Refiled refiled) {
            Q_EMIT this->refiled();
            if (shown != m_shown) return;
            m_refiling = false;
            m_folders = std::move(refiled.folders);
            m_result.refiling = std::move(refiled.reasons);
            Q_EMIT resultChanged();
        });
}

QStringList ImportQueue::problemFiles() const {
    QStringList files;
    for (const auto* list : {&m_result.failures, &m_result.refused})
        for (const auto& failure : *list) files += shown(failure.file);
    for (const fs::path& file : m_result.givenUp) files += shown(file);
    return files;
}

QStringList ImportQueue::problemReasons() const {
    QStringList reasons;
    for (const auto* list : {&m_result.failures, &m_result.refused})
        for (const auto& failure : *list) reasons += failure.message;
    for (std::size_t at = 0; at < m_result.givenUp.size(); ++at)
        reasons += translate("BatchSave", "Stopped before it was reached.");
    return reasons;
}

void ImportQueue::showProgress() {
    std::optional<Progress> now;
    if (!m_batches.empty()) now = {m_batches.front()->progress.done, m_batches.front()->progress.total};
    if (now == m_progress) return;
    m_progress = now;
    Q_EMIT progressChanged();
}

} // namespace quillary
