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

MediaShelf::~MediaShelf() {
    m_closing.request_stop();
}

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

void MediaShelf::save(const std::vector<fs::path>& urls) {
    saveInBackground([urls, &storage = storage(), folder = m_folder, collection = collectionFilter().collection(),
                      wrong = m_texts.wrong, closing = m_closing.get_token()]() -> std::expected<int, QString> {
        auto files = filesIn(urls, closing);
        std::erase_if(files, [&](const fs::path& file) { return Storage::shelf(file) != folder; });
        if (files.empty()) return std::unexpected(wrong);
        int added = 0;
        QString reason;
        for (const fs::path& file : files) {
            const auto stored = storage.storeVerbatim(file, folder, collection, {}, closing);
            added += stored.has_value();
            if (!stored && reason.isEmpty()) reason = stored.error().description();
        }
        if (added == 0) return std::unexpected(reason);
        return added;
    });
}

void MediaShelf::saveClip(const platform::ItemProvider& clip, const QByteArray& xml) {
    enum class ClipSave { added, compound, wrong };
    m_saving.every(
        [xml, &storage = storage(), folder = m_folder,
         collection = collectionFilter().collection()](const std::stop_token&) {
            // A clip of another kind is refused like a file of another kind.
            const auto media = ArrangementStore::mediaOfSingleClip(xml);
            if (media && Storage::shelf(*media) != folder) return ClipSave::wrong;
            return media && ArrangementStore(storage).singleMediaFile(xml, collection) ? ClipSave::added
                                                                                       : ClipSave::compound;
        },
        [this, clip](ClipSave outcome) {
            if (outcome == ClipSave::compound)
                Q_EMIT compoundClipDropped(clip);
            else if (outcome == ClipSave::wrong)
                setNote(m_texts.wrong, Tone::problem);
            else
                tellAdded(1);
        });
}

void MediaShelf::saveInBackground(std::function<std::expected<int, QString>()> save) {
    m_saving.every([save = std::move(save)](const std::stop_token&) { return save(); },
                   [this](const std::expected<int, QString>& added) { tellAdded(added); });
}

void MediaShelf::tellAdded(const std::expected<int, QString>& added) {
    if (added)
        setNote(translate("Shelf", m_texts.added, nullptr, *added));
    else
        setNote(added.error(), Tone::problem);
    if (added) refresh();
}

} // namespace quillary
