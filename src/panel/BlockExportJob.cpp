#include "panel/BlockExportJob.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockExport.h"
#include "platform/FileChooser.h"

#include <chrono>

namespace quillary {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

BlockExportJob::BlockExportJob(const Services& with, QObject* parent)
    : QObject(parent), m_with(with), m_working(with.work) {
    m_tick.setInterval(100ms);
    connect(&m_tick, &QTimer::timeout, this, &BlockExportJob::progressChanged);
}

void BlockExportJob::exportBlock(const QString& url, Format format, bool areTargetsRelative) {
    const auto block = pathOfFileUrl(url.toLatin1());
    if (!block) return;
    m_copying.reset();
    ask(translate("Blocks", "Choose the folder for the export."),
        [&storage = m_with.storage, block = *block, format, areTargetsRelative](const fs::path& folder,
                                                                                const std::stop_token&) -> Outcome {
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
    m_copying = std::make_shared<Copying>();
    ask(translate("Blocks", "Choose where to make the folder with “%1” and its media.").arg(shownStem(*block)),
        [&storage = m_with.storage, block = *block, copying = m_copying](const fs::path& folder,
                                                                         const std::stop_token& stop) -> Outcome {
            ArrangementStore store(storage);
            const MediaProgress progress{.report =
                                             [copying](std::uint64_t done, std::uint64_t total) {
                                                 copying->total = total;
                                                 copying->done = done;
                                             },
                                         .stop = stop};
            const auto made = BlockExport::makePortable(store, block, folder, shownStem(block), progress);
            if (made) return Written{made->folder, {}};
            return std::unexpected(made.error().line());
        });
}

void BlockExportJob::ask(const QString& message, Work work) {
    if (m_stage == Stage::Working) return;
    platform::FileChooser::Question question{
        .message = message, .accept = translate("Blocks", "Use Folder"), .start = m_lastFolder};
    m_with.chooser.ask(
        this, question, [this, work = std::move(work), asked = ++m_asked](const std::vector<fs::path>& picked) {
            if (picked.empty() || asked != m_asked || m_stage == Stage::Working) return;
            m_lastFolder = picked.front();
            enter(Stage::Working);
            m_tick.start();
            m_working.run([work, folder = picked.front()](const std::stop_token& stop) { return work(folder, stop); },
                          [this](const Outcome& outcome) { finish(outcome); });
        });
}

void BlockExportJob::finish(const Outcome& outcome) {
    m_tick.stop();
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
    m_working.cancel();
    reset();
}

void BlockExportJob::reset() {
    if (m_working.busy()) return;
    ++m_asked;
    m_tick.stop();
    m_outcome.clear();
    m_leftOut.clear();
    m_output.clear();
    enter(Stage::Asking);
}

double BlockExportJob::progress() const {
    if (!m_copying || m_stage != Stage::Working) return -1;
    const auto total = m_copying->total.load();
    return total > 0 ? static_cast<double>(m_copying->done) / static_cast<double>(total) : 0;
}

} // namespace quillary
