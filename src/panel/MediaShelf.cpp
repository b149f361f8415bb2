#include "panel/MediaShelf.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementStore.h"
#include "blocks/FCPXMLPasteboard.h"
#include "drag/DropReader.h"
#include "panel/BatchSave.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

MediaShelf::MediaShelf(const Services& with, Storage::Folder folder, Texts texts, QObject* parent)
    : Shelf(with, std::make_shared<ShelfListing>(folder), parent)
    , m_folder(folder)
    , m_texts(std::move(texts))
    , m_saving(with.work) {}

void MediaShelf::save(const std::vector<platform::ItemProvider>& providers) {
    const auto [clips, others] = DropReader::split(providers, &FCPXMLPasteboard::carriesClips);
    for (const auto& clip : clips) {
        if (const auto xml = FCPXMLPasteboard::xml(clip))
            saveClip(clip, *xml);
        else
            setNote(translate("Shelf", "That drag carried no Final Cut clip"), Tone::problem);
    }
    DropReader::fileURLs(others, this, [this, beside = !clips.empty()](std::vector<fs::path> urls) {
        // Beside clips, whose note counts, only what is for this shelf is taken.
        if (beside) std::erase_if(urls, [this](const fs::path& file) { return Storage::shelf(file) != m_folder; });
        if (!urls.empty())
            save(urls);
        else if (!beside)
            setNote(m_texts.none, Tone::problem);
    });
}

std::shared_ptr<FileJob> MediaShelf::begin(const std::vector<fs::path>& urls, const BatchTarget& target) {
    JobRecord record{.kind = JobRecord::Kind::batch, .root = {}, .files = urls, .target = target};
    if (const auto root = storage().root()) record.root = *root;
    return jobs().begin(record);
}

void MediaShelf::save(const std::vector<fs::path>& urls) {
    const auto collection = collectionFilter().collection();
    const BatchTarget target{.videos = collection, .audio = collection, .only = m_folder};
    const auto job = begin(urls, target);
    m_saving.every(
        [urls, target, job, &storage = storage()](const std::stop_token&) {
            BatchResult result = performSave(urls, storage, target, 0, job->progress, job->stopToken(), job->observer());
            if (!job->stopToken().stop_requested()) job->finish();
            return result;
        },
        [this, job, target](const BatchResult& result) {
            jobs().end(job, result.problem());
            tell(result, target);
        });
}

void MediaShelf::tell(const BatchResult& result, const BatchTarget& target) {
    const auto added = static_cast<int>(result.saved.size() + result.duplicates.size());
    if (added == 0 && !result.isProblem()) return setNote(m_texts.wrong, Tone::problem);
    if (!result.isProblem()) {
        tellAdded(added);
        if (result.cameFromFolders()) Q_EMIT filed(result, target, {});
        return;
    }
    if (added > 0) refresh();
    setNote(std::nullopt);
    Q_EMIT filed(result, target, result.summary());
}

void MediaShelf::saveClip(const platform::ItemProvider& clip, const QByteArray& xml) {
    enum class ClipSave { added, compound, wrong, stopped };
    const auto collection = collectionFilter().collection();
    const auto job = begin({}, {.videos = collection, .audio = collection, .only = m_folder});
    m_saving.every(
        [xml, job, collection, folder = m_folder, &storage = storage()](const std::stop_token&) {
            // A clip of another kind is refused like a file of another kind.
            const auto media = ArrangementStore::mediaOfSingleClip(xml);
            if (media && Storage::shelf(*media) != folder) return ClipSave::wrong;
            if (!media) return ClipSave::compound;
            job->list({*media});
            const MediaProgress progress{.report = job->observer().copying, .stop = job->stopToken()};
            const bool added = ArrangementStore(storage).singleMediaFile(xml, collection, progress).has_value();
            if (job->stopToken().stop_requested()) return ClipSave::stopped;
            job->finish();
            return added ? ClipSave::added : ClipSave::compound;
        },
        [this, clip, job](ClipSave outcome) {
            jobs().end(job);
            if (outcome == ClipSave::compound)
                Q_EMIT compoundClipDropped(clip);
            else if (outcome == ClipSave::wrong)
                setNote(m_texts.wrong, Tone::problem);
            else if (outcome == ClipSave::added)
                tellAdded(1);
        });
}

void MediaShelf::tellAdded(int files) {
    setNote(translate("Shelf", m_texts.added, nullptr, files));
    refresh();
}

} // namespace quillary
