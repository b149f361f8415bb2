#include "panel/ItemListModel.h"

#include "base/FileUrl.h"
#include "base/Text.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace quillary {

namespace {

/// More separate changes than this are taken over as one: their cost would exceed what they save.
constexpr std::size_t mostRanges = 64;

struct Range {
    std::size_t first;
    std::size_t count;
};

std::size_t runLength(const std::vector<bool>& marks, std::size_t from) {
    std::size_t to = from;
    while (to < marks.size() && marks[to]) ++to;
    return to - from;
}

std::vector<Range> ranges(const std::vector<bool>& marks) {
    std::vector<Range> found;
    for (std::size_t at = 0; at < marks.size();) {
        const std::size_t length = runLength(marks, at);
        if (length > 0) found.push_back({at, length});
        at += std::max<std::size_t>(length, 1);
    }
    return found;
}

} // namespace

ItemListModel::ItemListModel(Answers answers, QObject* parent)
    : QAbstractListModel(parent), m_answers(std::move(answers)) {}

int ItemListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant ItemListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const LibraryItem& at = item(index.row());
    switch (role) {
    case UrlRole:
        return QString::fromLatin1(fileUrl(at.url));
    case Qt::DisplayRole:
    case NameRole:
        return shownStem(at.url);
    case CollectionRole:
        return at.collection.value_or(QString());
    case FormatRole:
        return at.sourceFormat.value_or(QString());
    case FavoriteRole:
        return m_answers.isFavorite && m_answers.isFavorite(at.url);
    case SelectedRole:
        return m_answers.isSelected && m_answers.isSelected(at.url);
    case BuiltInRole:
        return at.isBuiltIn;
    case StampRole:
        return QString::number(at.modified.time_since_epoch().count());
    case DetailsRole:
        return m_answers.details ? m_answers.details(at) : QVariant();
    default:
        return {};
    }
}

QHash<int, QByteArray> ItemListModel::roleNames() const {
    return {{UrlRole, "url"},           {NameRole, "name"},     {CollectionRole, "collection"},
            {FormatRole, "format"},     {FavoriteRole, "star"}, {SelectedRole, "chosen"},
            {BuiltInRole, "isBuiltIn"}, {StampRole, "stamp"},   {DetailsRole, "details"}};
}

void ItemListModel::show(std::shared_ptr<const LibraryItems> items) {
    std::vector<quint32> rows(items->size());
    std::iota(rows.begin(), rows.end(), 0U);
    show(std::move(items), std::move(rows));
}

void ItemListModel::show(std::shared_ptr<const LibraryItems> items, std::vector<quint32> rows) {
    const LibraryItems& before = *m_items;
    const LibraryItems& after = *items;
    const bool sameList = m_items == items;
    const auto same = [&](quint32 a, quint32 b) { return sameList ? a == b : before[a].url == after[b].url; };

    const auto head = static_cast<std::size_t>(std::ranges::mismatch(m_rows, rows, same).in1 - m_rows.begin());
    const std::size_t shorter = std::min(m_rows.size(), rows.size());
    std::size_t tail = 0;
    while (tail < shorter - head && same(m_rows[m_rows.size() - 1 - tail], rows[rows.size() - 1 - tail])) ++tail;

    // Of the middle, what is in both lists and in the same order stays.
    const std::size_t oldMiddle = m_rows.size() - head - tail;
    const std::size_t newMiddle = rows.size() - head - tail;
    std::vector<bool> goes(oldMiddle, true);
    std::vector<bool> comes(newMiddle, true);
    std::unordered_map<FileLocation, std::size_t> places;
    if (oldMiddle > 0 && newMiddle > 0) {
        places.reserve(newMiddle);
        for (std::size_t i = 0; i < newMiddle; ++i) places.emplace(after[rows[head + i]].url, i);
        std::size_t next = 0;
        for (std::size_t i = 0; i < oldMiddle; ++i) {
            const auto place = places.find(before[m_rows[head + i]].url);
            if (place == places.end() || place->second < next) continue;
            goes[i] = comes[place->second] = false;
            next = place->second + 1;
        }
    }
    auto removals = ranges(goes);
    auto insertions = ranges(comes);
    if (removals.size() + insertions.size() > mostRanges) {
        removals.assign(1, {0, oldMiddle});
        insertions.assign(1, {0, newMiddle});
    }

    const auto changedCount = m_rows.size() != rows.size();
    for (auto range = removals.rbegin(); range != removals.rend(); ++range) {
        const auto first = static_cast<std::ptrdiff_t>(head + range->first);
        const auto end = first + static_cast<std::ptrdiff_t>(range->count);
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
        endRemoveRows();
    }
    // What stayed is the same files in both lists: from here on rows speak of the new one.
    std::size_t kept = 0;
    std::vector<bool> inserted(rows.size(), false);
    for (const Range& range : insertions)
        std::fill_n(inserted.begin() + static_cast<std::ptrdiff_t>(head + range.first), range.count, true);
    std::vector<int> refreshed;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (inserted[i]) continue;
        if (!sameList && before[m_rows[kept]] != after[rows[i]]) refreshed.push_back(static_cast<int>(i));
        m_rows[kept++] = rows[i];
    }
    const auto retired = std::exchange(m_items, std::move(items));
    for (const Range& range : insertions) {
        const auto first = static_cast<std::ptrdiff_t>(head + range.first);
        const auto end = first + static_cast<std::ptrdiff_t>(range.count);
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        m_rows.insert(m_rows.begin() + first, rows.begin() + first, rows.begin() + end);
        endInsertRows();
    }
    for (const int row : refreshed) Q_EMIT dataChanged(index(row), index(row));
    if (changedCount) Q_EMIT countChanged();
}

void ItemListModel::everyRowChanged(Role role) {
    if (!m_rows.empty()) Q_EMIT dataChanged(index(0), index(count() - 1), {role});
}

int ItemListModel::rowNamed(const QString& beginning, int from) const {
    const QString wanted = foldedForSearch(beginning);
    for (int step = 0; step < count(); ++step) {
        const int row = (std::max(from, 0) + step) % count();
        if (foldedForSearch(shownStem(item(row).url)).startsWith(wanted)) return row;
    }
    return -1;
}

int ItemListModel::rowOf(const FileLocation& url) const {
    const auto row = std::ranges::find_if(m_rows, [&](quint32 at) { return (*m_items)[at].url == url; });
    return row == m_rows.end() ? -1 : static_cast<int>(row - m_rows.begin());
}

const LibraryItem* ItemListModel::find(const std::filesystem::path& url) const {
    const int row = rowOf(FileLocation(url));
    return row < 0 ? nullptr : &item(row);
}

} // namespace quillary
