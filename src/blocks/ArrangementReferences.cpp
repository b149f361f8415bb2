#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"
#include "library/Storage.h"

#include <algorithm>
#include <set>

namespace quillary {

namespace fs = std::filesystem;
using platform::PendingFile;

namespace {

bool isFile(const fs::path& path) {
    std::error_code failed;
    return fs::is_regular_file(path, failed);
}

/// The place below the root of a file that lies in a "Final Cut Elements" there; absent for every other file.
std::optional<fs::path> placeBelow(const fs::path& root, const fs::path& file) {
    if (root.empty() || !FinalCutElements::holds(file)) return {};
    const fs::path below = file.lexically_normal().lexically_relative(root);
    if (below.empty() || *below.begin() == "..") return {};
    return below;
}

std::optional<fs::path> found(const FCPXMLDocument::MediaReference& reference, const std::optional<fs::path>& file,
                              FinalCutElements& elements) {
    const bool known = file && FinalCutElements::holds(*file);
    return elements.find(reference.uid, known ? file->filename().native() : std::string(), reference.identity);
}

/// How many references changed.
int relink(FCPXMLDocument& document, const fs::path& oldRoot, const fs::path& root, FinalCutElements& elements) {
    int changed = 0;
    for (auto& reference : document.media()) {
        const auto file = reference.file();
        const auto below = file ? placeBelow(oldRoot, *file) : std::nullopt;
        std::optional<fs::path> target;
        if (below && oldRoot != root && isFile(root / *below))
            target = root / *below;
        else if (!file || !isFile(*file))
            target = found(reference, file, elements);
        if (!target || target == file) continue;
        reference.setFile(*target);
        ++changed;
    }
    return changed;
}

/// In one step, keeping the date and whatever else is marked on the file. A block that is gone meanwhile stays gone.
std::expected<void, platform::FileError> rewrite(const fs::path& file, FileDate modified, const QByteArray& bytes) {
    PendingFile fresh = TRY(PendingFile::holding(file.parent_path(), bytes));
    TRY(fresh.copyAttributesFrom(file));
    fresh.setModified(std::chrono::time_point_cast<std::chrono::system_clock::duration>(modified));
    TRY(fresh.sync());
    if (!isFile(file)) return std::unexpected(platform::FileError{ENOENT});
    return fresh.replace(file);
}

/// Whether a filter or a transform works on the element or on anything in it.
bool isAltered(xml::Node element) {
    for (xml::Node child = element.firstElement(); child; child = child.nextElement())
        if (child.isNamed("adjust-transform") || child.name().startsWith("filter-") || isAltered(child)) return true;
    return false;
}

/// Whether an element of a storyline is more than its media file.
bool isMoreThanMedia(xml::Node element) {
    if (element.isNamed("title") || isAltered(element)) return true;
    for (xml::Node child = element.firstElement(); child; child = child.nextElement())
        if (child.attribute("lane")) return true;
    return false;
}

bool isOneClip(const FCPXMLDocument& document) {
    const auto clips = document.clips();
    if (clips.size() != 1 || clips.front().parent() != document.root()) return false;
    const xml::Node clip = clips.front();
    for (const char* container : {"library", "event", "project", "sequence"})
        if (clip.isNamed(container)) return false;
    if (isMoreThanMedia(clip)) return false;
    const xml::Node first = FCPXMLDocument::spineOf(clip, document.resources()).firstElement();
    return !first || (!first.nextElement() && !isMoreThanMedia(first));
}

} // namespace

std::expected<FCPXMLDocument, ArrangementFailure> ArrangementStore::document(const fs::path& block) {
    const fs::path root = TRY(m_storage.root());
    FCPXMLDocument document = TRY(FCPXMLDocument::read(block));
    FinalCutElements elements(root);
    relink(document, {}, root, elements);
    return document;
}

std::optional<QByteArray> ArrangementStore::xml(const fs::path& block) {
    auto document = this->document(block);
    if (!document) return {};
    for (auto& reference : document->media())
        if (reference.isRelative()) reference.setFile(*reference.file());
    for (const char* kind : {"asset", "media"}) {
        for (xml::Node element : document->elements(kind)) {
            element.removeAttribute("uid");
            element.removeAttribute("modDate");
        }
    }
    auto bytes = document->serialize();
    return bytes ? std::optional(*std::move(bytes)) : std::nullopt;
}

namespace {

/// The one media file of a document that is a single clip.
std::optional<FCPXMLDocument::MediaReference> singleReference(const FCPXMLDocument& document) {
    if (!isOneClip(document)) return {};
    auto references = document.media();
    // The asset that was dragged, where the resources hold others as well.
    if (const auto dragged = document.clip().attribute("ref");
        dragged && document.resources().value(*dragged).isNamed("asset"))
        std::erase_if(references, [&](const auto& reference) { return reference.assetId != *dragged; });
    if (references.empty()) return {};
    const QByteArray asset = references.front().assetId;
    if (std::ranges::any_of(references, [&](const auto& reference) { return reference.assetId != asset; })) return {};
    const auto original = std::ranges::find(references, true, &FCPXMLDocument::MediaReference::isOriginal);
    const auto& chosen = original == references.end() ? references.front() : *original;
    const auto file = chosen.file();
    return file && Storage::shelf(*file) ? std::optional(chosen) : std::nullopt;
}

} // namespace

std::optional<fs::path> ArrangementStore::mediaOfSingleClip(QByteArrayView xml) {
    const auto document = FCPXMLDocument::parse(xml);
    const auto reference = document ? singleReference(*document) : std::nullopt;
    return reference ? std::optional(fs::path(*reference->file())) : std::nullopt;
}

std::optional<fs::path> ArrangementStore::singleMediaFile(QByteArrayView xml, const std::optional<QString>& collection,
                                                          const MediaProgress& progress) {
    const auto document = FCPXMLDocument::parse(xml);
    const auto root = m_storage.root();
    const auto reference = root && document ? singleReference(*document) : std::nullopt;
    if (!reference) return {};
    const auto file = reference->file();
    FinalCutElements elements(*root);
    MediaCopier copier(elements, progress);
    const fs::path shelf = elements.folderFor(file).parent_path();
    const auto copy = copier.copyMedia({file, reference->uid, reference->identity},
                                       Storage::appending(collection.value_or(QString()), shelf));
    return copy ? std::optional(*copy) : std::nullopt;
}

int ArrangementStore::relinkAll(const fs::path& oldRoot) {
    const auto root = m_storage.root();
    if (!root) return 0;
    FinalCutElements elements(*root);
    int written = 0;
    for (const LibraryItem& block : blocksBelow(*root)) {
        auto document = FCPXMLDocument::read(block.url);
        if (!document || !relink(*document, oldRoot, *root, elements)) continue;
        const auto bytes = document->serialize();
        if (bytes && rewrite(block.url, block.modified, *bytes)) ++written;
    }
    return written;
}

std::expected<int, ArrangementFailure> ArrangementStore::useFoundMedia(const fs::path& block) {
    const fs::path file = TRY(ownBlock(block));
    const fs::path root = TRY(m_storage.root());
    std::error_code failed;
    const auto modified = std::chrono::file_clock::to_sys(fs::last_write_time(file, failed));
    FCPXMLDocument document = TRY(FCPXMLDocument::read(file));
    FinalCutElements elements(root);
    const int changed = relink(document, {}, root, elements);
    if (changed == 0) return 0;
    const QByteArray bytes = TRY(document.serialize());
    const auto written = rewrite(file, std::chrono::time_point_cast<FileDate::duration>(modified), bytes);
    if (!written) return std::unexpected(Failure(StorageError::couldNotWrite(file, written.error().description())));
    return changed;
}

std::vector<fs::path> ArrangementStore::mediaOfBlocks(const fs::path& root) {
    std::set<fs::path> files;
    for (const LibraryItem& block : blocksBelow(root)) {
        const auto document = FCPXMLDocument::read(block.url);
        if (!document) continue;
        for (const auto& reference : document->media())
            if (const auto file = reference.file())
                if (auto below = placeBelow(root, *file)) files.insert(*std::move(below));
    }
    return {files.begin(), files.end()};
}

} // namespace quillary
