#include "cutout/RowBands.h"
#include "cutout/subject/EdgeCoverage.h"
#include "cutout/subject/GuidedFilter.h"
#include "cutout/subject/SubjectFinder.h"
#include "cutout/subject/SubjectModule.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace quillary::subject {

namespace {

constexpr int workingSide = 320;  ///< where the subject is looked for
constexpr int guidingSide = 1024; ///< where its outline is fitted to the picture
constexpr int smallestSide = 8;
constexpr float smoothness = 4e-4F;
constexpr float leastCoverage = 0.12F; ///< below, nothing is left; above its complement, all is
constexpr int bandRows = 64;

cv::Mat_<cv::Vec3b> atMost(const cv::Mat& picture, int side) {
    const double scale = std::min(1.0, static_cast<double>(side) / std::max(picture.cols, picture.rows));
    const cv::Size size(std::max(1, static_cast<int>(std::lround(picture.cols * scale))),
                        std::max(1, static_cast<int>(std::lround(picture.rows * scale))));
    cv::Mat small;
    cv::resize(picture, small, size, 0, 0, cv::INTER_AREA);
    cv::Mat_<cv::Vec3b> rgb;
    cv::cvtColor(small, rgb, cv::COLOR_RGBA2RGB);
    return rgb;
}

/// The outline fitted at the guiding size: factors and constant for each pixel there. Far from the outline the mask is
/// kept as it is.
cv::Mat_<cv::Vec4f> fitted(const cv::Mat_<cv::Vec3b>& guide, const cv::Mat_<std::uint8_t>& mask) {
    cv::Mat_<std::uint8_t> large;
    cv::resize(mask, large, guide.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat_<float> unit;
    large.convertTo(unit, CV_32F, 1 / 255.0);
    cv::Mat_<cv::Vec3f> colors;
    guide.convertTo(colors, CV_32FC3, 1 / 255.0);
    const float enlargement = static_cast<float>(guide.cols) / static_cast<float>(mask.cols);
    const int radius = std::max(2, static_cast<int>(std::lround(2.0F * enlargement)));
    const cv::Mat_<float> coverage = edgeCoverage(colors, unit, 2 * radius);
    cv::Mat_<cv::Vec4f> coefficients = GuidedFilter(colors, coverage, radius, smoothness).coefficients();

    const int reach = 2 * radius;
    const cv::Mat window = cv::getStructuringElement(cv::MORPH_RECT, {2 * reach + 1, 2 * reach + 1});
    cv::Mat_<std::uint8_t> inner;
    cv::Mat_<std::uint8_t> outer;
    cv::erode(large, inner, window);
    cv::dilate(large, outer, window);
    coefficients.setTo(cv::Vec4f(0, 0, 0, 1), inner == 255);
    coefficients.setTo(cv::Vec4f(0, 0, 0, 0), outer == 0);
    return coefficients;
}

struct Tap {
    int first;
    int second;
    float share; ///< of the second
};

/// Where position `i` of `count` lies among `small` samples.
Tap tapAt(int i, int count, int small) {
    const float at = (static_cast<float>(i) + 0.5F) * static_cast<float>(small) / static_cast<float>(count) - 0.5F;
    const int first = std::clamp(static_cast<int>(std::floor(at)), 0, small - 1);
    return {first, std::min(first + 1, small - 1), std::clamp(at - static_cast<float>(first), 0.0F, 1.0F)};
}

std::uint8_t coverage(float value) {
    const float stretched = (value - leastCoverage) / (1 - 2 * leastCoverage);
    return static_cast<std::uint8_t>(std::clamp(stretched, 0.0F, 1.0F) * 255 + 0.5F);
}

/// Evaluates the fitted functions on every pixel of the picture.
void evaluate(const Picture& picture, const cv::Mat_<cv::Vec4f>& coefficients, std::uint8_t* mask,
              std::size_t maskStride, const std::stop_token& stop) {
    std::vector<Tap> columns;
    for (int x = 0; x < picture.width; ++x) columns.push_back(tapAt(x, picture.width, coefficients.cols));
    cutout::forRowBands(picture.height, bandRows, stop, [&](int begin, int end) {
        std::vector<cv::Vec4f> row(static_cast<std::size_t>(coefficients.cols));
        for (int y = begin; y < end; ++y) {
            const Tap tap = tapAt(y, picture.height, coefficients.rows);
            const cv::Vec4f* const upper = coefficients[tap.first];
            const cv::Vec4f* const lower = coefficients[tap.second];
            for (std::size_t x = 0; x < row.size(); ++x)
                for (int c = 0; c < 4; ++c)
                    row[x][c] = (upper[x][c] + tap.share * (lower[x][c] - upper[x][c])) / (c < 3 ? 255.0F : 1.0F);
            const std::uint8_t* pixel = picture.pixels + static_cast<std::size_t>(y) * picture.stride;
            std::uint8_t* out = mask + static_cast<std::size_t>(y) * maskStride;
            for (const Tap& column : columns) {
                const cv::Vec4f& left = row[static_cast<std::size_t>(column.first)];
                const cv::Vec4f& right = row[static_cast<std::size_t>(column.second)];
                float value = left[3] + column.share * (right[3] - left[3]);
                for (int c = 0; c < 3; ++c)
                    value += static_cast<float>(pixel[c]) * (left[c] + column.share * (right[c] - left[c]));
                *out++ = coverage(value);
                pixel += 4;
            }
        }
    });
}

class ClassicalEngine : public Engine {
public:
    Outcome findSubject(const Picture& picture, std::uint8_t* mask, std::size_t maskStride, const std::stop_token& stop,
                        std::string& reason) override {
        if (std::min(picture.width, picture.height) < smallestSide) return Outcome::noSubject;
        try {
            const cv::Mat pixels(picture.height, picture.width, CV_8UC4, const_cast<std::uint8_t*>(picture.pixels),
                                 picture.stride);
            const cv::Mat_<cv::Vec3b> guide = atMost(pixels, guidingSide);
            const auto subject = subject::findSubject(atMost(pixels, workingSide), stop);
            if (stop.stop_requested()) return Outcome::stopped;
            if (!subject || !subject->evidence.isConvincing()) return Outcome::noSubject;
            evaluate(picture, fitted(guide, subject->mask), mask, maskStride, stop);
        } catch (const std::exception& error) {
            reason = error.what();
            return Outcome::failed;
        }
        return stop.stop_requested() ? Outcome::stopped : Outcome::found;
    }
};

} // namespace

} // namespace quillary::subject

extern "C" [[gnu::visibility("default")]] quillary::subject::Engine* quillarySubjectEngine(const char*, std::string*) {
    return new quillary::subject::ClassicalEngine;
}
