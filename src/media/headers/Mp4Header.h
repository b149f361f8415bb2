#pragma once

#include "media/headers/HeaderFile.h"

#include <optional>
#include <vector>

namespace quillary::media {

/// What the header of an MP4 or QuickTime file says of its tracks.
struct Mp4Header {
    enum class Kind { sound, video, other };
    struct Track {
        Kind kind = Kind::other;
        double seconds = 0; ///< as presented: its samples, or the part of them that an edit list picks
    };
    std::vector<Track> tracks;

    /// The longest of the tracks of a kind.
    std::optional<double> seconds(Kind kind) const;
};

/// Absent for other files, for those in fragments, which have no such table, and for those that were cut short or
/// claim more than they can hold: their packets have to be looked at.
std::optional<Mp4Header> mp4Header(const HeaderFile& file);

/// Whether the file begins like one of this kind, whatever follows.
bool looksLikeMp4(const HeaderFile& file);

} // namespace quillary::media
