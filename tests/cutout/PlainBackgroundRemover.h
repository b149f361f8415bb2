#pragma once

#include <QImage>

namespace quillary::test {

/// The flat-background remover written straight down, one pixel after the other, in double precision.
struct PlainRemoval {
    QImage image; ///< Format_RGBA8888_Premultiplied
    double removedFraction;
};
PlainRemoval plainlyRemoved(const QImage& picture);

} // namespace quillary::test
