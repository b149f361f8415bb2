#include "cutout/subject/SubjectFinder.h"

#include "cutout/subject/SubjectPrior.h"
#include "cutout/subject/Superpixels.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace quillary::subject {

namespace {

using Mask = cv::Mat_<std::uint8_t>;

constexpr int wantedPatches = 320;
constexpr int rounds = 3;
constexpr float surelyBackground = 0.05F;
constexpr float stray = 0.2F;          ///< parts smaller than this share of the largest are dropped
constexpr float clutteredUnity = 0.9F; ///< below, the picture is full of things that stand out
constexpr double thick = 0.12;         ///< half the width of thick parts, in units of the subject's size
constexpr float smallestHole = 8e-4F;  ///< holes smaller than this share of the picture are filled

cv::Mat_<cv::Vec3f> labOf(const cv::Mat_<cv::Vec3b>& picture) {
    cv::Mat_<cv::Vec3f> unit;
    picture.convertTo(unit, CV_32FC3, 1 / 255.0);
    cv::Mat_<cv::Vec3f> lab;
    cv::cvtColor(unit, lab, cv::COLOR_RGB2Lab);
    return lab;
}

cv::Mat_<float> paint(const Superpixels& patches, const std::vector<float>& values) {
    cv::Mat_<float> result(patches.labels.size());
    for (int y = 0; y < result.rows; ++y)
        for (int x = 0; x < result.cols; ++x) result(y, x) = values[static_cast<std::size_t>(patches.labels(y, x))];
    return result;
}

/// The level that parts the values best into two groups.
float parting(const cv::Mat_<float>& values) {
    cv::Mat_<std::uint8_t> bytes;
    values.convertTo(bytes, CV_8U, 255);
    cv::Mat ignored;
    const double level = cv::threshold(bytes, ignored, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    return std::clamp(static_cast<float>(level / 255), 0.2F, 0.7F);
}

/// The first guess that the cut starts from.
Mask guess(const cv::Mat_<float>& subject, const cv::Mat_<float>& background) {
    const float level = parting(subject);
    Mask result(subject.size());
    for (int y = 0; y < result.rows; ++y)
        for (int x = 0; x < result.cols; ++x) {
            const float s = subject(y, x);
            if (s > level)
                result(y, x) = cv::GC_PR_FGD;
            else if (s < surelyBackground && background(y, x) > 0.9F)
                result(y, x) = cv::GC_BGD;
            else
                result(y, x) = cv::GC_PR_BGD;
        }
    return result;
}

bool hasBoth(const Mask& labels) {
    bool subject = false;
    bool background = false;
    for (const std::uint8_t label : labels) (label & 1 ? subject : background) = true;
    return subject && background;
}

/// Drops stray parts; returns the share of what is left.
float dropStrayParts(Mask& mask) {
    cv::Mat_<int> labels;
    cv::Mat_<int> stats;
    cv::Mat centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 4);
    float largest = 0;
    float all = 0;
    for (int i = 1; i < count; ++i) {
        const auto area = static_cast<float>(stats(i, cv::CC_STAT_AREA));
        largest = std::max(largest, area);
        all += area;
    }
    float kept = 0;
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) {
            if (!mask(y, x)) continue;
            if (static_cast<float>(stats(labels(y, x), cv::CC_STAT_AREA)) < stray * largest)
                mask(y, x) = 0;
            else
                ++kept;
        }
    return all > 0 ? kept / all : 0;
}

void fillSmallHoles(Mask& mask) {
    cv::Mat_<int> labels;
    cv::Mat_<int> stats;
    cv::Mat centres;
    const Mask outside(~mask);
    cv::connectedComponentsWithStats(outside, labels, stats, centres, 4);
    const float smallest = smallestHole * static_cast<float>(mask.total());
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (!mask(y, x) && static_cast<float>(stats(labels(y, x), cv::CC_STAT_AREA)) < smallest) mask(y, x) = 255;
}

