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

/// What a worker brings home of the Images shelf.
struct PanelModel::LibraryListing {
    fs::path root;
    SearchableItems library;
    std::shared_ptr<const LibraryItems> recent;
    QStringList collections;
    QStringList formats;
    ShelfCounts counts;
    SearchableItems builtIn;
    QStringList builtInSets;
};

namespace {

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
    m_imagesRefresh.run(
        [listing = m_imagesListing, &storage = m_storage, &builtIns = m_builtIns,
         readBuiltIns = builtIn().empty()](const std::stop_token&) -> std::optional<LibraryListing> {
            const auto contents = listing->refresh(storage);
            if (!contents) return {};
            LibraryListing found;
            found.root = contents->root;
            found.library = SearchableItems(contents->items);
            found.recent = std::make_shared<const LibraryItems>(storage.recentItems());
            found.collections = Storage::collections(*contents->items);
            found.formats = formatsOf(*contents->items);
            found.counts = storage.shelfCounts();
            if (readBuiltIns) {
                found.builtIn = SearchableItems(std::make_shared<const LibraryItems>(builtIns.items()));
                found.builtInSets = builtIns.sets();
            }
            return found;
        },
        [this](std::optional<LibraryListing> found) {
            if (found) takeOver(*std::move(found));
        });
}

void PanelModel::takeOver(LibraryListing found) {
    m_root = found.root;
    m_availableFormats = found.formats;
    m_libraryLoaded = true;
    write(m_library, std::move(found.library), &PanelModel::libraryChanged);
    write(m_recent, found.recent, &PanelModel::recentChanged);
    m_recentModel.show(found.recent);
    write(m_collections, found.collections, &PanelModel::collectionsChanged);
    write(m_shelfCounts, found.counts, &PanelModel::shelfCountsChanged);
    if (builtIn().empty()) {
        m_builtInSets = found.builtInSets;
        write(m_builtIn, std::move(found.builtIn), &PanelModel::builtInChanged);
    }
    if (const auto* named = std::get_if<CollectionFilter::Named>(&m_collectionFilter.value))
        if (!m_collections.contains(named->path))
            write(m_collectionFilter, CollectionFilter::all(), &PanelModel::collectionFilterChanged);
    if (m_selectAfterRefresh)
        write(m_collectionFilter, CollectionFilter::named(*std::exchange(m_selectAfterRefresh, {})),
              &PanelModel::collectionFilterChanged);
    updateVisibleLibrary();
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
    return !m_favorites.isEmpty() && m_favorites.contains(Storage::favoriteKey(item.url, m_root));
}

void PanelModel::toggleFavorite(const LibraryItem& item) {
    m_storage.toggleFavorite(item.url);
    reloadFavorites();
}

void PanelModel::reloadFavorites() {
    write(m_favorites, m_storage.favorites(), &PanelModel::favoritesChanged);
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
    const QString text = renamed ? QStringLiteral("Renamed to “%1”").arg(shownStem(*renamed)) : renamed.error().description();
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

void PanelModel::refreshShelf(const std::shared_ptr<ShelfListing>& listing, Background& line, ShelfRefreshed done) {
    line.run([listing, &storage = m_storage](const std::stop_token&) { return listing->refresh(storage); },
             [done = std::move(done)](const std::optional<ShelfListing::Contents>& contents) {
                 if (contents) done(contents->items, Storage::collections(*contents->items));
             });
}

void PanelModel::refreshVideos() {
    refreshShelf(m_videosListing, m_videosRefresh, [this](std::shared_ptr<const LibraryItems> items, QStringList paths) {
        m_videoCollections = std::move(paths);
        m_shelfCounts.videos = static_cast<std::int64_t>(items->size());
        write(m_videos, std::move(items), &PanelModel::videosChanged);
        Q_EMIT shelfCountsChanged();
    });
}

void PanelModel::refreshAudio() {
    refreshShelf(m_audioListing, m_audioRefresh, [this](std::shared_ptr<const LibraryItems> items, QStringList paths) {
        m_audioCollections = std::move(paths);
        m_shelfCounts.audio = static_cast<std::int64_t>(items->size());
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
