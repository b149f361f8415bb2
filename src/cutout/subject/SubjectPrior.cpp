#include "cutout/subject/SubjectPrior.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace quillary::subject {

namespace {

constexpr float geodesicDeviation = 7;    ///< Lab units within which patches count as the same thing
constexpr float similarityDeviation = 10; ///< Lab units within which neighbours should agree
constexpr float spatialDeviation = 0.4F;  ///< longer sides
constexpr float backgroundTrust = 5;
constexpr float usualConnectivity = 2.2F; ///< to the border, of a background; a bust's is about 1.3
constexpr float leastLink = 0.1F;
constexpr float trustedBackground = 0.8F;
constexpr float noveltyDeviation = 10; ///< Lab units

using Matrix = cv::Mat_<float>;

float bell(float distance, float deviation) {
    return std::exp(-distance * distance / (2 * deviation * deviation));
}

Matrix colorDistances(const Superpixels& picture) {
    const auto count = static_cast<int>(picture.patches.size());
    Matrix result(count, count);
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < count; ++j)
            result(i, j) = static_cast<float>(cv::norm(picture.patches[static_cast<std::size_t>(i)].color -
                                                       picture.patches[static_cast<std::size_t>(j)].color));
    return result;
}

/// Neighbours, neighbours of those that are asked for, and all patches at the border with each other.
std::vector<std::vector<int>> linksOf(const Superpixels& picture, bool twoSteps) {
    std::vector<int> border;
    for (std::size_t i = 0; i < picture.patches.size(); ++i)
        if (picture.patches[i].atBorder) border.push_back(static_cast<int>(i));
    std::vector<std::vector<int>> links;
    for (std::size_t i = 0; i < picture.patches.size(); ++i) {
        const auto& patch = picture.patches[i];
        std::vector<int> of = patch.neighbours;
        if (twoSteps)
            for (const int next : patch.neighbours)
                for (const int further : picture.patches[static_cast<std::size_t>(next)].neighbours)
                    of.push_back(further);
        if (patch.atBorder) of.insert(of.end(), border.begin(), border.end());
        std::sort(of.begin(), of.end());
        of.erase(std::unique(of.begin(), of.end()), of.end());
        std::erase(of, static_cast<int>(i));
        links.push_back(std::move(of));
    }
    return links;
}

/// What a step between neighbours of one thing typically costs: paid by every step, it must not add up.
float freeStep(const Superpixels& picture, const Matrix& distances) {
    float sum = 0;
    for (std::size_t i = 0; i < picture.patches.size(); ++i) {
        float least = std::numeric_limits<float>::max();
        for (const int j : picture.patches[i].neighbours) least = std::min(least, distances(static_cast<int>(i), j));
        if (!picture.patches[i].neighbours.empty()) sum += least;
    }
    return sum / static_cast<float>(picture.patches.size());
}

std::vector<float> geodesicsFrom(int start, const std::vector<std::vector<int>>& links, const Matrix& distances,
                                 float free) {
    std::vector<float> length(links.size(), std::numeric_limits<float>::max());
    using Entry = std::pair<float, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    length[static_cast<std::size_t>(start)] = 0;
    open.emplace(0.0F, start);
    // Farther than this, patches are not the same thing in any case.
    constexpr float far = 4 * geodesicDeviation;
    while (!open.empty()) {
        const auto [at, i] = open.top();
        open.pop();
        if (at > length[static_cast<std::size_t>(i)] || at > far) continue;
        for (const int j : links[static_cast<std::size_t>(i)]) {
            const float next = at + std::max(0.0F, distances(i, j) - free);
            if (next >= length[static_cast<std::size_t>(j)]) continue;
            length[static_cast<std::size_t>(j)] = next;
            open.emplace(next, j);
        }
    }
    return length;
}

