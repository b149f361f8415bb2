#pragma once

#include "blocks/ArrangementFailure.h"
#include "blocks/export/FlatTimeline.h"

#include <QByteArray>
#include <expected>
#include <filesystem>
#include <optional>

namespace quillary {

/// A timeline as OpenTimelineIO JSON: a Timeline.1 of flat Track.1 with a Clip.2 for each item, Gap.1 between them.
///
/// Media are referred to by absolute "file:" URLs, or relative to `from` where that is given. Every time is a whole
/// number of frames at the rate of the clip's media, else of the timeline, else at a rate at which it is a whole
/// number; fails for a time that no such rate has.
std::expected<QByteArray, ArrangementFailure> otioJson(const FlatTimeline& timeline,
                                                       const std::optional<std::filesystem::path>& from);

} // namespace quillary
