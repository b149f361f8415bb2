#include "panel/BatchSave.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "blocks/ArrangementStore.h"
#include "imaging/ImageIntake.h"
#include "platform/UniformTypes.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// A file of a batch, with the folder of the batch that it came from as a collection path.
struct BatchFile {
    fs::path path;
    QString folder;
};

/// The shelf of a file. Pictures of every readable kind count as images, since they are kept as PNG.
std::optional<Storage::Folder> destination(const fs::path& file) {
    if (const auto shelf = Storage::shelf(file)) return shelf;
    const QString type = platform::contentType(file);
    const bool picture = std::ranges::any_of(
        ImageIntake::acceptedFileTypes(), [&](const QString& accepted) { return platform::conforms(type, accepted); });
    return picture ? std::optional(Storage::Folder::images) : std::nullopt;
}

QString below(const QString& collection, const QString& name) {
    return collection.isEmpty() ? name : collection + collectionSeparator.toString() + name;
}

void walk(const fs::path& folder, const QString& collection, std::vector<BatchFile>& files,
          const std::stop_token& stop) {
    std::vector<fs::path> entries;
    std::error_code failed;
    for (fs::directory_iterator at(folder, fs::directory_options::skip_permission_denied, failed), end;
         !failed && at != end && !stop.stop_requested(); at.increment(failed))
        if (!at->path().filename().native().starts_with('.')) entries.push_back(at->path());
    std::ranges::sort(entries);
    for (const fs::path& entry : entries) {
        std::error_code ignored;
        if (fs::is_directory(fs::symlink_status(entry, ignored)))
            walk(entry, below(collection, shown(entry.filename())), files, stop);
        else if (fs::is_regular_file(entry, ignored))
            files.push_back({entry, collection});
    }
}

std::vector<BatchFile> batchOf(const std::vector<fs::path>& urls, const std::stop_token& stop) {
    std::vector<BatchFile> files;
    for (const fs::path& url : urls) {
        std::error_code ignored;
        const fs::path folder = url.has_filename() ? url : url.parent_path();
        if (fs::is_directory(url, ignored))
            walk(url, shown(folder.filename()), files, stop);
        else
            files.push_back({url, {}});
    }
    return files;
}

std::vector<fs::path> pathsOf(const std::vector<BatchFile>& batch) {
    std::vector<fs::path> files;
    files.reserve(batch.size());
    for (const BatchFile& file : batch) files.push_back(file.path);
    return files;
}

template <typename Error>
std::expected<fs::path, QString> described(const std::expected<fs::path, Error>& moved) {
    if (!moved) return std::unexpected(moved.error().description());
    return *moved;
}

std::expected<fs::path, QString> movedTo(const std::optional<QString>& collection, const BatchResult::Saved& saved,
                                         Storage& storage) {
    return saved.shelf ? described(storage.move(saved.file, collection))
                       : described(ArrangementStore(storage).move(saved.file, collection));
}

class Batch {
public:
    Batch(Storage& storage, const BatchTarget& target, int longEdge, std::stop_token stop,
          const platform::PendingFile::Progress& copying)
        : m_storage(storage), m_target(target), m_longEdge(longEdge), m_stop(std::move(stop)), m_copying(copying) {}

    /// False when the stop request came before the file was dealt with.
    bool add(const BatchFile& file) {
        std::error_code missing;
        if (!fs::is_regular_file(file.path, missing)) {
            // Sockets and pipes are never opened, not even to see what they hold.
            if (fs::exists(file.path, missing) && !Storage::shelf(file.path)) return refuse(file);
            return fail(file, ImageIntakeError::unreadableFile(file.path).description());
        }
        const auto shelf = destination(file.path);
        if (m_target.only && shelf != m_target.only) return true;
        if (lowercaseExtension(file.path) == Storage::blockExtensions.front()) return addBlock(file);
        if (!shelf) return refuse(file);
        return *shelf == Storage::Folder::images ? addImage(file) : addVerbatim(file, *shelf);
    }

    BatchResult take() { return std::move(m_result); }

private:
    bool fail(const BatchFile& file, const QString& message, const QString& reason = {}) {
        if (m_stop.stop_requested()) return false;
        m_result.failures.emplace_back(file.path, message, reason);
        return true;
    }

