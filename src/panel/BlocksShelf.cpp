#include "panel/BlocksShelf.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/BlockFiles.h"
#include "blocks/FCPXMLPasteboard.h"
#include "drag/DragRequest.h"
#include "imaging/ImageIntake.h"
#include "library/AppSettings.h"
#include "panel/FileJobs.h"
#include "platform/Clipboard.h"
#include "platform/FileAttributes.h"
#include "platform/ItemProvider.h"
#include "platform/Pasteboard.h"
#include "platform/SystemWording.h"

#include <algorithm>
#include <chrono>

namespace quillary {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

template <typename Value>
std::expected<Value, QString> described(std::expected<Value, ArrangementStore::Failure> result) {
    if (!result) return std::unexpected(result.error().line());
    if constexpr (std::is_void_v<Value>)
        return {};
    else
        return *std::move(result);
}

bool isDocument(const platform::ItemProvider& item) {
    return item.fileURL() && lowercaseExtension(*item.fileURL()) == Storage::blockExtensions.front();
}

using Clip = std::expected<FCPXMLDocument, ArrangementFailure>;

/// A file has a folder, from which its relative references count.
std::optional<Clip> clipIn(const platform::ItemProvider& item) {
    if (const auto xml = FCPXMLPasteboard::xml(item)) return FCPXMLDocument::parse(*xml);
    return isDocument(item) ? std::optional(FCPXMLDocument::read(*item.fileURL())) : std::nullopt;
}

/// The documents of the clips; those that came without a file are kept for as long as they are needed. Empty where
/// they cannot be.
std::vector<fs::path> documentsOf(const std::vector<platform::ItemProvider>& items, const FileJobs& jobs) {
    std::vector<fs::path> documents;
    for (const auto& item : items)
        if (const auto xml = FCPXMLPasteboard::xml(item)) {
            const QString name = item.suggestedName().value_or(translate("Blocks", "Block"));
            auto kept = jobs.keep(*xml, Storage::sanitize(name).toStdString() + ".fcpxml");
            if (!kept) return {};
            documents.push_back(*std::move(kept));
        } else if (isDocument(item)) {
            documents.push_back(*item.fileURL());
        }
    return documents;
}

std::expected<QString, QString> told(int saved, const QStringList& failures) {
    const QString done = translate("Blocks", "Saved %n block(s)", nullptr, saved);
    if (!failures.isEmpty()) {
        QString text = failures.front();
        if (failures.size() > 1) text += translate("Blocks", " · %n more failed", nullptr, failures.size() - 1);
        return std::unexpected(saved > 0 ? QStringLiteral("%1 · %2").arg(done, text) : text);
    }
    if (saved == 0) return std::unexpected(translate("Blocks", "That drag carried no Final Cut clip"));
    return done;
}

} // namespace

BlocksShelf::BlocksShelf(const Services& with, const BlockServices& also, QObject* parent)
    : BlocksShelf(with, also, std::make_shared<BlocksListing>(with.settings), parent) {}

BlocksShelf::BlocksShelf(const Services& with, const BlockServices& also, std::shared_ptr<BlocksListing> listing,
                         QObject* parent)
    : Shelf(with, listing, parent)
    , m_blocksListing(std::move(listing))
    , m_blocks(m_blocksListing->blocks())
    , m_clipboard(also.clipboard)
    , m_saving(also.saves)
    , m_care(with.storage, with.work)
    , m_exporting({with.storage, also.chooser, with.work, with.jobs})
    , m_drags(with.storage, with.work) {
    m_noteTask.setSingleShot(true);
    m_noteTask.setTimerType(Qt::PreciseTimer);
    m_noteTask.setInterval(6s);
    connect(&m_noteTask, &QTimer::timeout, this, [this] { setNote(std::nullopt); });
    connect(&jobs(), &FileJobs::changed, this, &BlocksShelf::saveProgressChanged);
    connect(selection(), &ShelfSelection::changed, this, &BlocksShelf::followSelection);
    connect(this, &BlocksShelf::selectedBlockChanged, this, &BlocksShelf::selectedDetailsChanged);
    connect(&m_care, &BlockCare::changed, this, [this] {
        visibleModel()->detailsChanged();
        Q_EMIT selectedDetailsChanged();
    });
    connect(&m_care, &BlockCare::done, this, [this](const QString& text) { note(text); });
    connect(&m_care, &BlockCare::failed, this, [this](const QString& text) { setNote(text, Tone::problem); });
}

