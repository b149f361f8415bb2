#include "cutout/subject/EdgeCoverage.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace quillary::subject {

namespace {

constexpr float misfitDeviation = 0.06F; ///< of a colour from the line between both sides
constexpr float weakContrast = 0.02F;    ///< squared distance of both sides at which they are half trusted

/// Mean colours of one side in windows, and how much of each window it fills.
struct Side {
    cv::Mat_<cv::Vec3f> sum;
    cv::Mat_<float> share;

    Side(const cv::Mat_<cv::Vec3f>& colors, const cv::Mat_<std::uint8_t>& where, int reach) {
        const cv::Size window(4 * reach + 1, 4 * reach + 1);
        cv::Mat_<cv::Vec3f> only(colors.size(), cv::Vec3f());
        colors.copyTo(only, where);
        cv::Mat_<float> there;
        where.convertTo(there, CV_32F, 1 / 255.0);
        cv::blur(only, sum, window, {-1, -1}, cv::BORDER_REFLECT);
        cv::blur(there, share, window, {-1, -1}, cv::BORDER_REFLECT);
    }
};

} // namespace

cv::Mat_<float> edgeCoverage(const cv::Mat_<cv::Vec3f>& colors, const cv::Mat_<float>& mask, int reach) {
    const cv::Mat_<std::uint8_t> solid(mask > 0.5F);
    const cv::Mat window = cv::getStructuringElement(cv::MORPH_RECT, {2 * reach + 1, 2 * reach + 1});
    cv::Mat_<std::uint8_t> inner;
    cv::Mat_<std::uint8_t> outer;
    cv::erode(solid, inner, window);
    cv::dilate(solid, outer, window);
    const Side subject(colors, inner, reach);
    const Side background(colors, cv::Mat_<std::uint8_t>(~outer), reach);

    cv::Mat_<float> result = mask.clone();
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (inner(y, x) || !outer(y, x)) continue;
            const float within = subject.share(y, x);
            const float without = background.share(y, x);
            constexpr float enough = 0.02F;
            if (within < enough || without < enough) continue;
            const cv::Vec3f far = background.sum(y, x) / without;
            const cv::Vec3f across = subject.sum(y, x) / within - far;
            const cv::Vec3f here = colors(y, x) - far;
            const float contrast = across.dot(across);
            const float covered = std::clamp(here.dot(across) / std::max(contrast, 1e-6F), 0.0F, 1.0F);
            const cv::Vec3f off = here - across * covered;
            const float trust = contrast / (contrast + weakContrast) *
                                std::exp(-off.dot(off) / (2 * misfitDeviation * misfitDeviation));
            result(y, x) = std::lerp(mask(y, x), covered, trust);
        }
    }
    return result;
}

} // namespace quillary::subject
