#pragma once

#include <opencv2/core.hpp>
#include <optional>
#include <stop_token>

namespace quillary::subject {

/// What tells a subject from a patch of background that was taken for one.
struct Evidence {
    float contrast = 0;     ///< of the strongest patch against the background, Lab units
    float area = 0;         ///< share of the picture
    float colorOverlap = 0; ///< of the colours inside and outside, 0 … 1: the same colours give 1
    float unity = 0;        ///< share of the kept parts in all that stood out at first
    float spanned = 0;      ///< how evenly the mask goes through from one side to the other, 0 … 1: a band gives 1
    float roughness = 0;    ///< of the outline: 1 is a disc
    float edgeContrast = 0; ///< of the colours on both sides of the outline, Lab units

    bool isConvincing() const;
};

/// A guess at the subject of a small picture.
struct Subject {
    cv::Mat_<std::uint8_t> mask; ///< 0 or 255
    Evidence evidence;
};

/// Of a picture whose longer side has some hundred pixels; RGB. Absent when nothing at all stands out or a stop was
/// requested. The evidence is the caller's to weigh.
std::optional<Subject> findSubject(const cv::Mat_<cv::Vec3b>& picture, const std::stop_token& stop);

} // namespace quillary::subject
