#pragma once

#include <QImage>

namespace quillary::benchmark {

/// Black walls on white, RGBA8888, `side` × `side` pixels, the same in every run: what a fill finds hard.
namespace Mazes {

/// A thousand corridors of one pixel (at 4096), open at the top.
QImage comb(int side);
/// The same corridors joined at their ends by turns, so that one path leads through them all.
QImage serpentine(int side);
/// One path that winds inwards.
QImage spiral(int side);
/// Two in five pixels are walls, close to where the plane falls apart.
QImage randomWalls(int side);

} // namespace Mazes

} // namespace quillary::benchmark
