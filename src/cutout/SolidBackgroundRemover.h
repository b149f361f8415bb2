#pragma once

#include "cutout/BackgroundRemovalError.h"

#include <QImage>
#include <expected>
#include <stop_token>

namespace quillary {

/// Cuts a graphic out of a flat background: the border tells the background's colour, a fill from the border takes
/// every pixel close to it, and the one-pixel rim beside the removed region is softened. Stateless; any thread; works
/// on all cores.
///
/// Distances between colours run from 0 to 1. A pixel within 0.14 of the background belongs to it when a path of such
/// pixels (left, right, up, down) leads to the border; the alpha of the rim rises from 0 at 0.14 to full at 0.3.
namespace SolidBackgroundRemover {

struct Result {
    QImage image;               ///< the size of the input, Format_RGBA8888_Premultiplied
    double removedFraction = 0; ///< of all pixels, those that the fill removed: 0 … 1
};

/// What becomes of the colours of pixels whose alpha is lowered.
enum class Colors {
    untouched,  ///< they stay as they are, so that they may exceed the alpha: raw data, not fit to be drawn
    withinAlpha ///< they are cut off at the alpha, as premultiplied pixels must be
};

/// Which pixels close to the background's colour are removed.
enum class Reach {
    fromBorder,    ///< those that a path leads to from the border
    enclosedAreas, ///< enclosed areas as well, such as the hole of an O, that somewhere are three pixels wide and high
};

/// Takes any format; pixels with alpha are judged by their premultiplied colours. A picture with a lively border is no
/// error, only little of it is removed. Beside the result it needs two bits a pixel. `noImage` for a picture without
/// pixels, `failed` when memory runs out or a stop was requested.
std::expected<Result, BackgroundRemovalError> remove(const QImage& image, std::stop_token stop = {},
                                                     Colors colors = Colors::untouched,
                                                     Reach reach = Reach::fromBorder);

} // namespace SolidBackgroundRemover

} // namespace quillary
