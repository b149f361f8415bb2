#include "cutout/subject/SubjectModule.h"

#include <algorithm>
#include <cmath>
#include <opencv2/dnn.hpp>
#include <opencv2/imgproc.hpp>
#include <optional>

namespace quillary::subject {

namespace {

constexpr int usualSide = 320;
const cv::Scalar usualMean(0.485, 0.456, 0.406);
const cv::Scalar usualDeviation(0.229, 0.224, 0.225);
constexpr double leastArea = 0.002;

/// One line of what the library says, without where in itself it says so.
std::string messageOf(const cv::Exception& error) {
    std::string text = error.err.empty() ? error.what() : error.err;
    return text.substr(0, text.find('\n'));
}

/// The plane of the output that holds the mask: one of its rows and columns, whatever stands before them.
std::optional<cv::Mat_<float>> planeOf(const cv::Mat& output) {
    if (output.depth() != CV_32F || output.dims < 2) return {};
    const int rows = output.size[output.dims - 2];
    const int columns = output.size[output.dims - 1];
    if (rows < 2 || columns < 2) return {};
    // With several planes the last is the subject's: the usual order is background, subject.
    const std::size_t planes = output.total() / (static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    const float* data =
        output.ptr<float>() + (planes - 1) * static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns);
    return cv::Mat_<float>(rows, columns, const_cast<float*>(data)).clone();
}

/// Values that are not yet between 0 and 1 are taken for logits.
void toCoverage(cv::Mat_<float>& plane) {
    double least = 0;
    double largest = 0;
    cv::minMaxLoc(plane, &least, &largest);
    if (least >= 0 && largest <= 1) return;
    for (float& value : plane) value = 1 / (1 + std::exp(-value));
}

class ModelEngine : public Engine {
public:
    explicit ModelEngine(cv::dnn::Net net) : m_net(std::move(net)) {}

    Outcome findSubject(const Picture& picture, std::uint8_t* mask, std::size_t maskStride, const std::stop_token& stop,
                        std::string& reason) override {
        try {
            const cv::Mat pixels(picture.height, picture.width, CV_8UC4, const_cast<std::uint8_t*>(picture.pixels),
                                 picture.stride);
            cv::Mat small;
            cv::resize(pixels, small, {usualSide, usualSide}, 0, 0, cv::INTER_AREA);
            cv::cvtColor(small, small, cv::COLOR_RGBA2RGB);
            cv::Mat unit;
            small.convertTo(unit, CV_32FC3, 1 / 255.0);
            cv::subtract(unit, usualMean, unit);
            cv::divide(unit, usualDeviation, unit);
            m_net.setInput(cv::dnn::blobFromImage(unit));
            auto plane = planeOf(m_net.forward());
            if (stop.stop_requested()) return Outcome::stopped;
            if (!plane) {
                reason = "it gives no mask";
                return Outcome::failed;
            }
            toCoverage(*plane);
            if (cv::countNonZero(*plane > 0.5F) < leastArea * static_cast<double>(plane->total()))
                return Outcome::noSubject;
            plane->convertTo(small, CV_8U, 255);
            cv::Mat out(picture.height, picture.width, CV_8U, mask, maskStride);
            cv::resize(small, out, out.size(), 0, 0, cv::INTER_CUBIC);
        } catch (const cv::Exception& error) {
            reason = messageOf(error);
            return Outcome::failed;
        } catch (const std::exception& error) {
            reason = error.what();
            return Outcome::failed;
        }
        return stop.stop_requested() ? Outcome::stopped : Outcome::found;
    }

private:
    cv::dnn::Net m_net;
};

} // namespace

} // namespace quillary::subject

extern "C" [[gnu::visibility("default")]] quillary::subject::Engine* quillarySubjectEngine(const char* modelFile,
                                                                                           std::string* reason) {
    try {
        // What cannot be read is told through `reason`; the library's own report would go to standard error.
        cv::redirectError([](int, const char*, const char*, const char*, int, void*) { return 0; });
        return new quillary::subject::ModelEngine(cv::dnn::readNetFromONNX(modelFile));
    } catch (const cv::Exception& error) {
        *reason = quillary::subject::messageOf(error);
    } catch (const std::exception& error) {
        *reason = error.what();
    }
    return nullptr;
}
