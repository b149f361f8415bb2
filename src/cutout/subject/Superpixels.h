#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace quillary::subject {

/// A picture cut into some hundred patches of even colour and about the same size.
struct Superpixels {
    struct Patch {
        cv::Vec3f color;    ///< mean, Lab
        cv::Point2f centre; ///< in units of the longer side
        float area = 0;     ///< pixels
        bool atBorder = false;
        std::vector<int> neighbours = {};
    };

    cv::Mat_<int> labels; ///< which patch each pixel belongs to
    std::vector<Patch> patches;
};

/// Clusters pixels by colour and place on a regular grid of starting points. `lab` holds L of 0 … 100.
Superpixels superpixelsOf(const cv::Mat_<cv::Vec3f>& lab, int wanted);

} // namespace quillary::subject
