#include "panel/ImagesShelf.h"

#include "base/Text.h"
#include "base/Translation.h"
#include "imaging/ImageIntake.h"
#include "imaging/ImageTransform.h"
#include "library/AppSettings.h"
#include "library/BuiltInLibrary.h"
#include "panel/ListingCache.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;
using platform::KeptFile;

namespace {

ShelfOutcome transformed(const FileVerbs& verbs, const std::vector<fs::path>& files,
                         ImageTransform::Operation operation) {
    const bool reversible = std::ssize(files) <= ShelfHistory::mostKeptFiles;
    std::vector<ShelfChanges::Rewritten> rewritten;
    qsizetype done = 0;
    QString reason;
    for (const fs::path& file : files) {
        auto before = reversible ? KeptFile::open(file) : std::unexpected(platform::FileError());
        const auto identity = platform::fileIdentity(file);
        if (const auto applied = ImageTransform::apply(operation, file); !applied) {
            if (reason.isEmpty()) reason = applied.error();
            continue;
        }
        ++done;
        if (const auto now = platform::fileIdentity(file); now && identity) verbs.succession->replaced(*identity, *now);
        const auto after = before ? KeptFile::open(file) : std::unexpected(platform::FileError());
        if (after) rewritten.emplace_back(file, std::make_shared<const KeptFile>(*std::move(before)), after->stamp());
    }
    const QString label = ImageTransform::label(operation);
    const auto all = std::ssize(files);
    ShelfOutcome outcome{.note = label};
    if (done > 1) outcome.note += translate("Shelf", " · %n image(s)", nullptr, done);
    if (done < all && all == 1)
        outcome.note = translate("Shelf", "“%1” could not be changed").arg(shown(files.front().filename()));
    else if (done < all)
        outcome.note += translate("Shelf", " · %n could not be changed", nullptr, all - done);
    if (!reason.isEmpty()) outcome.note += QStringLiteral(": ") + reason;
    outcome.oneWay = std::ssize(rewritten) < done;
    if (rewritten.empty()) return outcome;
    std::vector<fs::path> changed;
    for (const auto& one : rewritten) changed.push_back(one.file);
    outcome.change = ShelfChanges::rewriting(verbs, translate("Shelf", "%1 of %2").arg(label, ShelfChanges::named(changed)),
                                             std::move(rewritten));
    return outcome;
}

} // namespace

ImagesShelf::ImagesShelf(const Services& with, BuiltInLibrary& builtIns, QThreadPool& saves,
                         const fs::path& cacheFolder, QObject* parent)
    : Shelf(with,
            std::make_shared<ShelfListing>(Storage::Folder::images, std::make_shared<const ListingCache>(cacheFolder)),
            parent)
    , m_builtIns(builtIns)
    , m_recentListing(std::make_shared<ShelfListing>(Storage::Folder::recent))
    , m_recentRefresh(with.work)
    , m_builtInRead(with.work)
    , m_saving(saves)
    , m_recentWatch([this] { listRecent(); }) {}

void ImagesShelf::refresh() {
    Shelf::refresh();
    listRecent();
    if (builtIn().empty()) readBuiltIns();
}

void ImagesShelf::listRecent() {
    m_recentRefresh.run(
        [listing = m_recentListing, &storage = storage()](const std::stop_token&) { return listing->refresh(storage); },
        [this](std::optional<ShelfListing::Contents> found) {
            if (!found) return;
            m_recent = *std::move(found);
            if (m_showsRecent) updateVisible();
            m_recentWatch.watch(m_recent.descriptor, m_recent.growing);
            Q_EMIT listed();
        });
}

void ImagesShelf::readBuiltIns() {
    struct Icons {
        SearchableItems items;
        QStringList sets;
    };
    m_builtInRead.run(
        [&builtIns = m_builtIns](const std::stop_token&) {
            return Icons{SearchableItems(std::make_shared<const LibraryItems>(builtIns.items())), builtIns.sets()};
        },
        [this](Icons icons) {
            m_builtIn = std::move(icons.items);
            m_builtInSets = std::move(icons.sets);
            if (place() == Place::BuiltIn) updateVisible();
            Q_EMIT listed();
        });
}

std::vector<Shelf::ExtraPlace> ImagesShelf::extraPlaces() const {
    std::vector<ExtraPlace> places{{Place::Recent, tr("Recent"), static_cast<int>(recent().size())}};
    for (const QString& set : m_builtInSets)
        places.emplace_back(Place::BuiltIn, set,
                            static_cast<int>(std::ranges::count(builtIn(), set, &LibraryItem::collection)));
    return places;
}

void ImagesShelf::setCollectionFilter(const CollectionFilter& filter) {
    m_showsRecent = false;
    Shelf::setCollectionFilter(filter);
}

void ImagesShelf::pick(Place place, const QString& path) {
    if (place != Place::Recent) return Shelf::pick(place, path);
    m_showsRecent = true;
    Shelf::setCollectionFilter(CollectionFilter::all());
}

Shelf::Place ImagesShelf::place() const {
    return m_showsRecent ? Place::Recent : Shelf::place();
}

void ImagesShelf::setFormatFilter(std::optional<QString> format) {
    m_formatFilter = std::move(format);
    Q_EMIT formatFilterChanged();
    tellFiltered();
    updateVisible();
}

void ImagesShelf::setFormatFilterText(const QString& format) {
    setFormatFilter(format.isEmpty() ? std::nullopt : std::optional(format));
}

void ImagesShelf::clearFilters() {
    setFormatFilter({});
    Shelf::clearFilters();
}

const SearchableItems& ImagesShelf::base() const {
    if (m_showsRecent) return m_recent.items;
    return place() == Place::BuiltIn ? m_builtIn : Shelf::base();
}

LibraryQuery ImagesShelf::query() const {
    LibraryQuery asked = Shelf::query();
    asked.format = m_formatFilter;
    return asked;
}

std::expected<fs::path, QString> ImagesShelf::fileToDrag(const LibraryItem& item) {
    if (!item.isBuiltIn) return Shelf::fileToDrag(item);
    auto png = m_builtIns.rasterizedPNG(item, storage(), settings().vectorLongEdge());
    if (!png) return std::unexpected(png.error().description());
    return *std::move(png);
}

void ImagesShelf::saveBuiltIn(const QString& url) {
    if (const auto* item = itemAt(url); item && item->isBuiltIn) saveBuiltInToLibrary(LibraryItem(*item));
}

void ImagesShelf::saveBuiltInToLibrary(const LibraryItem& item) {
    m_saving.every(
        [item, collection = collectionFilter().collection(), longEdge = settings().vectorLongEdge(),
         &storage = storage()](const std::stop_token&) -> std::expected<QString, QString> {
            const auto image = ImageIntake::read(item.url, longEdge);
            if (!image) return std::unexpected(image.error().description());
            const auto written = storage.write(*image, Storage::Folder::images, collection);
            if (!written) return std::unexpected(written.error().description());
            return translate("Shelf", "%1 saved to your library").arg(shownStem(*written));
        },
        [this](const std::expected<QString, QString>& text) {
            if (text) refresh();
            tell(text);
        });
}

void ImagesShelf::transform(const QStringList& urls, const QString& operation) {
    const auto wanted = ImageTransform::operation(operation);
    refuseBuiltIns(urls);
    const std::vector<fs::path> files = ownFiles(urls);
    if (!wanted || files.empty()) return;
    run(m_saving, [files, operation = *wanted](const FileVerbs& verbs) { return transformed(verbs, files, operation); });
}

} // namespace quillary
