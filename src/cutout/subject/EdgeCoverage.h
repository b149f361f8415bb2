#pragma once

#include <opencv2/core.hpp>

namespace quillary::subject {

/// How much of each pixel along the outline of a mask belongs to the subject, judged by where its colour lies between
/// the colours of both sides nearby. Where it lies between them badly, the mask is kept.
///
/// Colours 0 … 1, mask 0 … 1, the same size. Only pixels within `reach` of the outline are judged.
cv::Mat_<float> edgeCoverage(const cv::Mat_<cv::Vec3f>& colors, const cv::Mat_<float>& mask, int reach);

} // namespace quillary::subject