/// How evenly a mask goes through from the left to the right.
float spannedAcross(const Mask& mask) {
    cv::Mat_<float> thickness;
    cv::reduce(mask, thickness, 0, cv::REDUCE_SUM, CV_32F);
    thickness /= 255.0 * mask.rows;
    const int margin = std::max(1, mask.cols / 20);
    const auto left = static_cast<float>(cv::mean(thickness.colRange(0, margin))[0]);
    const auto right = static_cast<float>(cv::mean(thickness.colRange(mask.cols - margin, mask.cols))[0]);
    double largest = 0;
    cv::minMaxLoc(thickness, nullptr, &largest);
    return std::min(left, right) / std::max(static_cast<float>(largest), 1e-3F);
}

std::vector<float> histogram(const cv::Mat_<cv::Vec3f>& lab, const Mask& mask) {
    constexpr int bins = 12;
    std::vector<float> counts(bins * bins * bins, 0.0F);
    float total = 0;
    const auto bin = [](float value, float low, float high) {
        return std::clamp(static_cast<int>((value - low) / (high - low) * bins), 0, bins - 1);
    };
    for (int y = 0; y < lab.rows; ++y)
        for (int x = 0; x < lab.cols; ++x) {
            if (!mask(y, x)) continue;
            const cv::Vec3f& c = lab(y, x);
            const int at = (bin(c[0], 0, 100) * bins + bin(c[1], -80, 80)) * bins + bin(c[2], -80, 80);
            ++counts[static_cast<std::size_t>(at)];
            ++total;
        }
    for (float& value : counts) value /= std::max(total, 1.0F);
    return counts;
}

/// How far the mean colours of the two sides are from each other in windows along the outline, Lab units.
float contrastAlongEdge(const cv::Mat_<cv::Vec3f>& lab, const Mask& mask) {
    constexpr int reach = 4;
    cv::Mat_<float> share;
    cv::Mat_<cv::Vec3f> within;
    cv::Mat_<cv::Vec3f> all;
    cv::Mat_<float> unit;
    mask.convertTo(unit, CV_32F, 1 / 255.0);
    cv::Mat_<cv::Vec3f> masked;
    cv::Mat wide;
    cv::merge(std::vector<cv::Mat>{unit, unit, unit}, wide);
    cv::multiply(lab, wide, masked);
    const cv::Size window(2 * reach + 1, 2 * reach + 1);
    cv::blur(unit, share, window);
    cv::blur(masked, within, window);
    cv::blur(lab, all, window);
    double sum = 0;
    double count = 0;
    for (int y = 1; y + 1 < mask.rows; ++y)
        for (int x = 1; x + 1 < mask.cols; ++x) {
            if (!mask(y, x) || (mask(y, x - 1) && mask(y, x + 1) && mask(y - 1, x) && mask(y + 1, x))) continue;
            const float in = share(y, x);
            if (in < 0.1F || in > 0.9F) continue;
            sum += cv::norm(within(y, x) / in - (all(y, x) - within(y, x)) / (1 - in));
            ++count;
        }
    return count > 0 ? static_cast<float>(sum / count) : 0;
}

Evidence evidenceFor(const cv::Mat_<cv::Vec3f>& lab, const Mask& mask, float contrast) {
    Evidence evidence{.contrast = contrast};
    evidence.area = static_cast<float>(cv::countNonZero(mask)) / static_cast<float>(mask.total());

    float outline = 0;
    float atBorder = 0;
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x) {
            if (!mask(y, x)) continue;
            if (x == 0 || y == 0 || x == mask.cols - 1 || y == mask.rows - 1)
                ++atBorder;
            else if (!mask(y, x - 1) || !mask(y, x + 1) || !mask(y - 1, x) || !mask(y + 1, x))
                ++outline;
        }
    const float length = outline + atBorder;
    evidence.roughness =
        length * length / (4 * static_cast<float>(CV_PI) * evidence.area * static_cast<float>(mask.total()));

    evidence.spanned = std::max(spannedAcross(mask), spannedAcross(Mask(mask.t())));

    const std::vector<float> inside = histogram(lab, mask);
    const std::vector<float> outside = histogram(lab, Mask(~mask));
    for (std::size_t i = 0; i < inside.size(); ++i) evidence.colorOverlap += std::sqrt(inside[i] * outside[i]);

    evidence.edgeContrast = contrastAlongEdge(lab, mask);
    return evidence;
}