    bool fail(const BatchFile& file, const StorageError& error) {
        return fail(file, error.description(), error.reason.isEmpty() ? error.description() : error.reason);
    }

    bool refuse(const BatchFile& file) {
        const QString kind = QString::fromStdString(lowercaseExtension(file.path));
        m_result.refused.emplace_back(file.path,
                                      kind.isEmpty()
                                          ? translate("BatchSave", "No shelf takes “%1”.").arg(shown(file.path.filename()))
                                          : translate("BatchSave", "No shelf takes files of the kind “.%1”.").arg(kind));
        return true;
    }

    bool known(const BatchFile& file) {
        m_result.duplicates.push_back(file.path);
        return true;
    }

    bool keep(const BatchFile& file, fs::path stored, std::optional<Storage::Folder> shelf, int& count) {
        ++count;
        m_result.saved.emplace_back(std::move(stored), shelf, file.folder);
        return true;
    }

    std::optional<QString> collectionOf(const BatchFile& file, std::optional<Storage::Folder> shelf) const {
        return m_target.collection(shelf, m_target.keepFolders ? file.folder : QString());
    }

    bool addImage(const BatchFile& file) {
        const auto collection = collectionOf(file, Storage::Folder::images);
        if (m_storage.alreadySaved(file.path, Storage::Folder::images, collection)) return known(file);
        const auto image = ImageIntake::read(file.path, m_longEdge, m_stop);
        if (!image) return fail(file, image.error().description());
        const auto written = m_storage.write(*image, Storage::Folder::images, collection);
        if (!written) return fail(file, written.error());
        return keep(file, *written, Storage::Folder::images, m_result.images);
    }

    bool addVerbatim(const BatchFile& file, Storage::Folder shelf) {
        const auto stored = m_storage.storeVerbatim(file.path, shelf, collectionOf(file, shelf), m_copying, m_stop);
        if (!stored) return fail(file, stored.error());
        if (stored->wasAlreadyThere) return known(file);
        return keep(file, stored->url, shelf, shelf == Storage::Folder::videos ? m_result.videos : m_result.sounds);
    }

    bool addBlock(const BatchFile& file) {
        auto document = FCPXMLDocument::read(file.path);
        if (!document) return fail(file, document.error().description());
        const MediaProgress progress{.report = m_copying, .stop = m_stop};
        const auto block =
            ArrangementStore(m_storage).save(*std::move(document), {}, collectionOf(file, {}), progress);
        if (block) return keep(file, block->url, {}, m_result.blocks);
        if (block.error().kind == ArrangementFailure::Kind::alreadySaved) return known(file);
        return fail(file, block.error().description(), block.error().description());
    }

    Storage& m_storage;
    const BatchTarget& m_target;
    const int m_longEdge;
    const std::stop_token m_stop;
    const platform::PendingFile::Progress& m_copying;
    BatchResult m_result;
};

} // namespace

const std::optional<QString>& BatchTarget::collection(std::optional<Storage::Folder> shelf) const {
    if (!shelf) return blocks;
    switch (*shelf) {
    case Storage::Folder::videos:
        return videos;
    case Storage::Folder::audio:
        return audio;
    default:
        return images;
    }
}

std::optional<QString> BatchTarget::collection(std::optional<Storage::Folder> shelf, const QString& folder) const {
    const auto& top = collection(shelf);
    return folder.isEmpty() ? top : below(top.value_or(QString()), folder);
}

QString BatchResult::summary() const {
    const auto unread = std::ranges::count_if(failures, [](const Failure& failure) { return failure.reason.isEmpty(); });
    const auto unsaved = std::ssize(failures) - unread;
    const auto known = std::ssize(duplicates);
    QStringList parts;
    if (images > 0) parts += translate("BatchSave", "Saved %n", "images", images);
    if (videos > 0) parts += translate("BatchSave", "%n video(s) to Videos", nullptr, videos);
    if (sounds > 0) parts += translate("BatchSave", "%n sound(s) to Audio", nullptr, sounds);
    if (blocks > 0) parts += translate("BatchSave", "%n block(s) to Blocks", nullptr, blocks);
    if (known > 0) parts += translate("BatchSave", "%n already in your library", nullptr, known);
    if (unread > 0) parts += translate("BatchSave", "couldn't read %n", nullptr, unread);
    if (unsaved > 0) parts += translate("BatchSave", "couldn't save %n", nullptr, unsaved);
    return parts.isEmpty() ? translate("BatchSave", "Nothing to save.") : parts.join(QStringLiteral(" · "));
}

