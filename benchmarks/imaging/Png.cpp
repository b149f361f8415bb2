/// PNG from memory to memory, 4096 × 4096 RGBA, against QImage::save. Goals: size at most 1.10 on each picture, at a
/// share of the processor time of 0.06 (photo), 0.12 (noisy logo), 0.20 (flat logo), 0.20 (cut-out).
///
///     bench_png [SIDE] [--runs N] [--warm N] [--only TEXT]

#include "imaging/PngEncoder.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <QBuffer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

QByteArray savedByToolkit(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

int main(int argumentCount, char** arguments) {
    using namespace quillary;
    using namespace quillary::benchmark;
    const int side = argumentCount > 1 && std::atoi(arguments[1]) > 0 ? std::atoi(arguments[1]) : 4096;
    const struct {
        const char* name;
        QImage (*make)(int);
        double goal;
    } pictures[] = {{"photo", &Pictures::photo, 0.06},
                    {"noisy near-white logo", &Pictures::noisyLogo, 0.12},
                    {"flat logo", &Pictures::flatLogo, 0.20},
                    {"cut-out", &Pictures::cutOut, 0.20}};
    for (const auto& picture : pictures) {
        const QImage image = picture.make(side);
        const QByteArray theirs = savedByToolkit(image);
        const QByteArray ours = pngData(image);
        if (QImage::fromData(ours, "PNG").convertToFormat(image.format()) != image) std::printf("WRONG PIXELS\n");

        Rounds rounds(std::string("PNG, ") + picture.name, Rounds::options(argumentCount, arguments));
        const auto size = [](const QByteArray& png) { return std::to_string(png.size()) + " bytes"; };
        rounds.add(
            "QImage::save", [&] { savedByToolkit(image); }, size(theirs));
        rounds.add(
            "pngData", [&] { pngData(image); }, size(ours));
        rounds.print();
        std::printf("size %.3f (goal 1.10), processor goal %.2f\n\n",
                    static_cast<double>(ours.size()) / static_cast<double>(theirs.size()), picture.goal);
    }
}