std::vector<float> backgroundLikelihood(const Superpixels& picture, const Matrix& distances) {
    const auto links = linksOf(picture, false);
    const float free = freeStep(picture, distances);
    std::vector<float> result;
    for (std::size_t i = 0; i < picture.patches.size(); ++i) {
        const auto geodesics = geodesicsFrom(static_cast<int>(i), links, distances, free);
        float area = 0;
        float border = 0;
        for (std::size_t j = 0; j < geodesics.size(); ++j) {
            const float same = bell(geodesics[j], geodesicDeviation);
            area += same;
            if (picture.patches[j].atBorder) border += same;
        }
        const float connectivity = border / std::sqrt(area);
        result.push_back(1 - std::exp(-connectivity * connectivity / (2 * usualConnectivity * usualConnectivity)));
    }
    return result;
}

std::vector<float> contrasts(const Superpixels& picture, const Matrix& distances,
                             const std::vector<float>& background) {
    std::vector<float> result;
    for (std::size_t i = 0; i < picture.patches.size(); ++i) {
        float sum = 0;
        float weights = 0;
        for (std::size_t j = 0; j < picture.patches.size(); ++j) {
            const auto apart = static_cast<float>(cv::norm(picture.patches[i].centre - picture.patches[j].centre));
            const float weight = bell(apart, spatialDeviation) * background[j];
            sum += weight * distances(static_cast<int>(i), static_cast<int>(j));
            weights += weight;
        }
        result.push_back(weights > 0 ? sum / weights : 0);
    }
    return result;
}

/// How far a patch's colour is from all colours of the background, 0 … 1: one like it anywhere counts.
float novelty(const Matrix& distances, const std::vector<float>& background, int i) {
    float least = std::numeric_limits<float>::max();
    for (std::size_t j = 0; j < background.size(); ++j)
        if (background[j] > trustedBackground) least = std::min(least, distances(i, static_cast<int>(j)));
    return 1 - bell(least, noveltyDeviation);
}

float centrality(const Superpixels& picture, std::size_t i) {
    const auto longer = static_cast<float>(std::max(picture.labels.cols, picture.labels.rows));
    const cv::Point2f middle(static_cast<float>(picture.labels.cols) / (2 * longer),
                             static_cast<float>(picture.labels.rows) / (2 * longer));
    return 0.4F + 0.6F * bell(static_cast<float>(cv::norm(picture.patches[i].centre - middle)), 0.3F);
}

/// Least squares: background patches want 0, contrasting ones 1, like neighbours the same.
std::vector<float> settled(const Superpixels& picture, const Matrix& distances, const std::vector<float>& background,
                           const std::vector<float>& contrast) {
    const auto count = static_cast<int>(picture.patches.size());
    const auto links = linksOf(picture, true);
    cv::Mat_<double> system(count, count, 0.0);
    cv::Mat_<double> wanted(count, 1, 0.0);
    for (int i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(i);
        for (const int j : links[at]) {
            const double link = bell(distances(i, j), similarityDeviation) + leastLink;
            system(i, i) += link;
            system(i, j) -= link;
        }
        system(i, i) += backgroundTrust * background[at] + contrast[at] + 1e-4;
        wanted(i, 0) = contrast[at];
    }
    cv::Mat_<double> solution;
    cv::solve(system, wanted, solution, cv::DECOMP_CHOLESKY);
    std::vector<float> result;
    for (int i = 0; i < count; ++i) result.push_back(static_cast<float>(solution(i, 0)));
    return result;
}

void normalise(std::vector<float>& values) {
    const auto [least, largest] = std::minmax_element(values.begin(), values.end());
    const float low = *least;
    const float range = std::max(*largest - low, 1e-6F);
    for (float& value : values) value = (value - low) / range;
}

} // namespace

SubjectPrior subjectPriorOf(const Superpixels& picture) {
    const Matrix distances = colorDistances(picture);
    SubjectPrior prior;
    prior.background = backgroundLikelihood(picture, distances);
    std::vector<float> contrast = contrasts(picture, distances, prior.background);
    for (std::size_t i = 0; i < contrast.size(); ++i) {
        const float likely =
            contrast[i] * (1 - prior.background[i]) * novelty(distances, prior.background, static_cast<int>(i));
        prior.contrast = std::max(prior.contrast, likely);
        contrast[i] = likely * centrality(picture, i);
    }
    normalise(contrast);
    prior.subject = settled(picture, distances, prior.background, contrast);
    normalise(prior.subject);
    return prior;
}

} // namespace quillary::subject