void BlocksShelf::takenOver() {
    m_blocks = m_blocksListing->blocks();
    visibleModel()->detailsChanged();
    Q_EMIT selectedDetailsChanged();
    std::vector<fs::path> files;
    for (const Arrangement& block : m_blocks->list) files.push_back(block.url);
    m_care.follow(std::move(files));
}

const Arrangement* BlocksShelf::find(const std::optional<fs::path>& url) const {
    if (!url) return nullptr;
    const auto found = std::ranges::find(m_blocks->list, *url, &Arrangement::url);
    return found == m_blocks->list.end() ? nullptr : &*found;
}

std::vector<Arrangement> BlocksShelf::visibleBlocks() const {
    std::vector<Arrangement> shown;
    for (const LibraryItem& item : visible())
        if (const Arrangement* block = find(item.url)) shown.push_back(*block);
    return shown;
}

QVariant BlocksShelf::details(const LibraryItem& item) const {
    const Arrangement* block = find(item.url);
    return QVariant::fromValue(block ? BlockDetails::of(*block, m_care.of(block->url)) : BlockDetails());
}

BlockDetails BlocksShelf::selectedDetails() const {
    const Arrangement* block = find(m_selectedBlock);
    return block ? BlockDetails::of(*block, m_care.of(block->url)) : BlockDetails();
}

void BlocksShelf::setSelectedBlock(std::optional<fs::path> url) {
    if (m_selectedBlock == url) return;
    m_selectedBlock = std::move(url);
    Q_EMIT selectedBlockChanged();
}

void BlocksShelf::followSelection() {
    const auto files = selection()->files();
    setSelectedBlock(files.size() == 1 ? std::optional(files.front()) : std::nullopt);
}

void BlocksShelf::setNote(std::optional<QString> text, Tone tone) {
    text ? m_noteTask.start() : m_noteTask.stop();
    Shelf::setNote(std::move(text), tone);
}

double BlocksShelf::saveProgress() const {
    return m_saves.empty() ? -1 : m_saves.front()->part.load();
}

bool BlocksShelf::isClip(const platform::ItemProvider& item) {
    return FCPXMLPasteboard::carriesClips(item) || isDocument(item);
}

void BlocksShelf::captureBlocks(const std::vector<platform::ItemProvider>& providers) {
    captureBlocks(providers, blockCollection());
}

void BlocksShelf::captureBlocks(const std::vector<fs::path>& documents, const std::optional<QString>& collection) {
    std::vector<platform::ItemProvider> providers;
    for (const fs::path& document : documents) providers.push_back(platform::ItemProvider::file(document));
    captureBlocks(providers, collection);
}

void BlocksShelf::captureBlocks(const std::vector<platform::ItemProvider>& providers,
                                const std::optional<QString>& collection) {
    note(translate("Blocks", "Saving…"));
    JobRecord record{.kind = JobRecord::Kind::blocks, .root = {}, .files = documentsOf(providers, jobs()),
                     .collection = collection};
    if (const auto root = storage().root()) record.root = *root;
    const auto job = jobs().begin(record);
    m_saves.push_back(job);
    m_saving.every(
        [providers, job, collection, documents = record.files, notes = jobs().notes(),
         &storage = storage()](const std::stop_token&) {
            ArrangementStore store(storage);
            const auto stop = job->stopToken();
            const MediaProgress progress{.report = job->observer().copying, .stop = stop};
            int saved = 0;
            QStringList failures;
            for (const auto& provider : providers) {
                if (stop.stop_requested()) break;
                auto clip = clipIn(provider);
                if (!clip) continue;
                const auto block =
                    *clip ? store.save(**std::move(clip), {}, collection, progress) : std::unexpected(clip->error());
                if (block)
                    ++saved;
                else if (!stop.stop_requested())
                    failures.append(block.error().line());
                if (block || !stop.stop_requested()) job->done(static_cast<std::size_t>(job->progress.done++));
            }
            if (!stop.stop_requested() || job->progress.done == job->progress.total) {
                job->finish();
                FileJobs::removeKept(documents, notes);
            }
            return told(saved, failures);
        },
        [this, job](const std::expected<QString, QString>& outcome) {
            std::erase(m_saves, job);
            jobs().end(job, outcome ? QString() : outcome.error());
            Q_EMIT saveProgressChanged();
            finish(outcome);
        });
}

