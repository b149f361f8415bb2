#include "cutout/MatteRefiner.h"
#include "cutout/TouchUp.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

using namespace quillary;

namespace {

constexpr int side = 4096;
constexpr QSize previewSize(760, 560);

/// The rival, at an amount of 1: the same three steps on the whole picture.
void erodeBlurMultiply(const QImage& image) {
    QImage result(image.size(), image.format());
    const cv::Mat in(image.height(), image.width(), CV_8UC4, const_cast<uchar*>(image.constBits()));
    cv::Mat out(result.height(), result.width(), CV_8UC4, result.bits());
    cv::Mat alpha;
    cv::Mat eroded;
    cv::Mat soft;
    cv::extractChannel(in, alpha, 3);
    cv::erode(alpha, eroded, cv::getStructuringElement(cv::MORPH_ELLIPSE, {11, 11}), {-1, -1}, 1, cv::BORDER_REPLICATE);
    cv::GaussianBlur(eroded, soft, {0, 0}, 0.75);
    const cv::Mat channels[] = {soft, soft, soft, soft};
    cv::Mat factors;
    cv::merge(channels, 4, factors);
    cv::multiply(in, factors, out, 1 / 255.0);
}

} // namespace

/// [--runs N] [--warm N] [--only TEXT]
int main(int argumentCount, char** arguments) {
    const auto options = benchmark::Rounds::options(argumentCount, arguments);
    const QImage cutOut = benchmark::Pictures::cutOut(side).convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    benchmark::Rounds full("matte refinement, 4096 x 4096", options);
    full.add("OpenCV erode + blur + multiply", [&] { erodeBlurMultiply(cutOut); });
    full.add("MatteRefiner::refine 1.0", [&] { MatteRefiner::refine(cutOut, 1); });
    full.add(
        "MatteRefiner::refine 0.5", [&] { MatteRefiner::refine(cutOut, 0.5); }, "two discs");
    const MatteRefiner::Matte matte(cutOut);
    full.add("Matte::refined, edges known", [&] { (void)matte.refined(5); });
    full.print();

    const QImage small = cutOut.scaled(previewSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const MatteRefiner::Matte preview(small);
    benchmark::Rounds slider("slider step, 760 x 560", options);
    slider.add("OpenCV erode + blur + multiply", [&] { erodeBlurMultiply(small); });
    slider.add("Matte::refined 4.5", [&] { (void)preview.refined(4.5); });
    slider.print();

    const QImage picture = benchmark::Pictures::flatLogo(side);
    const QImage base = Cutout::remove(picture, Cutout::Method::solid)->image;
    const QImage refined = MatteRefiner::refine(base, MatteRefiner::usualAmount);
    benchmark::Rounds touches("touches, 4096 x 4096", options);
    touches.add("MatteRefiner::refine 0.3", [&] { MatteRefiner::refine(base, MatteRefiner::usualAmount); });
    touches.add("TouchUp::cleanEdge", [&] { TouchUp::cleanEdge(picture, base, refined); });
    touches.add("enclosed areas", [&] { TouchUp::base(picture, base, Cutout::Method::solid, {.enclosed = true}); });
    touches.add("TouchUp::visibleFrame", [&] { TouchUp::visibleFrame(refined); });
    touches.print();
    return 0;
}
