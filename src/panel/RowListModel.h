#pragma once

#include <QAbstractListModel>
#include <QtQmlIntegration/qqmlintegration.h>
#include <algorithm>
#include <functional>
#include <vector>

namespace quillary {

/// A list model of some hundred rows that takes a new list over by removing, inserting and moving what differs, so that
/// selection, scroll position and a running drag stay with their rows; it is never reset. (ItemListModel does so for
/// the hundred thousand files of a shelf.) Main thread.
class RowListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS

protected:
    using QAbstractListModel::QAbstractListModel;

    /// Makes `rows`, which this model shows, equal to `now`. `same` tells whether two rows are of the same thing; one
    /// that is and differs otherwise is told as changed. Of things that are in a list more than once the first counts.
    template <typename Row, typename Same>
    void takeOver(std::vector<Row>& rows, const std::vector<Row>& now, Same same) {
        const auto head = std::ranges::mismatch(rows, now, same).in1 - rows.begin();
        const auto goes = [&](const Row& row) {
            return std::none_of(now.begin() + head, now.end(),
                                [&](const Row& other) { return std::invoke(same, row, other); });
        };
        for (auto end = std::ssize(rows); end > head;) {
            auto first = end;
            while (first > head && goes(rows[static_cast<std::size_t>(first - 1)])) --first;
            if (first < end) removeRange(rows, first, end);
            end = first - 1;
        }
        for (auto at = head; at < std::ssize(now); ++at) {
            const auto place = [&](std::ptrdiff_t wanted) {
                return std::find_if(rows.begin() + at, rows.end(), [&](const Row& row) {
                    return std::invoke(same, row, now[static_cast<std::size_t>(wanted)]);
                });
            };
            const auto found = place(at);
            if (found == rows.end()) {
                auto end = at + 1;
                while (end < std::ssize(now) && place(end) == rows.end()) ++end;
                beginInsertRows({}, static_cast<int>(at), static_cast<int>(end) - 1);
                rows.insert(rows.begin() + at, now.begin() + at, now.begin() + end);
                endInsertRows();
                at = end - 1;
            } else if (const auto from = found - rows.begin(); from != at) {
                beginMoveRows({}, static_cast<int>(from), static_cast<int>(from), {}, static_cast<int>(at));
                std::rotate(rows.begin() + at, found, found + 1);
                endMoveRows();
            }
        }
        if (rows.size() > now.size()) removeRange(rows, std::ssize(now), std::ssize(rows));
        for (std::size_t row = 0; row < now.size(); ++row) {
            if (rows[row] == now[row]) continue;
            rows[row] = now[row];
            const QModelIndex changed = index(static_cast<int>(row));
            Q_EMIT dataChanged(changed, changed);
        }
    }

private:
    template <typename Row>
    void removeRange(std::vector<Row>& rows, std::ptrdiff_t first, std::ptrdiff_t end) {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        rows.erase(rows.begin() + first, rows.begin() + end);
        endRemoveRows();
    }
};

} // namespace quillary
