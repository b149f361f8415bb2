#include "panel/CopyJob.h"

#include "blocks/ArrangementStore.h"
#include "library/Storage.h"

#include <utility>

namespace quillary {

namespace {

bool holdsAny(const ShelfCounts& counts) {
    return counts.images + counts.videos + counts.audio + counts.blocks + counts.recent > 0;
}

} // namespace

CopyJob::CopyJob(Storage& storage, FileJobs& jobs, QThreadPool& work, QObject* parent)
    : QObject(parent), m_storage(storage), m_jobs(jobs), m_counting(work), m_copying(work) {
    connect(&m_jobs, &FileJobs::changed, this, &CopyJob::progressChanged);
}

void CopyJob::offer(const std::filesystem::path& from, const std::filesystem::path& to) {
    decline();
    setNote({});
    m_counting.run([from](const std::stop_token&) { return Storage::shelfCounts(from); },
                   [this, from, to](const ShelfCounts& counts) {
                       m_from = from;
                       m_to = to;
                       m_counts = counts;
                       m_offered = holdsAny(counts);
                       Q_EMIT offeredChanged();
                   });
}

void CopyJob::decline() {
    m_counting.cancel();
    if (std::exchange(m_offered, false)) Q_EMIT offeredChanged();
}

void CopyJob::copy(bool images, bool videos, bool audio, bool blocks, bool recent) {
    if (m_offered) resume(m_from, m_to, {images, videos, audio, blocks, recent});
}

void CopyJob::resume(const std::filesystem::path& from, const std::filesystem::path& to,
                     const CopySelection& selection) {
    if (copying()) return;
    decline();
    setNote({});
    m_job = m_jobs.begin({.kind = JobRecord::Kind::libraryCopy, .root = to, .from = from, .selection = selection});
    m_copying.every(
        [from, to, selection, job = m_job, &storage = m_storage](const std::stop_token&) {
            const CopyResult result = Storage::copyContents(from, to, selection, ArrangementStore::mediaOfBlocks,
                                                            job->progress, job->stopToken());
            if (selection.blocks) ArrangementStore(storage).relinkAll(from);
            if (!job->stopToken().stop_requested()) job->finish();
            return result;
        },
        [this](const CopyResult& result) {
            m_jobs.end(std::exchange(m_job, nullptr), result.failed > 0 ? result.summaryWithReason() : QString());
            Q_EMIT progressChanged();
            setNote(result.summaryWithReason());
            Q_EMIT finished();
        });
    Q_EMIT progressChanged();
}

void CopyJob::stop() {
    if (m_job) m_job->requestStop();
}

void CopyJob::setNote(const QString& text) {
    if (m_note == text) return;
    m_note = text;
    Q_EMIT noteChanged();
}

} // namespace quillary
