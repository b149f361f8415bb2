#pragma once

#include <QImage>
#include <cstdint>

namespace quillary::test {

/// Pictures of fixed content, RGBA8888.
namespace TestPictures {

QImage filled(int width, int height, QColor color);
/// Black walls on white that leave one winding path.
QImage spiral(int width, int height);
/// Corridors one pixel wide, every third column.
QImage comb(int width, int height);
/// Black pixels at random on white, `share` of them.
QImage walls(int width, int height, double share, unsigned seed);
/// Smooth colours with grain, lively up to the border.
QImage photo(int width, int height, unsigned seed);
/// Colours that straddle the limits of nearness and of the rim, in soft blots on a flat ground.
QImage blots(int width, int height, unsigned seed);
/// The same colours with an alpha that runs through all values.
QImage withAlpha(QImage image);

} // namespace TestPictures

} // namespace quillary::test
