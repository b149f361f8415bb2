#include "media/SoundOrder.h"

#include "base/Text.h"
#include "library/NaturalOrder.h"

#include <algorithm>
#include <limits>

namespace quillary {

namespace {

/// Sorts by a key that is made once for each row.
template <typename KeyOf, typename Before>
void sortBy(std::vector<quint32>& rows, KeyOf keyOf, Before before) {
    std::vector<std::pair<decltype(keyOf(quint32())), quint32>> keyed;
    keyed.reserve(rows.size());
    for (const quint32 row : rows) keyed.emplace_back(keyOf(row), row);
    std::ranges::stable_sort(
        keyed, before, [](const auto& entry) -> const auto& { return entry.first; });
    std::ranges::transform(keyed, rows.begin(), [](const auto& entry) { return entry.second; });
}

} // namespace

void sortSounds(std::vector<quint32>& rows, const LibraryItems& items, SoundOrder order,
                const AudioDurationCache::Durations& durations) {
    const bool longestFirst = order == SoundOrder::longest;
    const auto lengthOf = [&](quint32 row) {
        const auto known = durations.find(items[row].url);
        if (known == durations.end()) return std::numeric_limits<double>::infinity();
        return longestFirst ? -known->second : known->second;
    };
    switch (order) {
    case SoundOrder::newest:
        std::ranges::stable_sort(rows, std::greater(), [&](quint32 row) { return items[row].modified; });
        break;
    case SoundOrder::name:
        sortBy(
            rows, [&](quint32 row) { return shownStem(items[row].url); }, naturallyBefore);
        break;
    case SoundOrder::shortest:
    case SoundOrder::longest:
        sortBy(rows, lengthOf, std::less());
        break;
    }
}

} // namespace quillary
