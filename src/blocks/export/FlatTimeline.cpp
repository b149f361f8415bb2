#include "blocks/export/FlatTimeline.h"

#include "base/Translation.h"
#include "blocks/export/TimelineWalk.h"

namespace quillary {

std::expected<FlatTimeline, ArrangementFailure> flattened(const FCPXMLDocument& document, LeftOut& leftOut) {
    TimelineWalk walk(document, leftOut);
    walk.walk();
    if (walk.isTooLarge())
        return std::unexpected(ArrangementFailure::unreadable(
            translate("Blocks", "This block holds more clips within clips than can be laid out flat.")));
    FlatTimeline timeline = walk.takeSettings();
    timeline.tracks = laidOut(walk.takeItems(), walk.transitions(), leftOut);

    bool isExact = walk.isExact() && timeline.duration.isValid() && (!timeline.start || timeline.start->isValid());
    for (const auto& track : timeline.tracks)
        for (const auto& item : track.items)
            isExact = isExact && item.end().isValid() && item.mediaStart.isValid() && item.speed.isValid();
    if (!isExact)
        return std::unexpected(ArrangementFailure::unreadable(
            translate("Blocks", "The times in this block are too fine to be kept exactly.")));
    return timeline;
}

} // namespace quillary
