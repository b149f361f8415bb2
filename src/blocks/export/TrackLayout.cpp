#include "blocks/export/TrackLayout.h"

#include "blocks/export/PlainNames.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <queue>
#include <set>
#include <span>

namespace quillary {

namespace {

using Item = FlatTimeline::Item;
using Medium = FlatTimeline::Medium;
using Track = FlatTimeline::Track;

int at(const LanePath& path, std::size_t depth) {
    return depth < path.size() ? path[depth] : 0;
}

bool isLower(const LanePath& a, const LanePath& b) {
    for (std::size_t depth = 0; depth < std::max(a.size(), b.size()); ++depth)
        if (at(a, depth) != at(b, depth)) return at(a, depth) < at(b, depth);
    return false;
}

/// Nearest to the storyline first; of two equally near ones that below it, where sounds usually lie.
bool isNearer(const LanePath& a, const LanePath& b) {
    for (std::size_t depth = 0; depth < std::max(a.size(), b.size()); ++depth) {
        const int one = at(a, depth);
        const int other = at(b, depth);
        if (std::abs(one) != std::abs(other)) return std::abs(one) < std::abs(other);
        if (one != other) return one < other;
    }
    return false;
}

bool isBefore(const PlacedItem& a, const PlacedItem& b) {
    if (a.medium != b.medium) return a.medium < b.medium;
    return a.medium == Medium::video ? isLower(a.lanes, b.lanes) : isNearer(a.lanes, b.lanes);
}

/// Which tracks are taken, and until when.
class Occupancy {
public:
    /// The first track that is free from `position` on, taken until `end`; one more than there were when none is.
    /// Positions never go back.
    std::size_t take(const Rational& position, const Rational& end) {
        for (; !m_taken.empty() && m_taken.top().first <= position; m_taken.pop()) m_free.insert(m_taken.top().second);
        const std::size_t track = m_free.empty() ? m_count++ : m_free.extract(m_free.begin()).value();
        m_taken.emplace(end, track);
        return track;
    }

private:
    using Taken = std::pair<Rational, std::size_t>;
    struct EndsLater {
        bool operator()(const Taken& a, const Taken& b) const { return a.first > b.first; }
    };

    std::priority_queue<Taken, std::vector<Taken>, EndsLater> m_taken;
    std::set<std::size_t> m_free;
    std::size_t m_count = 0;
};

/// The tracks of one lane, each item on the first that is free at its position.
std::vector<Track> tracksOf(std::span<PlacedItem> lane) {
    std::ranges::stable_sort(lane, std::less(), [](const PlacedItem& placed) { return placed.item.position; });
    std::vector<Track> tracks;
    Occupancy occupancy;
    for (PlacedItem& placed : lane) {
        const std::size_t free = occupancy.take(placed.item.position, placed.item.end());
        if (free == tracks.size()) tracks.push_back({.medium = placed.medium, .items = {}});
        tracks[free].items.push_back(std::move(placed.item));
    }
    return tracks;
}

/// Whether the transition found its cut.
bool join(Track& track, const PlacedTransition& transition) {
    auto& items = track.items;
    // What lies before the cut covers the beginning of the transition, so the cut is the first behind that.
    const auto next = std::ranges::upper_bound(items, transition.from, std::less(), &Item::position);
    if (next == items.begin() || next == items.end() || next->position > transition.to) return false;
    const Item& previous = *std::prev(next);
    const Rational cut = next->position;
    const Rational before = cut - transition.from;
    const Rational after = transition.to - cut;
    if (previous.end() != cut || before > previous.duration || after > next->duration) return false;
    track.transitions[static_cast<std::size_t>(std::prev(next) - items.begin())] = {transition.name, before, after};
    return true;
}

} // namespace

std::vector<Track> laidOut(std::vector<PlacedItem> items, const std::vector<PlacedTransition>& transitions,
                           LeftOut& leftOut) {
    std::ranges::stable_sort(items, isBefore);
    std::vector<Track> tracks;
    std::map<LanePath, std::vector<std::size_t>, decltype(&isLower)> dissolves(isLower);
    for (std::size_t i = 0; i < transitions.size(); ++i)
        if (transitions[i].isDissolve) dissolves[transitions[i].lanes].push_back(i);
    std::vector<bool> isPlaced(transitions.size(), false);
    for (auto first = items.begin(); first != items.end();) {
        const auto last =
            std::find_if(first, items.end(), [&](const PlacedItem& item) { return isBefore(*first, item); });
        const Medium medium = first->medium;
        const LanePath lanes = first->lanes;
        std::vector<Track> made = tracksOf({first, last});
        if (const auto known = dissolves.find(lanes); known != dissolves.end())
            for (const std::size_t i : known->second)
                for (Track& track : made)
                    if ((medium == Medium::video || transitions[i].withAudio) && join(track, transitions[i]))
                        isPlaced[i] = true;
        std::ranges::move(made, std::back_inserter(tracks));
        first = last;
    }
    for (std::size_t i = 0; i < transitions.size(); ++i)
        if (!isPlaced[i]) leftOut.add(plainName("transition"), transitions[i].name);
    return tracks;
}

} // namespace quillary
