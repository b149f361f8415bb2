#include "blocks/export/TrackLayout.h"

#include "blocks/export/PlainNames.h"

#include <algorithm>
#include <cstdlib>
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

/// The tracks of one lane, each item on the first that is free at its position.
std::vector<Track> tracksOf(std::span<PlacedItem> lane) {
    std::ranges::stable_sort(lane, std::less(), [](const PlacedItem& placed) { return placed.item.position; });
    std::vector<Track> tracks;
    for (PlacedItem& placed : lane) {
        auto free = std::ranges::find_if(
            tracks, [&](const Track& track) { return track.items.back().end() <= placed.item.position; });
        if (free == tracks.end()) free = tracks.insert(free, Track{.medium = placed.medium, .items = {}});
        free->items.push_back(std::move(placed.item));
    }
    return tracks;
}

/// Whether the transition found its cut.
bool join(Track& track, const PlacedTransition& transition) {
    auto& items = track.items;
    const auto behind = std::ranges::upper_bound(items, transition.from, std::less(), &Item::position);
    for (auto next = behind; next != items.end() && next->position <= transition.to; ++next) {
        if (next == items.begin()) continue;
        const Item& previous = *std::prev(next);
        const Rational cut = next->position;
        const Rational before = cut - transition.from;
        const Rational after = transition.to - cut;
        if (previous.end() != cut || before > previous.duration || after > next->duration) continue;
        track.transitions[static_cast<std::size_t>(std::prev(next) - items.begin())] = {transition.name, before, after};
        return true;
    }
    return false;
}

} // namespace

std::vector<Track> laidOut(std::vector<PlacedItem> items, const std::vector<PlacedTransition>& transitions,
                           LeftOut& leftOut) {
    std::ranges::stable_sort(items, isBefore);
    std::vector<Track> tracks;
    std::vector<bool> isPlaced(transitions.size(), false);
    for (auto first = items.begin(); first != items.end();) {
        const auto last =
            std::find_if(first, items.end(), [&](const PlacedItem& item) { return isBefore(*first, item); });
        const Medium medium = first->medium;
        const LanePath lanes = first->lanes;
        std::vector<Track> made = tracksOf({first, last});
        for (std::size_t i = 0; i < transitions.size(); ++i) {
            const PlacedTransition& transition = transitions[i];
            const bool counts = transition.isDissolve && (medium == Medium::video || transition.withAudio);
            if (!counts || isLower(transition.lanes, lanes) || isLower(lanes, transition.lanes)) continue;
            for (Track& track : made)
                if (join(track, transition)) isPlaced[i] = true;
        }
        std::ranges::move(made, std::back_inserter(tracks));
        first = last;
    }
    for (std::size_t i = 0; i < transitions.size(); ++i)
        if (!isPlaced[i]) leftOut.add(plainName("transition"), transitions[i].name);
    return tracks;
}

} // namespace quillary
