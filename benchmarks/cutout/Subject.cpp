#include "cutout/BackgroundRemover.h"
#include "cutout/Scenes.h"
#include "support/Rounds.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <optional>

using namespace quillary;

namespace {

using Bytes = cv::Mat_<uchar>;

Bytes matrix(const QImage& mask) {
    return Bytes(mask.height(), mask.width(), const_cast<uchar*>(mask.constBits()),
                 static_cast<std::size_t>(mask.bytesPerLine()))
        .clone();
}

Bytes outline(const Bytes& solid) {
    Bytes inner;
    cv::erode(solid, inner, cv::Mat(), {-1, -1}, 1, cv::BORDER_REPLICATE);
    return Bytes(solid & ~inner);
}

/// The mean distance of the points of one outline to the other, in pixels.
double meanDistance(const Bytes& from, const Bytes& to) {
    cv::Mat_<float> distance;
    const Bytes away(~to);
    cv::distanceTransform(away, distance, cv::DIST_L2, 5);
    return cv::mean(distance, from)[0];
}

struct Score {
    double overlap = 0; ///< intersection over union
    double edge = 0;    ///< mean distance between the outlines, in thousandths of the longer side
    double growth = 0;  ///< of the area: found to true, less 1
};

Score scoreOf(const QImage& found, const QImage& truth) {
    const Bytes a(matrix(found) >= 128);
    const Bytes b(matrix(truth) >= 128);
    const double united = cv::countNonZero(a | b);
    Score score;
    score.overlap = united > 0 ? cv::countNonZero(a & b) / united : 1;
    const Bytes edgeA = outline(a);
    const Bytes edgeB = outline(b);
    const double longer = std::max(a.rows, a.cols);
    score.edge =
        cv::countNonZero(a) == 0 ? 100 : 500 * (meanDistance(edgeA, edgeB) + meanDistance(edgeB, edgeA)) / longer;
    score.growth = cv::countNonZero(a) / std::max(1.0, double(cv::countNonZero(b))) - 1;
    return score;
}

const char* valueOf(const char* option, int count, char** arguments) {
    for (int i = 1; i + 1 < count; ++i)
        if (std::strcmp(arguments[i], option) == 0) return arguments[i + 1];
    return nullptr;
}

} // namespace

/// [--scenes N] of each class, 8 unless told · [--first N] leaves out those before · [--class TEXT] only classes whose
/// name contains it
/// [--model FILE] an ONNX model instead of image processing
/// [--pictures FOLDER] writes scenes and cut-outs there · [--runs N] of the 12-megapixel timing
int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    const char* const scenes = valueOf("--scenes", argumentCount, arguments);
    const char* const model = valueOf("--model", argumentCount, arguments);
    const char* const pictures = valueOf("--pictures", argumentCount, arguments);
    const char* const firstScene = valueOf("--first", argumentCount, arguments);
    const int first = firstScene ? std::atoi(firstScene) : 0;
    const char* const only = valueOf("--class", argumentCount, arguments);
    const int count = scenes ? std::atoi(scenes) : 8;
    auto masker = model ? modelSubjectMasker(model) : classicalSubjectMasker();
    if (!masker) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(masker.error()));
        return 1;
    }

    std::printf("%-24s %8s %10s %12s %10s %8s\n", "scenes with a subject", "mean IoU", "worst IoU", "edge 1/1000",
                "growth", "missed");
    double total = 0;
    int subjects = 0;
    int falseAlarms = 0;
    int empty = 0;
    for (const auto& kind : benchmark::Scenes::classes()) {
        if (only && kind.name.find(only) == std::string::npos) continue;
        double overlap = 0;
        double worst = 1;
        double edge = 0;
        double growth = 0;
        int missed = 0;
        int alarms = 0;
        for (int i = 0; i < count; ++i) {
            const auto scene = benchmark::Scenes::make(kind, first + i);
            auto found = (*masker)->mask(scene.picture, {});
            if (!found) {
                std::fprintf(stderr, "%s\n", qUtf8Printable(found.error()));
                return 1;
            }
            if (pictures) {
                const QString name = QString::fromLocal8Bit(pictures) + QLatin1Char('/') +
                                     QString::fromStdString(kind.name).replace(QLatin1Char(' '), QLatin1Char('-')) +
                                     QString::number(i);
                scene.picture.save(name + QStringLiteral(".png"));
                if (*found) (**found).save(name + QStringLiteral("-mask.png"));
            }
            if (!kind.hasSubject) {
                alarms += found->has_value();
                continue;
            }
            if (!*found) ++missed;
            const Score score = *found ? scoreOf(**found, scene.mask) : Score{.edge = 100};
            overlap += score.overlap;
            worst = std::min(worst, score.overlap);
            edge += score.edge;
            growth += score.growth;
        }
        if (kind.hasSubject) {
            std::printf("%-24s %8.3f %10.3f %12.1f %9.1f%% %8d\n", kind.name.c_str(), overlap / count, worst,
                        edge / count, 100 * growth / count, missed);
            total += overlap;
            subjects += count;
        } else {
            if (falseAlarms == 0 && empty == 0)
                std::printf("all %30.3f\n\nscenes without a subject: a subject was seen in\n", total / subjects);
            std::printf("%-24s %d of %d\n", kind.name.c_str(), alarms, count);
            falseAlarms += alarms;
            empty += count;
        }
    }
    std::printf("all %22d of %d\n\n", falseAlarms, empty);

    const auto large = benchmark::Scenes::make(benchmark::Scenes::classes().at(1), 0, 4000);
    benchmark::Rounds rounds("subject, 12 megapixels", benchmark::Rounds::options(argumentCount, arguments));
    rounds.add("BackgroundRemover", [&] { (void)BackgroundRemover::remove(large.picture, **masker); });
    rounds.print();
    return 0;
}
