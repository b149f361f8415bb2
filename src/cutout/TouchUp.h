#pragma once

#include "cutout/Cutout.h"

#include <QImage>
#include <QRect>
#include <optional>
#include <stop_token>

namespace quillary {

/// What may follow a cut-out: its refinement, and touches that are all off unless asked for. With none of them the
/// result is that of `MatteRefiner` alone, byte for byte. Stateless; any thread; works on all cores.
///
///     base = TouchUp::base(picture, cut, options);
///     touched = TouchUp::finish(picture, base, amount, options);
namespace TouchUp {

struct Options {
    bool cleanEdge = false; ///< take the background's colour out of half-transparent pixels
    bool enclosed = false;  ///< of a flat background, remove enclosed areas too, such as the hole of an O
    bool trim = false;      ///< cut the transparent border off

    bool operator==(const Options&) const = default;
};

struct Result {
    QImage image; ///< premultiplied RGBA
    QRect frame;  ///< of the picture that was cut out, the part that `image` shows; all of it unless trimmed
};

/// What is refined: the raw cut-out, with the enclosed areas removed where they are asked for and the background was a
/// flat one. The raw cut-out itself too when memory runs out or a stop was requested.
QImage base(const QImage& picture, const QImage& rawCutout, Cutout::Method method, Options options,
            const std::stop_token& stop = {});

/// Refines by `amount` (of `MatteRefiner`; nothing refines nothing), cleans and trims. Never fails: a step that cannot
/// be done leaves its input. When a stop is requested, the result is of no use.
Result finish(const QImage& picture, const QImage& base, std::optional<double> amount, Options options,
              const std::stop_token& stop = {});

/// Half-transparent pixels of `cutout` get the colour that they would have without the background; alpha and all other
/// pixels stay. A pixel of `picture` is taken for a mixture of the opaque colour and the removed colour close by, as
/// `base`, the cut-out before its refinement, tells them apart.
QImage cleanEdge(const QImage& picture, const QImage& base, QImage cutout, const std::stop_token& stop = {});

/// Where the cut-out is not wholly transparent; all of it when it is.
QRect visibleFrame(const QImage& cutout);

} // namespace TouchUp

} // namespace quillary
