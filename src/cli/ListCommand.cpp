#include "base/Text.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "cli/BlockDescription.h"
#include "cli/CollectionPath.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/Shelf.h"
#include "library/BuiltInLibrary.h"
#include "library/LibraryFilter.h"
#include "media/AudioDurationCache.h"
#include "media/LengthLabel.h"
#include "media/SoundOrder.h"
#include "values/CollectionNode.h"

#include <QDateTime>

namespace quillary::cli {

namespace {

QDateTime dateOf(const LibraryItem& item) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(item.modified);
    return QDateTime::fromMSecsSinceEpoch(milliseconds.time_since_epoch().count(), Qt::UTC);
}

using Rows = std::vector<quint32>;

class List final : public Command {
    void declare(Grammar& grammar) override {
        grammar.choice("SHELF", m_shelf, {"images", "videos", "audio", "blocks", "recent", "builtin"}, "What to list");
        grammar.text("--collection", m_collection, "PATH", "Only this collection and what lies in it");
        grammar.flag("--unfiled", m_unfiled, "Only files in no collection");
        grammar.text("--set", m_set, "NAME", "Only this set of built-in icons");
        grammar.text("--search", m_search, "TEXT", "Only names that contain the text");
        grammar.flag("--favorites", m_favorites, "Only favourites");
        grammar.text("--format", m_format, "FORMAT", "Only pictures made from this format, such as “svg”");
        grammar.choice("--sort", m_sort, {"newest", "name", "shortest", "longest"}, "The order");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        const LibraryQuery query = TRY(this->query());
        const auto root = TRY(services.storage.root());
        const QSet<QString> favorites = services.storage.favorites();
        const auto isFavorite = [&](const LibraryItem& item) {
            return !favorites.isEmpty() && favorites.contains(Storage::favoriteKey(item.url, root));
        };
        const SearchableItems base(std::make_shared<const LibraryItems>(read(services)));
        const LibraryItems& items = base.items();
        Rows rows = visibleRows(base, query, isFavorite);
        if (m_shelf == u"audio") readDurations(items, root, output);
        if (m_sort) sortSounds(rows, items, order(), m_durations);

        if (output.json()) {
            QJsonArray array;
            for (const quint32 row : rows) {
                QJsonObject object = described(items[row], isFavorite(items[row]));
                if (m_shelf == u"blocks") addBlock(object, m_blocks[row]);
                array.append(object);
            }
            output.document(array);
        } else {
            tell(rows, items, isFavorite, output);
        }
        return ExitStatus::done;
    }

    std::expected<LibraryQuery, CommandError> query() const {
        const bool builtIn = m_shelf == u"builtin";
        if (m_set && !builtIn) return std::unexpected(usage("--set is for the built-in icons."));
        if ((m_collection || m_unfiled) && builtIn)
            return std::unexpected(usage("Built-in icons lie in sets: use --set."));
        if (m_collection && m_unfiled) return std::unexpected(usage("--collection and --unfiled exclude each other."));
        if ((m_sort == u"shortest" || m_sort == u"longest") && m_shelf != u"audio")
            return std::unexpected(usage("Only sounds are sorted by length."));

        LibraryQuery query;
        if (const auto path = collectionOf(m_collection)) query.collection = CollectionFilter::named(*path);
        // The path "" is the shelf without its collections.
        else if (m_unfiled || m_collection)
            query.collection = CollectionFilter::unfiled();
        if (m_set) query.collection = CollectionFilter::builtIn(*m_set);
        query.favoritesOnly = m_favorites;
        if (m_format) query.format = m_format->toLower();
        query.search = m_search.value_or(QString());
        return query;
    }

    static CommandError usage(const char* text) {
        return CommandError::usage(QString::fromUtf8(text), QStringLiteral("Try “quillary list --help”."));
    }

    LibraryItems read(const CommandServices& services) {
        if (m_shelf == u"blocks") {
            m_blocks = ArrangementStore(services.storage).blocks();
            LibraryItems items;
            for (const Arrangement& block : m_blocks) items.push_back({block.url, block.modified, block.collection});
            return items;
        }
        if (m_shelf == u"builtin") return services.builtIns.items();
        if (m_shelf == u"recent") return services.storage.recentItems();
        return services.storage.items(folderNamed(m_shelf).value_or(Storage::Folder::images));
    }

    QJsonObject described(const LibraryItem& item, bool favorite) const {
        QJsonObject object{
            {QStringLiteral("path"), jsonPath(item.url)},
            {QStringLiteral("name"), shownStem(item.url)},
            {QStringLiteral("collection"), jsonText(item.collection)},
            {QStringLiteral("modified"), dateOf(item).toString(Qt::ISODateWithMs)},
            {QStringLiteral("sourceFormat"), jsonText(item.sourceFormat)},
            {QStringLiteral("favorite"), favorite},
        };
        if (m_shelf == u"audio") {
            const auto known = m_durations.find(item.url);
            object.insert(QStringLiteral("seconds"), known == m_durations.end() ? QJsonValue() : known->second);
        }
        return object;
    }

