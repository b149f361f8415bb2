#pragma once

#include <QImage>

namespace quillary::benchmark {

/// Pictures of fixed content, the same in every run: RGBA8888 of `side` × `side` pixels.
namespace Pictures {

/// Smooth structure at all scales with the grain of a sensor; opaque.
QImage photo(int side);
/// Coloured shapes with soft edges on white, a hole inside one of them, as a design tool exports it; opaque.
QImage flatLogo(int side);
/// The same drawing on a near-white ground with a little grey noise everywhere; opaque.
QImage noisyLogo(int side);
/// The noisy logo with everything near white made transparent.
QImage cutOut(int side);

} // namespace Pictures

} // namespace quillary::benchmark