void BlocksShelf::finish(const std::expected<QString, QString>& outcome) {
    refresh();
    tell(outcome);
}

void BlocksShelf::pastePoster(const QString& url) {
    const auto block = url.isEmpty() ? m_selectedBlock : pathOfFileUrl(url.toLatin1());
    if (!find(block)) return;
    m_saving.every(
        [pasteboard = m_clipboard.contents(), &storage = storage(), block = *block,
         longEdge = settings().vectorLongEdge()](const std::stop_token& stop) -> std::expected<QString, QString> {
            const auto image = ImageIntake::read(*pasteboard, longEdge, stop);
            if (!image)
                return std::unexpected(platform::inSystemWords(
                    translate("Blocks", "No image on the clipboard — take a screenshot first (⌘⇧4)")));
            const auto set = ArrangementStore(storage).setPoster(image->image, block);
            if (!set) return std::unexpected(set.error().description());
            return translate("Blocks", "Poster set");
        },
        [this](const std::expected<QString, QString>& outcome) { finish(outcome); });
}

void BlocksShelf::removePoster(const QString& url) {
    const auto block = pathOfFileUrl(url.toLatin1());
    if (!find(block)) return;
    m_saving.every([&storage = storage(),
                    block = *block](const std::stop_token&) { return ArrangementStore(storage).removePoster(block); },
                   [this](const std::expected<void, ArrangementFailure>& removed) {
                       refresh();
                       if (!removed) setNote(removed.error().description(), Tone::problem);
                   });
}

void BlocksShelf::fillDrag(DragRequest* request, const QString& url) {
    const auto file = pathOfFileUrl(url.toLatin1());
    const Arrangement* block = find(file);
    if (!block) return;
    if (const auto xml = m_drags.take(block->url)) {
        request->item = FCPXMLPasteboard::provider(*xml, block->name);
        // For those who know no clips.
        request->item->registerData(QStringLiteral("text/uri-list"), fileUrl(block->url) + "\r\n");
    } else if (xml.error() == DragDocuments::Missing::gone) {
        finish(std::unexpected(translate("Blocks", "“%1” is no longer there.").arg(block->name)));
    }
}

void BlocksShelf::prepareDrag(const QString& url) {
    if (const auto file = pathOfFileUrl(url.toLatin1()); find(file)) m_drags.prepare(*file);
}

FileVerbs BlocksShelf::fileVerbs() const {
    const auto store = std::make_shared<ArrangementStore>(storage());
    FileVerbs verbs = Shelf::fileVerbs(storage(), Storage::Folder::images);
    verbs.rename = [store](const fs::path& block, const QString& name) -> FileVerbs::Moved {
        return described(store->rename(block, name));
    };
    verbs.move = [store](const fs::path& block, const std::optional<QString>& collection) -> FileVerbs::Moved {
        return described(store->move(block, collection));
    };
    verbs.moveBack = [store](const fs::path& block, const fs::path& place) {
        return described(store->moveBack(block, place));
    };
    verbs.withBelongings = [](const fs::path& block) {
        std::vector<fs::path> files{block};
        if (platform::isTaken(posterPath(block))) files.push_back(posterPath(block));
        return files;
    };
    verbs.remove = [store](const fs::path& block) { return described(store->remove(block)); };
    verbs.trash = [store](const fs::path& block) { return described(store->trash(block)); };
    verbs.createCollection = [store](const QString& path) { return store->createCollection(path); };
    return verbs;
}

void BlocksShelf::relocated(std::span<const ShelfSelection::Relocation> relocations) {
    for (const auto& [from, to] : relocations)
        if (m_selectedBlock == from) setSelectedBlock(to);
}

} // namespace quillary
