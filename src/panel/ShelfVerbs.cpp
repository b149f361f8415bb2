#include "base/FileUrl.h"
#include "base/Translation.h"
#include "panel/Shelf.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

template <typename Value>
std::expected<Value, QString> described(std::expected<Value, StorageError> result) {
    if (!result) return std::unexpected(result.error().description());
    if constexpr (std::is_void_v<Value>)
        return {};
    else
        return *std::move(result);
}

QString named(ShelfHistory::Direction direction, const QString& step) {
    return (direction == ShelfHistory::Direction::undo ? translate("Shelf", "Undid %1")
                                                       : translate("Shelf", "Redid %1"))
        .arg(step);
}

} // namespace

FileVerbs Shelf::fileVerbs(Storage& storage, Storage::Folder folder) {
    return {
        .rename = [&storage](const fs::path& file, const QString& name) -> FileVerbs::Moved {
            return described(storage.rename(file, name));
        },
        .move = [&storage](const fs::path& file, const std::optional<QString>& collection) -> FileVerbs::Moved {
            return described(storage.move(file, collection));
        },
        .moveBack = [&storage](const fs::path& file,
                               const fs::path& place) { return described(storage.moveBack(file, place)); },
        .remove = [&storage](const fs::path& file) { return described(storage.remove(file)); },
        .trash = [&storage](const fs::path& file) -> FileVerbs::Trashed {
            const auto trashed = described(storage.trash(file));
            if (!trashed) return std::unexpected(trashed.error());
            return std::vector{*trashed};
        },
        .restore = [](const platform::TrashedFile& file) { return described(Storage::restore(file)); },
        .setFavorites = [&storage](const std::vector<fs::path>& files,
                                   bool favorite) { storage.setFavorites(files, favorite); },
        .createCollection = [&storage, folder](const QString& path) { return storage.createCollection(path, folder); },
    };
}

FileVerbs Shelf::verbs() const {
    FileVerbs verbs = fileVerbs();
    verbs.succession = m_succession;
    return verbs;
}

std::vector<fs::path> Shelf::ownFiles(const QStringList& urls) const {
    std::vector<fs::path> files;
    std::unordered_set<FileLocation> wanted;
    for (const QString& url : urls)
        if (const auto path = pathOfFileUrl(url.toLatin1())) wanted.emplace(*path);
    for (int row = 0; row < m_visible.count() && files.size() < wanted.size(); ++row) {
        const LibraryItem& item = m_visible.item(row);
        if (!item.isBuiltIn && wanted.contains(item.url)) files.push_back(item.url);
    }
    return files;
}

void Shelf::toggleFavorite(const QString& url) {
    if (const auto* item = itemAt(url)) setFavorite({url}, !m_favorites.contains(item->url));
}

void Shelf::setFavorite(const QStringList& urls, bool favorite) {
    std::vector<fs::path> files;
    for (const QString& url : urls)
        if (const auto* item = itemAt(url); item && m_favorites.contains(item->url) != favorite)
            files.push_back(item->url);
    if (files.empty()) return;
    m_favorites.set(files, favorite);
    m_history.record(ShelfChanges::stars(verbs(), files, favorite));
}

void Shelf::refuseBuiltIn() {
    setNote(translate("Shelf", "Built-in icons can’t be edited — save a copy first"), Tone::problem);
}

void Shelf::refuseBuiltIns(const QStringList& urls) {
    const auto isBuiltIn = [this](const QString& url) {
        const LibraryItem* item = itemAt(url);
        return item && item->isBuiltIn;
    };
    if (std::ranges::any_of(urls, isBuiltIn)) refuseBuiltIn();
}

void Shelf::rename(const QString& url, const QString& name) {
    refuseBuiltIns({url});
    for (const fs::path& file : ownFiles({url}))
        run([file, name](const FileVerbs& verbs) { return ShelfChanges::rename(verbs, file, name); });
}

void Shelf::move(const QStringList& urls, const QString& collection) {
    refuseBuiltIns(urls);
    run([files = ownFiles(urls), to = collection.isEmpty() ? std::nullopt : std::optional(collection)](
            const FileVerbs& verbs) { return ShelfChanges::move(verbs, files, to); });
}

void Shelf::remove(const QStringList& urls) {
    refuseBuiltIns(urls);
    run([files = ownFiles(urls)](const FileVerbs& verbs) { return ShelfChanges::remove(verbs, files); });
}

void Shelf::removeForGood(const QStringList& urls) {
    run([files = ownFiles(urls)](const FileVerbs& verbs) { return ShelfChanges::removeForGood(verbs, files); });
}

void Shelf::trash(const QStringList& urls) {
    refuseBuiltIns(urls);
    run([files = ownFiles(urls)](const FileVerbs& verbs) { return ShelfChanges::trash(verbs, files); });
}

void Shelf::createCollection(const QString& name) {
    run([path = Storage::sanitize(name)](const FileVerbs& verbs) -> ShelfOutcome {
        if (verbs.createCollection(path)) return {.created = path};
        return {.problem = translate("Shelf", "Could not create the collection “%1”.").arg(path)};
    });
}

void Shelf::run(Background& on, std::function<ShelfOutcome(const FileVerbs&)> verb) {
    ++m_verbsUnderWay;
    on.every([verb = std::move(verb), verbs = verbs()](const std::stop_token&) { return verb(verbs); },
             [this](ShelfOutcome outcome) {
                 --m_verbsUnderWay;
                 takeOver(outcome);
                 if (outcome.oneWay) m_history.clear();
                 if (outcome.change) m_history.record(*std::move(outcome.change));
                 revertNext();
             });
}

void Shelf::takeOver(ShelfOutcome& outcome) {
    if (!outcome.relocations.empty()) {
        m_selection.follow(outcome.relocations);
        relocated(outcome.relocations);
    }
    if (!outcome.left.empty()) left(outcome.left);
    if (!outcome.tooMuch.empty()) {
        QStringList urls;
        for (const fs::path& file : outcome.tooMuch) urls.append(QString::fromLatin1(fileUrl(file)));
        Q_EMIT removalAsked(urls, ShelfChanges::named(outcome.tooMuch));
    }
    if (outcome.starsChanged || !outcome.relocations.empty()) m_favorites.reload();
    if (outcome.created) m_selectAfterRefresh = outcome.created;
    refresh();
    if (!outcome.note.isEmpty()) setNote(outcome.note);
    if (!outcome.problem.isEmpty()) setNote(outcome.problem, Tone::problem);
}

void Shelf::revert(ShelfHistory::Direction direction) {
    m_reverts.push_back(direction);
    revertNext();
}

void Shelf::revertNext() {
    // One after the other, and behind what is under way: its step is the newest.
    if (m_verbsUnderWay > 0 || m_reverts.empty()) return;
    const auto direction = m_reverts.front();
    m_reverts.pop_front();
    const auto step = m_history.take(direction);
    if (!step) {
        setNote(direction == ShelfHistory::Direction::undo ? translate("Shelf", "Nothing to undo")
                                                           : translate("Shelf", "Nothing to redo"));
        return revertNext();
    }
    ++m_verbsUnderWay;
    m_verbs.every([revert = step->revert](const std::stop_token&) { return revert(); },
                  [this, direction, name = step->name](ShelfOutcome outcome) {
                      --m_verbsUnderWay;
                      outcome.note = outcome.change ? named(direction, name) : QString();
                      takeOver(outcome);
                      if (outcome.change) m_history.put(direction, *std::move(outcome.change));
                      revertNext();
                  });
}

} // namespace quillary
