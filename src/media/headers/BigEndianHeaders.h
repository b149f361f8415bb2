#pragma once

#include "media/headers/HeaderFile.h"

#include <optional>

namespace quillary::media {

/// The length in seconds of an AIFF or AIFF-C file whose samples are not coded; never more than what the file holds.
/// Absent for others.
std::optional<double> aiffSeconds(const HeaderFile& file);

/// The same of a CAF file; coded samples too when the file counts them.
std::optional<double> cafSeconds(const HeaderFile& file);

/// The same of a native FLAC file, by its stream information and the number that its last frame bears. Absent when
/// the last frame cannot be found.
std::optional<double> flacSeconds(const HeaderFile& file);

} // namespace quillary::media
