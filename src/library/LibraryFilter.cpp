#include "library/LibraryFilter.h"

#include "base/Text.h"
#include "library/NaturalOrder.h"
#include "library/Storage.h"
#include "values/CollectionNode.h"

#include <QStringMatcher>
#include <algorithm>

namespace quillary {

namespace {

/// Between two names; no search text holds one.
constexpr QChar boundary = QChar::LineFeed;

QString displayName(const LibraryItem& item) {
    const std::string_view stem = item.url.nameStem();
    return QString::fromUtf8(stem.data(), static_cast<qsizetype>(stem.size()));
}

bool isIn(const LibraryItem& item, const CollectionFilter& filter) {
    struct Shows {
        const LibraryItem& item;
        bool operator()(const CollectionFilter::All&) const { return true; }
        bool operator()(const CollectionFilter::Unfiled&) const { return !item.collection; }
        bool operator()(const CollectionFilter::Named& named) const { return liesIn(item.collection, named.path); }
        bool operator()(const CollectionFilter::BuiltIn& builtIn) const { return item.collection == builtIn.set; }
    };
    return std::visit(Shows{item}, filter.value);
}

} // namespace

std::optional<QString> CollectionFilter::collection() const {
    const auto* named = std::get_if<Named>(&value);
    return named ? std::optional(named->path) : std::nullopt;
}

FavoriteFiles::FavoriteFiles(const QSet<QString>& keys, const std::filesystem::path& root) : m_root(root) {
    for (const QString& key : keys) {
        if (key.contains(QChar::ReplacementCharacter))
            m_inexact.insert(key);
        else
            m_files.emplace(root / pathOf(key));
    }
}

bool FavoriteFiles::contains(const FileLocation& file) const {
    if (m_files.contains(file)) return true;
    return !m_inexact.isEmpty() && m_inexact.contains(Storage::favoriteKey(file, m_root));
}

SearchableItems::SearchableItems(std::shared_ptr<const LibraryItems> items) : m_items(std::move(items)) {
    m_offsets.reserve(m_items->size() + 1);
    m_names.reserve(static_cast<qsizetype>(m_items->size()) * 24);
    for (const LibraryItem& item : *m_items) {
        m_offsets.push_back(static_cast<quint32>(m_names.size()));
        m_names += foldedForSearch(displayName(item));
        m_names += boundary;
    }
    m_offsets.push_back(static_cast<quint32>(m_names.size()));
}

std::vector<quint32> SearchableItems::matching(const QString& folded,
                                               const std::function<bool(const LibraryItem&)>& keeps) const {
    std::vector<quint32> rows;
    const auto take = [&](std::size_t row) {
        if (!keeps || keeps((*m_items)[row])) rows.push_back(static_cast<quint32>(row));
    };
    if (folded.isEmpty()) {
        rows.reserve(m_items->size());
        for (std::size_t row = 0; row < m_items->size(); ++row) take(row);
        return rows;
    }
    if (folded.contains(boundary)) return rows;
    const QStringMatcher matcher(folded);
    std::size_t row = 0;
    for (qsizetype at = matcher.indexIn(m_names); at >= 0; at = matcher.indexIn(m_names, m_offsets[row])) {
        const auto next = std::upper_bound(m_offsets.begin() + static_cast<std::ptrdiff_t>(row), m_offsets.end(), at);
        row = static_cast<std::size_t>(next - m_offsets.begin());
        take(row - 1);
        if (row == m_items->size()) break;
    }
    return rows;
}

std::vector<quint32> visibleRows(const SearchableItems& base, const LibraryQuery& query,
                                 const std::function<bool(const LibraryItem&)>& isFavorite) {
    return base.matching(foldedForSearch(query.search.trimmed()), [&](const LibraryItem& item) {
        return isIn(item, query.collection) && (!query.format || item.sourceFormat == query.format) &&
               (!query.favoritesOnly || isFavorite(item));
    });
}

void sortByName(std::vector<quint32>& rows, const LibraryItems& items) {
    std::vector<std::pair<QString, quint32>> named;
    named.reserve(rows.size());
    for (const quint32 row : rows) named.emplace_back(displayName(items[row]), row);
    std::ranges::stable_sort(named, naturallyBefore, &std::pair<QString, quint32>::first);
    std::ranges::transform(named, rows.begin(), &std::pair<QString, quint32>::second);
}

} // namespace quillary
