#pragma once

#include "cutout/flat/BitPlane.h"

#include <stop_token>

namespace quillary::cutout {

/// The part of a set of pixels that hangs together with the picture's border, by steps left, right, up and down.
///
/// `open` holds the set; its connected part is taken out of it and returned. The work goes word by word; a small list
/// remembers words that are still to be followed, and a rescan finds what the list had no room for, so that beside the
/// two planes no memory is needed. Ends early, with a part of the region, when a stop is requested.
BitPlane takeRegionAtBorder(BitPlane& open, int width, int height, const std::stop_token& stop);

} // namespace quillary::cutout
