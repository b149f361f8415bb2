/// How much memory the intake of an 8192 × 8192 picture takes at its peak, as a multiple of its pixels at four bytes
/// each. Goal: at most 3, what the process needs without a picture left out. The documents' own process is not counted.
///
///     bench_memory

#include "imaging/ImageIntake.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>

int main(int argumentCount, char** arguments) {
    using namespace quillary;
    using namespace quillary::benchmark;
    const QCoreApplication application(argumentCount, arguments);
    constexpr int side = 8192;
    constexpr double pixels = 4.0 * side * side;
    const QTemporaryDir folder;
    const auto path = [&folder](const char* name) { return folder.filePath(QString::fromLatin1(name)); };

    // Made in a child too, so that nothing of it is left in this process.
    peakMemoryOf([&] {
        const QImage picture = Pictures::flatLogo(side);
        picture.save(path("rgba.png"));
        const QImage opaque = picture.convertToFormat(QImage::Format_RGB32);
        opaque.save(path("rgb.png"));
        opaque.save(path("photo.jpg"));
        opaque.save(path("plain.bmp"));
    });
    std::printf("%-12s %12s %12s %8s\n", "file", "before MiB", "peak MiB", "x pixels");
    for (const char* name : {"rgba.png", "rgb.png", "photo.jpg", "plain.bmp"}) {
        bool read = false;
        const PeakMemory memory = peakMemoryOf([&] {
            read = ImageIntake::read(std::filesystem::path(path(name).toStdString()), side).has_value();
            if (!read) std::printf("%s could not be read\n", name);
        });
        constexpr double mebibyte = 1 << 20;
        std::printf("%-12s %12.0f %12.0f %8.2f\n", name, memory.before / mebibyte, memory.peak / mebibyte,
                    (memory.peak - memory.before) / pixels);
    }
}
