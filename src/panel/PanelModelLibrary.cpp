#include "base/FileUrl.h"
#include "base/Text.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"
#include "panel/ShelfListing.h"
#include "platform/SettingsStore.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

/// What a worker brings home of the Images shelf and Recent.
struct PanelModel::LibraryListing {
    ShelfListing::Contents shelf;
    ShelfListing::Contents recent;
    SearchableItems library = {};
    QStringList collections = {};
    QStringList formats = {};
    std::int64_t blocks = 0;
    SearchableItems builtIn = {};
    QStringList builtInSets = {};
};

namespace {

constexpr std::string_view blockDocument = "fcpxml";

QStringList formatsOf(const LibraryItems& items) {
    QSet<QString> formats;
    for (const LibraryItem& item : items)
        if (item.sourceFormat) formats.insert(*item.sourceFormat);
    QStringList ascending(formats.begin(), formats.end());
    ascending.sort();
    return ascending;
}

} // namespace

void PanelModel::refreshLibrary() {
    refreshLibrary(Refresh::asked);
}

void PanelModel::refreshLibrary(Refresh cause) {
    m_imagesShelf.refresh.run(
        [images = m_imagesShelf.listing, recent = m_recentListing, &storage = m_storage, &builtIns = m_builtIns,
         readBuiltIns = builtIn().empty()](const std::stop_token&) -> std::optional<LibraryListing> {
            auto shelf = images->refresh(storage);
            auto dragged = recent->refresh(storage);
            if (!shelf || !dragged) return {};
            LibraryListing found{.shelf = *std::move(shelf), .recent = *std::move(dragged)};
            found.library = SearchableItems(found.shelf.items);
            found.collections = Storage::collections(*found.shelf.items);
            found.formats = formatsOf(*found.shelf.items);
            found.blocks = ShelfIndex::countFiles(found.shelf.root / Storage::blocksFolder(), {&blockDocument, 1});
            if (readBuiltIns) {
                found.builtIn = SearchableItems(std::make_shared<const LibraryItems>(builtIns.items()));
                found.builtInSets = builtIns.sets();
            }
            return found;
        },
        [this, cause](std::optional<LibraryListing> found) {
            if (found) takeOver(*std::move(found), cause);
        });
}

void PanelModel::takeOver(LibraryListing found, Refresh cause) {
    if (std::exchange(m_root, found.shelf.root) != found.shelf.root) m_favoriteFiles = {m_favorites, m_root};
    m_availableFormats = found.formats;
    m_libraryLoaded = true;
    write(m_library, std::move(found.library), &PanelModel::libraryChanged);
    write(m_recent, found.recent.items, &PanelModel::recentChanged);
    m_recentModel.show(m_recent);
    write(m_collections, found.collections, &PanelModel::collectionsChanged);
    m_shelfCounts.images = std::ssize(library());
    m_shelfCounts.recent = std::ssize(recent());
    m_shelfCounts.blocks = found.blocks;
    Q_EMIT shelfCountsChanged();
    if (builtIn().empty()) {
        m_builtInSets = found.builtInSets;
        write(m_builtIn, std::move(found.builtIn), &PanelModel::builtInChanged);
    }
    settleFilter(found, cause);
    updateVisibleLibrary();
    m_imagesShelf.watch.watch(found.shelf.descriptor);
    m_recentWatch.watch(found.recent.descriptor);
}

void PanelModel::settleFilter(const LibraryListing& found, Refresh cause) {
    const auto* named = std::get_if<CollectionFilter::Named>(&m_collectionFilter.value);
    const bool stays = !named || m_collections.contains(named->path) ||
                       (cause == Refresh::changed && found.shelf.collectionFolders.contains(named->path));
    if (!stays) write(m_collectionFilter, CollectionFilter::all(), &PanelModel::collectionFilterChanged);
    if (m_selectAfterRefresh)
        write(m_collectionFilter, CollectionFilter::named(*std::exchange(m_selectAfterRefresh, {})),
              &PanelModel::collectionFilterChanged);
}

LibraryQuery PanelModel::query() const {
    return {m_collectionFilter, m_favoritesOnly, m_formatFilter, m_searchText};
}

const SearchableItems& PanelModel::filteredBase() const {
    return std::holds_alternative<CollectionFilter::BuiltIn>(m_collectionFilter.value) ? m_builtIn : m_library;
}