QString BatchResult::explanation() const {
    QStringList parts;
    for (const Failure& failure : failures)
        if (!failure.reason.isEmpty() && !parts.contains(failure.reason)) parts += failure.reason;
    QStringList kinds;
    for (const Failure& file : refused) {
        const QString kind = u'.' + QString::fromStdString(lowercaseExtension(file.file));
        if (kind.size() > 1 && !kinds.contains(kind)) kinds += kind;
    }
    kinds.sort();
    const auto refusals = std::ssize(refused);
    if (refusals > 0 && kinds.isEmpty())
        parts += translate("BatchSave", "%n left out: no shelf takes it", nullptr, refusals);
    else if (refusals > 0)
        parts += translate("BatchSave", "%n left out: no shelf takes %1", nullptr, refusals)
                     .arg(kinds.join(QStringLiteral(", ")));
    if (const auto stopped = std::ssize(givenUp); stopped > 0)
        parts += translate("BatchSave", "stopped before %n file(s)", nullptr, stopped);
    return (parts + refiling).join(QStringLiteral(" · "));
}

QString BatchResult::problem() const {
    if (!isProblem()) return {};
    const QString why = explanation();
    return why.isEmpty() ? summary() : summary() + u'\n' + why;
}

bool BatchResult::cameFromFolders() const {
    return std::ranges::any_of(saved, [](const Saved& file) { return !file.folder.isEmpty(); });
}

std::vector<fs::path> filesIn(const std::vector<fs::path>& urls, const std::stop_token& stop) {
    return pathsOf(batchOf(urls, stop));
}

BatchResult performSave(const std::vector<fs::path>& urls, Storage& storage, const BatchTarget& target, int longEdge,
                        BatchProgress& progress, const std::stop_token& stop, const BatchObserver& observer) {
    const auto files = batchOf(urls, stop);
    // A walk that was cut short has seen only some of them.
    if (observer.listed && !stop.stop_requested()) observer.listed(pathsOf(files));
    progress.total = static_cast<int>(files.size());
    Batch batch(storage, target, longEdge, stop, observer.copying);
    std::size_t at = 0;
    for (; at < files.size() && !stop.stop_requested() && batch.add(files[at]); ++at) {
        ++progress.done;
        if (observer.done) observer.done(at);
    }
    BatchResult result = batch.take();
    for (; at < files.size(); ++at) result.givenUp.push_back(files[at].path);
    return result;
}

QStringList BatchFolders::file(Storage& storage, bool keepFolders) {
    QStringList reasons;
    target.keepFolders = keepFolders;
    for (BatchResult::Saved& each : saved) {
        if (each.folder.isEmpty()) continue;
        const auto collection = target.collection(each.shelf, keepFolders ? each.folder : QString());
        std::vector<fs::path> missing;
        if (const auto root = storage.root(); root && keepFolders) {
            const fs::path shelf =
                *root / (each.shelf ? Storage::relativeFolder(*each.shelf) : Storage::blocksFolder());
            std::error_code ignored;
            for (fs::path folder = Storage::appending(*collection, shelf); folder != shelf && !fs::exists(folder, ignored);
                 folder = folder.parent_path())
                missing.insert(missing.begin(), folder);
        }
        if (const auto moved = movedTo(collection, each, storage)) {
            each.file = *moved;
            std::ranges::copy(missing, std::back_inserter(made));
        } else if (!reasons.contains(moved.error())) {
            reasons += moved.error();
        }
    }
    if (keepFolders) return reasons;
    // Only empty ones go.
    for (; !made.empty(); made.pop_back()) {
        std::error_code stays;
        fs::remove(made.back(), stays);
    }
    return reasons;
}

} // namespace quillary