void thickParts(Mask& mask) {
    const double size = std::sqrt(cv::countNonZero(mask));
    const int reach = std::max(1, static_cast<int>(thick * size));
    cv::morphologyEx(mask, mask, cv::MORPH_OPEN,
                     cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * reach + 1, 2 * reach + 1}));
}

Mask subjectOf(const Mask& labels) {
    return Mask((labels & 1) * 255);
}

/// Lets colour models of both sides settle what is what. False when one side is empty or a stop was requested.
bool cut(const cv::Mat_<cv::Vec3b>& picture, Mask& labels, const std::stop_token& stop) {
    cv::Mat background;
    cv::Mat subject;
    cv::theRNG().state = 1; // the same picture gives the same mask
    for (int i = 0; i < rounds; ++i) {
        if (stop.stop_requested() || !hasBoth(labels)) return false;
        cv::grabCut(picture, labels, {}, background, subject, 1, i == 0 ? cv::GC_INIT_WITH_MASK : cv::GC_EVAL);
    }
    return hasBoth(labels);
}

} // namespace

bool Evidence::isConvincing() const {
    // Measured on synthesised scenes with and without a subject; each limit lies in the gap between the two.
    constexpr float leastContrast = 8;
    constexpr float leastEdgeContrast = 12;
    constexpr float leastArea = 0.004F;
    constexpr float largestArea = 0.95F;
    constexpr float largestSpan = 0.45F;
    constexpr float largestOverlap = 0.5F;
    constexpr float leastAreaAmongClutter = 0.05F;
    constexpr float roughest = 10;
    constexpr float roughestPerAreaAmongClutter = 32;
    if (contrast < leastContrast || edgeContrast < leastEdgeContrast) return false;
    if (area < leastArea || area > largestArea) return false;
    if (spanned > largestSpan || colorOverlap > largestOverlap || roughness > roughest) return false;
    if (unity >= clutteredUnity) return true;
    return area >= leastAreaAmongClutter && roughness <= roughestPerAreaAmongClutter * area;
}

std::optional<Subject> findSubject(const cv::Mat_<cv::Vec3b>& picture, const std::stop_token& stop) {
    const cv::Mat_<cv::Vec3f> lab = labOf(picture);
    const Superpixels patches = superpixelsOf(lab, wantedPatches);
    if (patches.patches.size() < 2 || stop.stop_requested()) return {};
    const SubjectPrior prior = subjectPriorOf(patches);
    if (stop.stop_requested()) return {};

    Mask labels = guess(paint(patches, prior.subject), paint(patches, prior.background));
    if (!cut(picture, labels, stop)) return {};
    Mask mask = subjectOf(labels);
    const float unity = dropStrayParts(mask);
    // Again with the colours of the parts that are kept; among clutter, of their thick parts only, and once more.
    const bool cluttered = unity < clutteredUnity;
    for (int i = 0; i < (cluttered ? 2 : 1); ++i) {
        if (cluttered) thickParts(mask);
        for (int y = 0; y < labels.rows; ++y)
            for (int x = 0; x < labels.cols; ++x)
                if (labels(y, x) == cv::GC_PR_FGD && !mask(y, x)) labels(y, x) = cv::GC_PR_BGD;
        if (!cut(picture, labels, stop)) return {};
        mask = subjectOf(labels);
        dropStrayParts(mask);
    }
    fillSmallHoles(mask);
    if (cv::countNonZero(mask) == 0) return {};
    Subject subject{mask, evidenceFor(lab, mask, prior.contrast)};
    subject.evidence.unity = unity;
    return subject;
}

} // namespace quillary::subject
