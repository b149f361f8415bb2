#pragma once

#include "blocks/export/FlatTimeline.h"

#include <vector>

namespace quillary {

/// Where something stands among the layers of a timeline: its lane, then its lane within the clip at that lane, and so
/// on. Trailing zeros mean nothing.
using LanePath = std::vector<int>;

struct PlacedItem {
    FlatTimeline::Medium medium;
    LanePath lanes;
    FlatTimeline::Item item;
};

struct PlacedTransition {
    LanePath lanes;
    QString name;
    Rational from;
    Rational to;
    bool isDissolve = false; ///< what every editor knows
    bool withAudio = false;
};

/// Puts items onto tracks: one for each lane and medium, more where items of one lane overlap. Pictures from the lowest
/// lane to the highest; sounds from the storyline's to those farthest from it. Transitions that are no dissolve between
/// two neighbours on a track are told in `leftOut`.
std::vector<FlatTimeline::Track> laidOut(std::vector<PlacedItem> items,
                                         const std::vector<PlacedTransition>& transitions, LeftOut& leftOut);

} // namespace quillary
