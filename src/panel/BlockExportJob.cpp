#include "panel/BlockExportJob.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockExport.h"
#include "panel/FileJobs.h"
#include "platform/FileChooser.h"

#include <utility>

namespace quillary {

namespace fs = std::filesystem;

BlockExportJob::BlockExportJob(const Services& with, QObject* parent)
    : QObject(parent), m_with(with), m_working(with.work) {
    connect(&m_with.jobs, &FileJobs::changed, this, &BlockExportJob::progressChanged);
}

void BlockExportJob::exportBlock(const QString& url, Format format, bool areTargetsRelative) {
    const auto block = pathOfFileUrl(url.toLatin1());
    if (!block) return;
    ask(translate("Blocks", "Choose the folder for the export."), false,
        [&storage = m_with.storage, block = *block, format, areTargetsRelative](const fs::path& folder,
                                                                                FileJob&) -> Outcome {
            ArrangementStore store(storage);
            const auto written = BlockExport::write(
                store, {.block = block,
                        .format = format == Format::Otio ? BlockExport::Format::otio : BlockExport::Format::fcpxml110,
                        .output = {},
                        .folder = folder,
                        .areTargetsRelative = areTargetsRelative});
            if (!written) return std::unexpected(written.error().line());
            return Written{written->output, written->leftOut};
        });
}

void BlockExportJob::makePortable(const QString& url) {
    const auto block = pathOfFileUrl(url.toLatin1());
    if (!block) return;
    ask(translate("Blocks", "Choose where to make the folder with “%1” and its media.").arg(shownStem(*block)), true,
        [&storage = m_with.storage, block = *block](const fs::path& folder, FileJob& job) -> Outcome {
            ArrangementStore store(storage);
            const MediaProgress progress{.report = job.observer().copying, .stop = job.stopToken()};
            const auto made = BlockExport::makePortable(store, block, folder, shownStem(block), progress);
            if (made) return Written{made->folder, {}};
            return std::unexpected(made.error().line());
        });
}

void BlockExportJob::ask(const QString& message, bool tellsProgress, Work work) {
    if (m_stage == Stage::Working) return;
    platform::FileChooser::Question question{
        .message = message, .accept = translate("Blocks", "Use Folder"), .start = m_lastFolder};
    m_with.chooser.ask(this, question,
                       [this, tellsProgress, work = std::move(work), asked = ++m_asked](
                           const std::vector<fs::path>& picked) {
                           if (picked.empty() || asked != m_asked || m_stage == Stage::Working) return;
                           m_tellsProgress = tellsProgress;
                           begin(work, picked.front());
                       });
}

void BlockExportJob::begin(const Work& work, const fs::path& folder) {
    m_lastFolder = folder;
    m_job = m_with.jobs.begin();
    m_job->progress.total = 1;
    enter(Stage::Working);
    m_working.every([work, folder, job = m_job](const std::stop_token&) { return work(folder, *job); },
                    [this, job = m_job](const Outcome& outcome) {
                        m_with.jobs.end(job, outcome ? QString() : outcome.error());
                        if (job == m_job) finish(outcome);
                    });
}

void BlockExportJob::finish(const Outcome& outcome) {
    m_job.reset();
    if (outcome) {
        m_outcome = shown(outcome->output.filename());
        m_leftOut = outcome->leftOut;
        m_output = QString::fromLatin1(fileUrl(outcome->output));
    } else {
        m_outcome = outcome.error();
    }
    enter(outcome ? Stage::Done : Stage::Failed);
}

void BlockExportJob::enter(Stage stage) {
    m_stage = stage;
    Q_EMIT changed();
    Q_EMIT progressChanged();
}

void BlockExportJob::stop() {
    if (const auto job = std::exchange(m_job, nullptr)) job->requestStop();
    reset();
}

void BlockExportJob::reset() {
    if (m_job) return;
    ++m_asked;
    m_outcome.clear();
    m_leftOut.clear();
    m_output.clear();
    enter(Stage::Asking);
}

double BlockExportJob::progress() const {
    return m_job && m_tellsProgress ? m_job->part.load() : -1;
}

} // namespace quillary
