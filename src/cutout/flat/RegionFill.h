#pragma once

#include "cutout/flat/BitPlane.h"

#include <stop_token>

namespace quillary::cutout {

// Parts of a set of pixels that hang together by steps left, right, up and down. `open` holds the set; the part is
// taken out of it and returned. Both end early, with less than the whole part, when a stop is requested.

/// What hangs together with the picture's border. The work goes word by word; a small list
/// remembers words that are still to be followed, and a rescan finds what the list had no room for, so that beside the
/// two planes no memory is needed.
BitPlane takeRegionAtBorder(BitPlane& open, int width, int height, const std::stop_token& stop);
/// What hangs together with an open square of 3 × 3 pixels, wherever it lies: areas, but no specks and no thin lines.
BitPlane takeRegionsWithCore(BitPlane& open, int width, int height, const std::stop_token& stop);

} // namespace quillary::cutout
