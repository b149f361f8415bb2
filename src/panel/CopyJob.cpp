#include "panel/CopyJob.h"

#include "blocks/ArrangementStore.h"
#include "library/Storage.h"

#include <chrono>
#include <utility>

namespace quillary {

namespace {

using namespace std::chrono_literals;

bool holdsAny(const ShelfCounts& counts) {
    return counts.images + counts.videos + counts.audio + counts.blocks + counts.recent > 0;
}

} // namespace

CopyJob::CopyJob(Storage& storage, QThreadPool& work, QObject* parent)
    : QObject(parent), m_storage(storage), m_counting(work), m_copying(work) {
    m_tick.setInterval(100ms);
    connect(&m_tick, &QTimer::timeout, this, &CopyJob::progressChanged);
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
    if (!m_offered || copying()) return;
    decline();
    setNote({});
    m_progress = std::make_shared<BatchProgress>();
    const CopySelection selection{images, videos, audio, blocks, recent};
    m_copying.run(
        [from = m_from, to = m_to, selection, progress = m_progress, &storage = m_storage](std::stop_token stop) {
            const CopyResult result =
                Storage::copyContents(from, to, selection, ArrangementStore::mediaOfBlocks, *progress, std::move(stop));
            if (selection.blocks) ArrangementStore(storage).relinkAll(from);
            return result;
        },
        [this](const CopyResult& result) {
            m_tick.stop();
            m_progress.reset();
            Q_EMIT progressChanged();
            setNote(result.summaryWithReason());
            Q_EMIT finished();
        });
    m_tick.start();
    Q_EMIT progressChanged();
}

void CopyJob::setNote(const QString& text) {
    if (m_note == text) return;
    m_note = text;
    Q_EMIT noteChanged();
}

} // namespace quillary
