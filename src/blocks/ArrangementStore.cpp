#include "blocks/ArrangementStore.h"

#include "base/Text.h"
#include "base/Try.h"
#include "blocks/BlockFiles.h"
#include "blocks/BlockSummaries.h"
#include "library/ShelfIndex.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFile.h"

#include <QFile>

namespace quillary {

namespace fs = std::filesystem;
using platform::PendingFile;

namespace {

bool holdsExactly(const fs::path& file, const QByteArray& bytes) {
    QFile opened;
    return platform::openForReading(opened, file) && opened.size() == bytes.size() && opened.readAll() == bytes;
}

std::expected<PendingFile, platform::FileError> written(const QByteArray& bytes, const fs::path& folder) {
    PendingFile file = TRY(PendingFile::holding(folder, bytes));
    TRY(file.sync());
    return file;
}

QString asked(const std::optional<QString>& name) {
    return name && !name->trimmed().isEmpty() ? *name : QString();
}

} // namespace

std::expected<Arrangement, ArrangementFailure> ArrangementStore::save(QByteArrayView xml,
                                                                      const std::optional<QString>& name,
                                                                      const std::optional<QString>& collection,
                                                                      const MediaProgress& progress) {
    return save(TRY(FCPXMLDocument::parse(xml)), name, collection, progress);
}

std::expected<Arrangement, ArrangementFailure> ArrangementStore::save(FCPXMLDocument document,
                                                                      const std::optional<QString>& name,
                                                                      const std::optional<QString>& collection,
                                                                      const MediaProgress& progress) {
    QString called = asked(name);
    if (called.isEmpty()) called = asked(document.derivedName());
    if (called.isEmpty()) called = QStringLiteral("Block");

    const fs::path root = TRY(m_storage.root());
    TRY(makeSelfContained(document, called, root, progress));
    const QByteArray bytes = TRY(document.serialize());

    const fs::path folder = Storage::appending(collection.value_or(QString()), root / Storage::blocksFolder());
    Arrangement block{.url = TRY(place(bytes, called, folder)), .name = {}};
    block.name = shownStem(block.url);
    block.modified = std::chrono::time_point_cast<FileDate::duration>(std::chrono::system_clock::now());
    block.collection = collectionOfBlock(block.url, root);
    block.summary = summarize(document);
    return block;
}

ArrangementStore::Result ArrangementStore::place(const QByteArray& xml, const QString& name, const fs::path& folder) {
    const NumberedName names = blockNames(blockStem(name));
    const auto failed = [&](const platform::FileError& error) {
        return std::unexpected(Failure(StorageError::couldNotWrite(folder / names.at(1), error.description())));
    };
    if (const auto made = platform::createFolders(folder); !made) return failed(made.error());
    std::optional<PendingFile> file;
    for (unsigned n = 1;;) {
        const fs::path candidate = folder / names.at(n);
        if (platform::isTaken(candidate)) {
            if (holdsExactly(candidate, xml)) return std::unexpected(Failure::alreadySaved(name));
            ++n;
            continue;
        }
        if (!file) {
            auto made = written(xml, folder);
            if (!made) return failed(made.error());
            file = *std::move(made);
        }
        const auto placed = file->placeAs(names.at(n));
        if (!placed && placed.error().code != EEXIST) return failed(placed.error());
        if (!placed) continue; // Another process took the name: it may have saved this very clip.
        platform::clearQuarantine(candidate);
        return candidate;
    }
}

std::expected<void, ArrangementFailure> ArrangementStore::makeSelfContained(FCPXMLDocument& document,
                                                                            const QString& name, const fs::path& root,
                                                                            const MediaProgress& progress) {
    FinalCutElements elements(root);
    MediaCopier copier(elements, progress);
    auto references = document.media();
    std::vector<MediaCopier::Source> sources;
    QStringList missing;
    for (const auto& reference : references) {
        sources.push_back({reference.file(), reference.uid, reference.identity});
        const fs::path& folder = elements.folderFor(sources.back().file);
        if (copier.isMissing(sources.back(), folder)) missing.append(reference.shownName());
        copier.announce(sources.back(), folder);
    }
    // Before anything is copied, since copies may take long.
    missing.removeDuplicates();
    if (!missing.isEmpty()) return std::unexpected(Failure::noMedia(name, Failure::missing(missing)));
    for (std::size_t i = 0; i < references.size(); ++i) {
        auto& reference = references[i];
        const auto copy = copier.copyMedia(sources[i], elements.folderFor(sources[i].file));
        if (!copy)
            return std::unexpected(Failure::noMedia(
                name, QStringLiteral("%1: %2").arg(reference.shownName(), copy.error().description())));
        reference.setFile(*copy);
    }
    return {};
}

std::vector<Arrangement> ArrangementStore::blocks() {
    const auto root = m_storage.root();
    return root ? BlockSummaries().read(blocksBelow(*root)) : std::vector<Arrangement>();
}

std::vector<fs::path> ArrangementStore::files() {
    std::vector<fs::path> files;
    if (const auto root = m_storage.root())
        for (const LibraryItem& block : blocksBelow(*root)) files.push_back(block.url);
    return files;
}

QStringList ArrangementStore::collections() {
    const auto root = m_storage.root();
    if (!root) return {};
    ShelfIndex index(*root / Storage::blocksFolder(), {}, false);
    index.refresh();
    return index.collectionFolders();
}

bool ArrangementStore::createCollection(const QString& path) {
    const auto root = m_storage.root();
    return root && platform::createFolders(Storage::appending(path, *root / Storage::blocksFolder())).has_value();
}

} // namespace quillary
