#pragma once

#include <QImage>
#include <memory>
#include <stop_token>

namespace quillary {

/// Pulls the edge of a cut-out inwards and softens it, so that no halo of the old background stays.
///
/// The alpha is eroded by a disc and blurred by a Gaussian of 0.15 times the disc's radius, with the picture's
/// outermost alpha continued beyond its border; then all four premultiplied channels are multiplied by the result. A
/// disc of whole radius k holds the pixels at most k away from its centre; between two whole radii the eroded alphas
/// are interpolated in proportion, which moves a straight edge by the fraction of a pixel.
///
/// Any thread; works on all cores.
namespace MatteRefiner {

inline constexpr double largestErosion = 5; ///< pixels
inline constexpr double usualAmount = 0.3;  ///< what a new panel begins with

/// The radius of the erosion in pixels for an amount of 0 … 1; larger amounts count as 1.
double erosionRadius(double amount);

/// The refined picture, premultiplied, of the input's size. Never fails: the input itself when the amount is at most
/// 0.001, when there is no picture, when memory runs out, or when a stop was requested.
QImage refine(const QImage& image, double amount, std::stop_token stop = {});

/// A cut-out that is refined again and again, as while a slider moves: where its edges run is found out once.
///
///     const MatteRefiner::Matte matte(rawCutout.scaled(…));
///     preview = matte.refined(MatteRefiner::erosionRadius(amount) * scale);
class Matte {
public:
    /// Reads the whole picture. Premultiplied formats of 32 bits are used as they are, others are converted.
    explicit Matte(const QImage& image);

    /// For a radius up to `largestErosion`. For a picture at a reduced size, reduce the radius alike. The input itself
    /// where `refine` would return it; 0.005 pixels are the least radius that changes anything.
    QImage refined(double radius, std::stop_token stop = {}) const;

private:
    struct Tiles;

    QImage m_input;
    QImage m_image; ///< in a premultiplied format of 32 bits; null when there is nothing to refine
    std::shared_ptr<const Tiles> m_tiles;
};

} // namespace MatteRefiner

} // namespace quillary