    SoundOrder order() const {
        if (m_sort == u"name") return SoundOrder::name;
        if (m_sort == u"shortest") return SoundOrder::shortest;
        return m_sort == u"longest" ? SoundOrder::longest : SoundOrder::newest;
    }

    /// Of the whole shelf, so that what is kept is complete.
    void readDurations(const LibraryItems& items, const std::filesystem::path& root, const Output& output) {
        const AudioDurationCache cache(root / Storage::relativeFolder(Storage::Folder::audio));
        std::vector<FileLocation> missing;
        for (const LibraryItem& item : items) missing.push_back(item.url);
        m_durations = cache.load(missing);
        std::erase_if(missing, [&](const auto& url) { return m_durations.contains(url); });
        if (missing.empty()) return;
        BatchProgress progress;
        progress.total = static_cast<int>(missing.size());
        const ProgressBar bar(progress, output);
        for (const FileLocation& url : missing) {
            m_durations.merge(AudioDurationCache::read(std::span(&url, 1)));
            ++progress.done;
        }
        cache.save(m_durations);
    }

    static void addBlock(QJsonObject& object, const Arrangement& block) {
        const QJsonObject summary = cli::described(block.summary);
        for (auto at = summary.begin(); at != summary.end(); ++at) object.insert(at.key(), at.value());
        const auto poster = block.posterURL();
        object.insert(QStringLiteral("poster"), poster ? jsonPath(*poster) : QJsonValue());
    }

    template <typename IsFavorite>
    void tell(const Rows& rows, const LibraryItems& items, const IsFavorite& isFavorite, Output& output) const {
        std::vector<Output::Row> table;
        for (const quint32 row : rows) {
            const LibraryItem& item = items[row];
            table.push_back({isFavorite(item) ? QStringLiteral("★") : QStringLiteral(" "),
                             dateOf(item).toLocalTime().toString(QStringLiteral("yyyy-MM-dd hh:mm")),
                             item.collection.value_or(QString()), shown(item.url.filename())});
            if (m_shelf == u"audio") {
                const auto known = m_durations.find(item.url);
                table.back().push_back(known == m_durations.end() ? QString() : lengthLabel(known->second));
            }
        }
        output.table(
            table, {4},
            {Output::Paint::star, Output::Paint::faint, Output::Paint::faint, Output::Paint::strong, Output::Paint::faint});
        output.talk(counted(static_cast<qsizetype>(rows.size()), u"file"));
    }

    AudioDurationCache::Durations m_durations;
    QString m_shelf;
    std::optional<QString> m_collection;
    std::optional<QString> m_set;
    std::optional<QString> m_search;
    std::optional<QString> m_format;
    std::optional<QString> m_sort;
    bool m_unfiled = false;
    bool m_favorites = false;
    std::vector<Arrangement> m_blocks; ///< row by row, on their own shelf
};

class Collections final : public Command {
    void declare(Grammar& grammar) override {
        grammar.choice("SHELF", m_shelf, {"images", "videos", "audio", "blocks"}, "Whose collections to list");
        grammar.text("--create", m_create, "PATH", "Make this collection first");
    }

    std::expected<ExitStatus, CommandError> run(const CommandServices& services, Output& output) override {
        TRY(services.storage.root());
        if (m_create) TRY(create(services.storage));
        const auto [folders, files] = collectionsOf(m_shelf, services.storage);
        QStringList filed;
        for (const auto& collection : files)
            if (collection) filed.append(*collection);
        const auto counts = rollUp(filed);

        QJsonArray array;
        std::vector<Output::Row> table;
        for (const QString& path : folders) {
            const int count = counts.value(path);
            array.append(QJsonObject{{QStringLiteral("path"), path}, {QStringLiteral("count"), count}});
            table.push_back({QString::number(count), path});
        }
        if (output.json())
            output.document(array);
        else
            output.table(table, {0}, {Output::Paint::faint, Output::Paint::strong});
        return ExitStatus::done;
    }

    std::expected<void, CommandError> create(Storage& storage) const {
        const auto path = collectionOf(m_create);
        if (!path) return std::unexpected(CommandError::usage(QStringLiteral("A collection needs a name.")));
        if (!createCollection(*path, m_shelf, storage))
            return std::unexpected(CommandError(QStringLiteral("Could not create the collection “%1”.").arg(*path)));
        return {};
    }

    QString m_shelf;
    std::optional<QString> m_create;
};

} // namespace

void declareListing(Grammar& root) {
    root.command<List>("list", "List a shelf as the panel shows it");
    root.command<Collections>("collections", "List a shelf's collections, or make one");
}

} // namespace quillary::cli
