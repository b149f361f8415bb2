#include "panel/Shelf.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"

#include <QThread>
#include <QTimer>

namespace quillary {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

constexpr auto tilesFirst = 150ms;

} // namespace

Shelf::Shelf(const Services& with, std::shared_ptr<ShelfListing> listing, QObject* parent)
    : QObject(parent)
    , m_storage(with.storage)
    , m_settings(with.settings)
    , m_favorites(with.favorites)
    , m_work(with.work)
    , m_jobs(with.jobs)
    , m_visible({.isFavorite = [this](const FileLocation& file) { return m_favorites.contains(file); },
                 .isSelected = [this](const FileLocation& file) { return m_selection.contains(file); },
                 .details = [this](const LibraryItem& item) { return details(item); }})
    , m_selection(m_visible)
    , m_listing(std::move(listing))
    , m_refresh(with.work)
    , m_verbs(with.work)
    , m_watch([this] { list(); }) {
    connect(&m_favorites, &Favorites::changed, this, [this] {
        m_visible.favoritesChanged();
        if (m_favorites.only()) updateVisible();
    });
    connect(&m_favorites, &Favorites::onlyChanged, this, [this] {
        tellFiltered();
        updateVisible();
    });
}

Shelf::~Shelf() = default;

void Shelf::refresh() {
    m_settles = true;
    if (m_loaded || !m_listing->remembers()) return list();
    showRemembered();
}

void Shelf::showRemembered() {
    m_refresh.run(
        [listing = m_listing, &storage = m_storage](const std::stop_token&) { return listing->remembered(storage); },
        [this](std::optional<ShelfListing::Contents> found) {
            if (!found) return list();
            takeOver(*std::move(found));
            m_settles = true;
            // The tiles that are seen come before the files that are not.
            QTimer::singleShot(tilesFirst, this, &Shelf::list);
        });
}

void Shelf::list() {
    m_refresh.run(
        [listing = m_listing, &storage = m_storage](const std::stop_token&) { return listing->refresh(storage); },
        [this](std::optional<ShelfListing::Contents> found) {
            if (found) takeOver(*std::move(found));
        });
}

void Shelf::takeOver(ShelfListing::Contents found) {
    Q_ASSERT(QThread::currentThread() == thread());
    // What was done in another library cannot be taken back in this one.
    if (m_contents.root != found.root) m_history.clear();
    m_contents = std::move(found);
    m_loaded = true;
    m_favorites.follow(m_contents.root);
    settleFilter();
    takenOver();
    updateVisible();
    m_watch.watch(m_contents.descriptor, m_contents.growing);
    Q_EMIT listed();
}

void Shelf::settleFilter() {
    const bool settles = std::exchange(m_settles, false);
    if (const auto made = std::exchange(m_selectAfterRefresh, {}))
        return setCollectionFilter(CollectionFilter::named(*made));
    const auto* named = std::get_if<CollectionFilter::Named>(&m_collectionFilter.value);
    if (!named || collections().contains(named->path)) return;
    if (settles || !collectionFolders().contains(named->path)) setCollectionFilter(CollectionFilter::all());
}

LibraryItems Shelf::visible() const {
    LibraryItems shown;
    for (int row = 0; row < m_visible.count(); ++row) shown.push_back(m_visible.item(row));
    return shown;
}

void Shelf::setCollectionFilter(const CollectionFilter& filter) {
    m_settles = false;
    m_collectionFilter = filter;
    Q_EMIT placeChanged();
    updateVisible();
}

void Shelf::pick(Place place, const QString& path) {
    switch (place) {
    case Place::All:
        return setCollectionFilter(CollectionFilter::all());
    case Place::Unfiled:
        return setCollectionFilter(CollectionFilter::unfiled());
    case Place::Collection:
        return setCollectionFilter(CollectionFilter::named(path));
    case Place::BuiltIn:
        return setCollectionFilter(CollectionFilter::builtIn(path));
    case Place::Recent:
        break;
    }
}

Shelf::Place Shelf::place() const {
    constexpr Place places[] = {Place::Collection, Place::BuiltIn, Place::All, Place::Unfiled};
    return places[m_collectionFilter.value.index()];
}

QString Shelf::placePath() const {
    if (const auto* named = std::get_if<CollectionFilter::Named>(&m_collectionFilter.value)) return named->path;
    if (const auto* set = std::get_if<CollectionFilter::BuiltIn>(&m_collectionFilter.value)) return set->set;
    return {};
}

void Shelf::setSearch(const QString& text) {
    m_search = text;
    Q_EMIT searchChanged();
    tellFiltered();
    updateVisible();
}

bool Shelf::filtered() const {
    return !m_search.trimmed().isEmpty() || m_favorites.only();
}

void Shelf::tellFiltered() {
    Q_EMIT filteredChanged();
}

void Shelf::clearFilters() {
    setSearch({});
    m_favorites.setOnly(false);
}

void Shelf::setNote(std::optional<QString> text, Tone tone) {
    m_note = std::move(text);
    m_noteTone = tone;
    Q_EMIT noteChanged();
}

void Shelf::tell(const std::expected<QString, QString>& outcome) {
    outcome ? setNote(*outcome, Tone::done) : setNote(outcome.error(), Tone::problem);
}

LibraryQuery Shelf::query() const {
    return {.collection = m_collectionFilter, .favoritesOnly = m_favorites.only(), .search = m_search};
}

void Shelf::arrange(std::vector<quint32>& rows, const LibraryItems& items) const {
    Q_UNUSED(rows)
    Q_UNUSED(items)
}

QVariant Shelf::details(const LibraryItem& item) const {
    Q_UNUSED(item)
    return {};
}

void Shelf::updateVisible() {
    const SearchableItems& all = base();
    auto rows = visibleRows(all, query(), [this](const LibraryItem& item) { return m_favorites.contains(item.url); });
    arrange(rows, all.items());
    m_visible.show(all.shared(), std::move(rows));
    m_selection.prune();
}

const LibraryItem* Shelf::itemAt(const QString& url) const {
    const auto path = pathOfFileUrl(url.toLatin1());
    return path ? m_visible.find(*path) : nullptr;
}

void Shelf::relocated(std::span<const ShelfSelection::Relocation> relocations) {
    Q_UNUSED(relocations)
}

void Shelf::left(std::span<const fs::path> files) {
    Q_UNUSED(files)
}

std::expected<fs::path, QString> Shelf::fileToDrag(const LibraryItem& item) {
    std::error_code ignored;
    if (fs::exists(item.url.path(), ignored)) return item.url;
    refresh();
    return std::unexpected(translate("Shelf", "“%1” is no longer there.").arg(shownStem(item.url)));
}

void Shelf::fillDrag(DragRequest* request, const QString& url) {
    request->url = dragFileUrl(url);
}

void Shelf::fillDragOfSelection(DragRequest* request) {
    for (const QString& selected : m_selection.urls()) request->urls += dragFileUrl(selected);
}

QString Shelf::dragFileUrl(const QString& url) {
    const auto* item = itemAt(url);
    if (!item) return {};
    const auto file = fileToDrag(*item);
    if (file) return QString::fromLatin1(fileUrl(*file));
    setNote(file.error(), Tone::problem);
    return {};
}

} // namespace quillary
