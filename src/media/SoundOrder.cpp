#include "media/SoundOrder.h"

#include "library/LibraryFilter.h"

#include <algorithm>
#include <limits>

namespace quillary {

void sortSounds(std::vector<quint32>& rows, const LibraryItems& items, SoundOrder order,
                const AudioDurationCache::Durations& durations) {
    const auto sortByLength = [&](double sign) {
        std::vector<std::pair<double, quint32>> keyed;
        keyed.reserve(rows.size());
        for (const quint32 row : rows) {
            const auto known = durations.find(items[row].url);
            keyed.emplace_back(
                known == durations.end() ? std::numeric_limits<double>::infinity() : sign * known->second, row);
        }
        std::ranges::stable_sort(keyed, std::less(), &std::pair<double, quint32>::first);
        std::ranges::transform(keyed, rows.begin(), &std::pair<double, quint32>::second);
    };
    switch (order) {
    case SoundOrder::newest:
        std::ranges::stable_sort(rows, std::greater(), [&](quint32 row) { return items[row].modified; });
        break;
    case SoundOrder::name:
        sortByName(rows, items);
        break;
    case SoundOrder::shortest:
        sortByLength(1);
        break;
    case SoundOrder::longest:
        sortByLength(-1);
        break;
    }
}

} // namespace quillary
