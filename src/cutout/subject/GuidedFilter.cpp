#include "cutout/subject/GuidedFilter.h"

#include <array>
#include <opencv2/imgproc.hpp>

namespace quillary::subject {

namespace {

cv::Mat_<float> mean(const cv::Mat& values, int radius) {
    cv::Mat_<float> result;
    const int side = 2 * radius + 1;
    cv::blur(values, result, {side, side}, {-1, -1}, cv::BORDER_REFLECT);
    return result;
}

} // namespace

GuidedFilter::GuidedFilter(const cv::Mat_<cv::Vec3f>& guide, const cv::Mat_<float>& mask, int radius, float smoothness)
    : m_coefficients(guide.size()) {
    std::array<cv::Mat, 3> channels;
    cv::split(guide, channels.data());
    std::array<cv::Mat_<float>, 3> means;
    std::array<cv::Mat_<float>, 3> withMask;
    const cv::Mat_<float> maskMean = mean(mask, radius);
    for (std::size_t c = 0; c < 3; ++c) {
        means[c] = mean(channels[c], radius);
        withMask[c] = mean(channels[c].mul(mask), radius) - means[c].mul(maskMean);
    }
    const auto covariance = [&](std::size_t a, std::size_t b) -> cv::Mat_<float> {
        return cv::Mat_<float>(mean(channels[a].mul(channels[b]), radius) - means[a].mul(means[b]));
    };
    const cv::Mat_<float> rr = covariance(0, 0);
    const cv::Mat_<float> rg = covariance(0, 1);
    const cv::Mat_<float> rb = covariance(0, 2);
    const cv::Mat_<float> gg = covariance(1, 1);
    const cv::Mat_<float> gb = covariance(1, 2);
    const cv::Mat_<float> bb = covariance(2, 2);
    for (int y = 0; y < guide.rows; ++y) {
        for (int x = 0; x < guide.cols; ++x) {
            const cv::Matx33f spread(rr(y, x) + smoothness, rg(y, x), rb(y, x), rg(y, x), gg(y, x) + smoothness,
                                     gb(y, x), rb(y, x), gb(y, x), bb(y, x) + smoothness);
            const cv::Vec3f joint(withMask[0](y, x), withMask[1](y, x), withMask[2](y, x));
            const cv::Vec3f factors = spread.inv(cv::DECOMP_CHOLESKY) * joint;
            const cv::Vec3f middle(means[0](y, x), means[1](y, x), means[2](y, x));
            m_coefficients(y, x) = {factors[0], factors[1], factors[2], maskMean(y, x) - factors.dot(middle)};
        }
    }
    const int side = 2 * radius + 1;
    cv::blur(m_coefficients, m_coefficients, {side, side}, {-1, -1}, cv::BORDER_REFLECT);
}

} // namespace quillary::subject