LibraryItems PanelModel::visibleLibrary() const {
    LibraryItems shown;
    for (int row = 0; row < m_visibleLibrary.count(); ++row) shown.push_back(m_visibleLibrary.item(row));
    return shown;
}

void PanelModel::updateVisibleLibrary() {
    const SearchableItems& base = filteredBase();
    m_visibleLibrary.show(base.shared(),
                          visibleRows(base, query(), [this](const LibraryItem& item) { return isFavorite(item); }));
}

void PanelModel::setCollectionFilter(const CollectionFilter& filter) {
    write(m_collectionFilter, filter, &PanelModel::collectionFilterChanged);
    updateVisibleLibrary();
}

void PanelModel::setSearchText(const QString& text) {
    write(m_searchText, text, &PanelModel::searchTextChanged);
    updateVisibleLibrary();
}

void PanelModel::setFormatFilter(std::optional<QString> format) {
    write(m_formatFilter, std::move(format), &PanelModel::formatFilterChanged);
    updateVisibleLibrary();
}

void PanelModel::setFormatFilterText(const QString& format) {
    setFormatFilter(format.isEmpty() ? std::nullopt : std::optional(format));
}

void PanelModel::setFavoritesOnly(bool on) {
    m_settings.store().setValue(SettingsKey::favouritesOnly, on);
    write(m_favoritesOnly, on, &PanelModel::favoritesOnlyChanged);
    updateVisibleLibrary();
}

bool PanelModel::isFavorite(const LibraryItem& item) const {
    return m_favoriteFiles.contains(item.url);
}

void PanelModel::toggleFavorite(const LibraryItem& item) {
    m_storage.toggleFavorite(item.url);
    reloadFavorites();
}

void PanelModel::reloadFavorites() {
    write(m_favorites, m_storage.favorites(), &PanelModel::favoritesChanged);
    m_favoriteFiles = {m_favorites, m_root};
    m_visibleLibrary.favoritesChanged();
    m_recentModel.favoritesChanged();
    if (m_favoritesOnly) updateVisibleLibrary();
}

void PanelModel::createCollection(const QString& name) {
    const QString path = Storage::sanitize(name);
    if (!m_storage.createCollection(path, Storage::Folder::images)) {
        setLibrarySaveNote(QStringLiteral("Could not create the collection “%1”.").arg(path));
        return;
    }
    // The listing settles the filter before the new, still empty collection is selected.
    refreshLibrary();
    m_selectAfterRefresh = path;
}

void PanelModel::rename(const LibraryItem& item, const QString& name, Storage::Folder folder) {
    if (item.isBuiltIn) return;
    const auto renamed = m_storage.rename(item.url, name);
    const QString text =
        renamed ? QStringLiteral("Renamed to “%1”").arg(shownStem(*renamed)) : renamed.error().description();
    if (renamed) reloadFavorites();
    switch (folder) {
    case Storage::Folder::audio:
        if (renamed && m_audioDurations.contains(item.url)) {
            auto known = m_audioDurations.extract(item.url);
            known.key() = *renamed;
            m_audioDurations.insert(std::move(known));
        }
        refreshAudio();
        write(m_audioNote, std::optional(text), &PanelModel::audioNoteChanged);
        break;
    case Storage::Folder::videos:
        refreshVideos();
        write(m_videoNote, std::optional(text), &PanelModel::videoNoteChanged);
        break;
    default:
        refreshLibrary();
        setLibrarySaveNote(text);
    }
}

void PanelModel::saveBuiltInToLibrary(const LibraryItem& item) {
    saveInBackground([item, collection = m_collectionFilter.collection(), longEdge = m_settings.vectorLongEdge(),
                      &storage = m_storage]() -> std::expected<QString, QString> {
        const auto image = ImageIntake::read(item.url, longEdge);
        if (!image) return std::unexpected(image.error().description());
        const auto written = storage.write(*image, Storage::Folder::images, collection);
        if (!written) return std::unexpected(written.error().description());
        return shownStem(*written) + QStringLiteral(" saved to your library");
    });
}

void PanelModel::move(const LibraryItem& item, const std::optional<QString>& collection) {
    if (item.isBuiltIn) return;
    const auto moved = m_storage.move(item.url, collection);
    if (!moved) setLibrarySaveNote(moved.error().description());
    reloadFavorites();
    refreshLibrary();
}

