#include "cutout/subject/Superpixels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quillary::subject {

namespace {

constexpr float compactness = 12;
constexpr int iterations = 6;

struct Centre {
    cv::Vec3f color;
    float x;
    float y;
};

std::vector<Centre> grid(const cv::Mat_<cv::Vec3f>& lab, float step) {
    std::vector<Centre> centres;
    for (float y = step / 2; y < static_cast<float>(lab.rows); y += step)
        for (float x = step / 2; x < static_cast<float>(lab.cols); x += step)
            centres.push_back({lab(static_cast<int>(y), static_cast<int>(x)), x, y});
    return centres;
}

void assign(const cv::Mat_<cv::Vec3f>& lab, const std::vector<Centre>& centres, float step, cv::Mat_<int>& labels,
            cv::Mat_<float>& distances) {
    distances.setTo(std::numeric_limits<float>::max());
    const float spatial = compactness * compactness / (step * step);
    for (std::size_t k = 0; k < centres.size(); ++k) {
        const Centre& centre = centres[k];
        const int left = std::max(0, static_cast<int>(centre.x - step));
        const int right = std::min(lab.cols - 1, static_cast<int>(centre.x + step));
        const int top = std::max(0, static_cast<int>(centre.y - step));
        const int bottom = std::min(lab.rows - 1, static_cast<int>(centre.y + step));
        for (int y = top; y <= bottom; ++y) {
            const cv::Vec3f* row = lab[y];
            const float dy = static_cast<float>(y) - centre.y;
            for (int x = left; x <= right; ++x) {
                const float dx = static_cast<float>(x) - centre.x;
                const cv::Vec3f d = row[x] - centre.color;
                const float distance = d.dot(d) + spatial * (dx * dx + dy * dy);
                if (distance < distances(y, x)) {
                    distances(y, x) = distance;
                    labels(y, x) = static_cast<int>(k);
                }
            }
        }
    }
}

void moveCentres(const cv::Mat_<cv::Vec3f>& lab, const cv::Mat_<int>& labels, std::vector<Centre>& centres) {
    std::vector<Centre> sums(centres.size(), {cv::Vec3f(), 0, 0});
    std::vector<float> counts(centres.size(), 0);
    for (int y = 0; y < lab.rows; ++y)
        for (int x = 0; x < lab.cols; ++x) {
            const auto k = static_cast<std::size_t>(labels(y, x));
            sums[k].color += lab(y, x);
            sums[k].x += static_cast<float>(x);
            sums[k].y += static_cast<float>(y);
            ++counts[k];
        }
    for (std::size_t k = 0; k < centres.size(); ++k)
        if (counts[k] > 0) centres[k] = {sums[k].color / counts[k], sums[k].x / counts[k], sums[k].y / counts[k]};
}

/// Every patch in one piece: stray parts below `smallest` pixels join a patch beside them.
int connect(cv::Mat_<int>& labels, int smallest) {
    cv::Mat_<int> connected(labels.size(), -1);
    std::vector<cv::Point> part;
    int count = 0;
    for (int y = 0; y < labels.rows; ++y) {
        for (int x = 0; x < labels.cols; ++x) {
            if (connected(y, x) >= 0) continue;
            int beside = -1;
            if (x > 0)
                beside = connected(y, x - 1);
            else if (y > 0)
                beside = connected(y - 1, x);
            part.assign(1, {x, y});
            connected(y, x) = count;
            for (std::size_t i = 0; i < part.size(); ++i) {
                for (const cv::Point step : {cv::Point(1, 0), cv::Point(-1, 0), cv::Point(0, 1), cv::Point(0, -1)}) {
                    const cv::Point next = part[i] + step;
                    if (next.x < 0 || next.y < 0 || next.x >= labels.cols || next.y >= labels.rows) continue;
                    if (connected(next) >= 0 || labels(next) != labels(y, x)) continue;
                    connected(next) = count;
                    part.push_back(next);
                }
            }
            if (static_cast<int>(part.size()) < smallest && beside >= 0)
                for (const cv::Point& point : part) connected(point) = beside;
            else
                ++count;
        }
    }
    labels = connected;
    return count;
}

void addNeighbour(Superpixels::Patch& patch, int other) {
    if (std::find(patch.neighbours.begin(), patch.neighbours.end(), other) == patch.neighbours.end())
        patch.neighbours.push_back(other);
}

void describe(const cv::Mat_<cv::Vec3f>& lab, Superpixels& result) {
    const cv::Mat_<int>& labels = result.labels;
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < lab.cols; ++x) {
            const int k = labels(y, x);
            auto& patch = result.patches[static_cast<std::size_t>(k)];
            patch.color += lab(y, x);
            patch.centre += cv::Point2f(static_cast<float>(x), static_cast<float>(y));
            ++patch.area;
            if (x == 0 || y == 0 || x == lab.cols - 1 || y == lab.rows - 1) patch.atBorder = true;
            for (const int other : {x + 1 < lab.cols ? labels(y, x + 1) : k, y + 1 < lab.rows ? labels(y + 1, x) : k}) {
                if (other == k) continue;
                addNeighbour(patch, other);
                addNeighbour(result.patches[static_cast<std::size_t>(other)], k);
            }
        }
    }
    const auto longer = static_cast<float>(std::max(lab.cols, lab.rows));
    for (auto& patch : result.patches) {
        patch.color /= patch.area;
        patch.centre = patch.centre / (patch.area * longer);
    }
}

} // namespace

Superpixels superpixelsOf(const cv::Mat_<cv::Vec3f>& lab, int wanted) {
    const float step = std::max(2.0F, std::sqrt(static_cast<float>(lab.total()) / static_cast<float>(wanted)));
    std::vector<Centre> centres = grid(lab, step);
    Superpixels result{cv::Mat_<int>(lab.size(), 0), {}};
    cv::Mat_<float> distances(lab.size());
    for (int i = 0; i < iterations; ++i) {
        assign(lab, centres, step, result.labels, distances);
        moveCentres(lab, result.labels, centres);
    }
    const int count = connect(result.labels, std::max(1, static_cast<int>(step * step / 4)));
    result.patches.resize(static_cast<std::size_t>(count));
    describe(lab, result);
    return result;
}

} // namespace quillary::subject
