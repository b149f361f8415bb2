#pragma once

#include <opencv2/core.hpp>

namespace quillary::subject {

/// Lets a mask follow the edges of a picture: in each window the mask is expressed as a linear function of the
/// picture's colours, fitted by least squares, and the functions of all windows around a pixel are averaged.
///
/// The functions are found at the size of `guide` and `mask` (colours 0 … 1, mask 0 … 1, the same size); they may be
/// evaluated on the picture at any larger size.
class GuidedFilter {
public:
    /// `radius` of the window in pixels; `smoothness` is the variance of colour below which nothing counts as an edge.
    GuidedFilter(const cv::Mat_<cv::Vec3f>& guide, const cv::Mat_<float>& mask, int radius, float smoothness);

    /// Red, green and blue factor and constant for each pixel.
    const cv::Mat_<cv::Vec4f>& coefficients() const { return m_coefficients; }

private:
    cv::Mat_<cv::Vec4f> m_coefficients;
};

} // namespace quillary::subject