void PanelModel::removeFromLibrary(const LibraryItem& item) {
    if (item.isBuiltIn) return;
    const auto removed = m_storage.remove(item.url);
    if (!removed) setLibrarySaveNote(removed.error().description());
    refreshLibrary();
}

std::expected<fs::path, QString> PanelModel::fileToDrag(const LibraryItem& item) {
    if (!item.isBuiltIn) return item.url;
    auto png = m_builtIns.rasterizedPNG(item, m_storage, m_settings.vectorLongEdge());
    if (!png) return std::unexpected(png.error().description());
    return *std::move(png);
}

void PanelModel::refreshShelf(Shelf& shelf, ShelfRefreshed done) {
    shelf.refresh.run(
        [listing = shelf.listing, &storage = m_storage](const std::stop_token&) { return listing->refresh(storage); },
        [&shelf, done = std::move(done)](const std::optional<ShelfListing::Contents>& contents) {
            if (!contents) return;
            done(contents->items, Storage::collections(*contents->items));
            shelf.watch.watch(contents->descriptor);
        });
}

void PanelModel::refreshVideos() {
    refreshShelf(m_videosShelf, [this](std::shared_ptr<const LibraryItems> items, QStringList paths) {
        m_videoCollections = std::move(paths);
        m_shelfCounts.videos = std::ssize(*items);
        write(m_videos, std::move(items), &PanelModel::videosChanged);
        Q_EMIT shelfCountsChanged();
    });
}

void PanelModel::refreshAudio() {
    refreshShelf(m_audioShelf, [this](std::shared_ptr<const LibraryItems> items, QStringList paths) {
        m_audioCollections = std::move(paths);
        m_shelfCounts.audio = std::ssize(*items);
        write(m_audio, std::move(items), &PanelModel::audioChanged);
        Q_EMIT shelfCountsChanged();
    });
}

QString PanelModel::filterKind() const {
    constexpr QStringView kinds[] = {u"named", u"builtIn", u"all", u"unfiled"};
    return kinds[m_collectionFilter.value.index()].toString();
}

QString PanelModel::filterName() const {
    if (const auto* named = std::get_if<CollectionFilter::Named>(&m_collectionFilter.value)) return named->path;
    if (const auto* set = std::get_if<CollectionFilter::BuiltIn>(&m_collectionFilter.value)) return set->set;
    return {};
}

const LibraryItem* PanelModel::itemAt(const QString& itemUrl) const {
    const auto path = pathOfFileUrl(itemUrl.toLatin1());
    if (!path) return nullptr;
    if (const auto* item = m_visibleLibrary.find(*path)) return item;
    return m_recentModel.find(*path);
}

QString PanelModel::dragFileUrl(const QString& itemUrl) {
    const auto* item = itemAt(itemUrl);
    if (!item) return {};
    const auto file = fileToDrag(*item);
    if (file) return QString::fromLatin1(fileUrl(*file));
    setLibrarySaveNote(file.error());
    return {};
}

// Each verb takes a copy: the refresh that it starts may retire the list in which the item stands.

void PanelModel::toggleFavoriteOf(const QString& itemUrl) {
    if (const auto* item = itemAt(itemUrl)) toggleFavorite(LibraryItem(*item));
}

void PanelModel::editItem(const QString& itemUrl) {
    if (const auto* item = itemAt(itemUrl)) editInIntake(LibraryItem(*item));
}

void PanelModel::renameItem(const QString& itemUrl, const QString& name) {
    if (const auto* item = itemAt(itemUrl)) rename(LibraryItem(*item), name, Storage::Folder::images);
}

void PanelModel::moveItem(const QString& itemUrl, const QString& collection) {
    if (const auto* item = itemAt(itemUrl))
        move(LibraryItem(*item), collection.isEmpty() ? std::nullopt : std::optional(collection));
}

void PanelModel::removeItem(const QString& itemUrl) {
    if (const auto* item = itemAt(itemUrl)) removeFromLibrary(LibraryItem(*item));
}

void PanelModel::saveBuiltInItem(const QString& itemUrl) {
    if (const auto* item = itemAt(itemUrl)) saveBuiltInToLibrary(LibraryItem(*item));
}

} // namespace quillary
