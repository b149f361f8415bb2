#include "cutout/Mazes.h"
#include "cutout/SolidBackgroundRemover.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

using namespace quillary;

namespace {

constexpr int side = 4096;

/// The rival: one fill per stretch of border that is near the mean colour of the border, mask only, then the alpha.
void floodFill(const QImage& image) {
    QImage result = image.copy();
    cv::Mat pixels(result.height(), result.width(), CV_8UC4, result.bits(),
                   static_cast<std::size_t>(result.bytesPerLine()));
    cv::Mat rgb;
    cv::cvtColor(pixels, rgb, cv::COLOR_RGBA2RGB);
    const cv::Scalar mean = (cv::mean(rgb.row(0)) + cv::mean(rgb.row(rgb.rows - 1)) + cv::mean(rgb.col(0)) +
                             cv::mean(rgb.col(rgb.cols - 1))) /
                            4;
    cv::Mat mask = cv::Mat::zeros(rgb.rows + 2, rgb.cols + 2, CV_8U);
    constexpr int tolerance = static_cast<int>(0.14 * 255);
    constexpr int flags = 4 | 255 << 8 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY;
    const auto seed = [&](int x, int y) {
        if (mask.at<uchar>(y + 1, x + 1) != 0) return;
        const auto& color = rgb.at<cv::Vec3b>(y, x);
        double squared = 0;
        for (int c = 0; c < 3; ++c) squared += std::pow((color[c] - mean[c]) / 255, 2);
        if (std::sqrt(squared / 3) <= 0.14)
            cv::floodFill(rgb, mask, {x, y}, {}, nullptr, cv::Scalar::all(tolerance), cv::Scalar::all(tolerance),
                          flags);
    };
    for (int x = 0; x < rgb.cols; ++x) {
        seed(x, 0);
        seed(x, rgb.rows - 1);
    }
    for (int y = 0; y < rgb.rows; ++y) {
        seed(0, y);
        seed(rgb.cols - 1, y);
    }
    cv::Mat alpha;
    cv::bitwise_not(mask(cv::Rect(1, 1, rgb.cols, rgb.rows)), alpha);
    constexpr int fromTo[] = {0, 3};
    cv::mixChannels(&alpha, 1, &pixels, 1, fromTo, 1);
}

} // namespace

/// [--runs N] [--warm N] [--only TEXT]
int main(int argumentCount, char** arguments) {
    const auto options = benchmark::Rounds::options(argumentCount, arguments);
    const struct {
        const char* name;
        QImage image;
    } pictures[] = {
        {"logo", benchmark::Pictures::noisyLogo(side)}, {"photo", benchmark::Pictures::photo(side)},
        {"comb", benchmark::Mazes::comb(side)},         {"serpentine", benchmark::Mazes::serpentine(side)},
        {"spiral", benchmark::Mazes::spiral(side)},     {"random walls", benchmark::Mazes::randomWalls(side)}};
    for (const auto& [name, image] : pictures) {
        const auto removed = SolidBackgroundRemover::remove(image);
        if (!removed) return 1;
        benchmark::Rounds rounds("flat background, " + std::string(name), options);
        rounds.add("OpenCV floodFill, mask only", [&] { floodFill(image); });
        rounds.add(
            "SolidBackgroundRemover", [&] { (void)SolidBackgroundRemover::remove(image); },
            std::to_string(removed->removedFraction) + " removed");
        rounds.print();
    }
    const auto memory = benchmark::peakMemoryOf([&] { (void)SolidBackgroundRemover::remove(pictures[0].image); });
    std::printf("memory: %.2f bytes a pixel beside the input (the picture and two bits are 4.25)\n",
                (memory.peak - memory.before) / (double(side) * side));
    return 0;
}
