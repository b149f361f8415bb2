#include "cutout/flat/BackgroundColor.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillary::cutout {

namespace {

constexpr double nearDistance = 0.14;
constexpr double rimDistance = 0.3;
constexpr double rimWidth = 0.16;
constexpr double rootOfThree = 1.7320508;
constexpr double infinity = std::numeric_limits<double>::infinity();

double distance(double s) {
    return std::sqrt(s) / rootOfThree;
}

/// Where a condition that holds for small numbers stops to hold: the largest number for which it does, sought from
/// close by.
template <typename Condition>
double largest(double start, Condition holds) {
    double s = start;
    while (holds(s)) s = std::nextafter(s, infinity);
    while (!holds(s)) s = std::nextafter(s, 0.0);
    return s;
}

double squareOf(double d) {
    return d * rootOfThree * (d * rootOfThree);
}

std::array<double, 256> squaredDifferences(double value) {
    std::array<double, 256> table;
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const double difference = static_cast<double>(byte) / 255.0 - value;
        table[byte] = difference * difference;
    }
    return table;
}

float inByteUnits(double value) {
    return static_cast<float>(value * 255);
}

} // namespace

BackgroundColor::BackgroundColor(double red, double green, double blue)
    : m_red(squaredDifferences(red))
    , m_green(squaredDifferences(green))
    , m_blue(squaredDifferences(blue))
    , m_inBytes{inByteUnits(red), inByteUnits(green), inByteUnits(blue)} {
    static const double limitOfNear =
        largest(squareOf(nearDistance), [](double s) { return distance(s) <= nearDistance; });
    static const double limitOfRim =
        std::nextafter(largest(squareOf(rimDistance), [](double s) { return distance(s) < rimDistance; }), infinity);
    m_nearLimit = limitOfNear;
    m_rimLimit = limitOfRim;
}

std::uint8_t BackgroundColor::rimAlpha(Pixel pixel) const {
    const double d = distance(squared(pixel));
    return static_cast<std::uint8_t>(255 * std::clamp((d - nearDistance) / rimWidth, 0.0, 1.0));
}

} // namespace quillary::cutout
