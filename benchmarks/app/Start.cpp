// CPU, wall time and memory from the start of a program to its first frame: a Qt Quick hello, the panel on an empty
// library, and the panel on 100,000 files, also until the shelf's first tiles stand. Needs a display.
//
//     bench_start [runs]
#include <QImage>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Figures {
    double cpu = 0;    ///< seconds, user and system, children included
    double wall = 0;   ///< seconds
    double memory = 0; ///< MiB, the peak of the largest process
};

struct Variant {
    std::string name;
    std::vector<std::string> command;
    std::vector<Figures> runs;
};

Figures measure(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
    arguments.push_back(nullptr);
    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage used{};
    wait4(child, &status, 0, &used);
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - begin;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s ended badly\n", command.front().c_str());
        std::exit(1);
    }
    const auto seconds = [](timeval time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return {seconds(used.ru_utime) + seconds(used.ru_stime), wall.count(), double(used.ru_maxrss) / 1024};
}

double median(const std::vector<Figures>& runs, double Figures::*figure) {
    std::vector<double> values;
    for (const Figures& run : runs) values.push_back(run.*figure);
    std::ranges::nth_element(values, values.begin() + std::ssize(values) / 2);
    return values[values.size() / 2];
}

/// 100,000 pictures in 2,000 collections, as links to a few files, since only names and dates are read.
void makeLibrary(const fs::path& images) {
    std::vector<fs::path> sources;
    for (int i = 0; i < 4; ++i) {
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(QColor::fromHsv(i * 90, 160, 200));
        sources.push_back(images.parent_path() / ("source" + std::to_string(i) + ".bin"));
        image.save(QString::fromStdString(sources.back().string()), "PNG");
    }
    int number = 0;
    for (int folder = 0; folder < 2000; ++folder) {
        const fs::path collection = images / ("Collection " + std::to_string(folder));
        fs::create_directories(collection);
        for (int file = 0; file < 50; ++file, ++number)
            fs::create_hard_link(sources[static_cast<std::size_t>(number % 4)],
                                 collection / ("Picture " + std::to_string(number) + ".png"));
    }
}

} // namespace

int main(int argc, char** argv) {
    const int runs = argc > 1 ? std::atoi(argv[1]) : 7;
    const fs::path here = fs::canonical("/proc/self/exe").parent_path();
    std::string pattern = (fs::temp_directory_path() / "quillary-start-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
    setenv("XDG_CACHE_HOME", (folder / "cache").c_str(), 1);
    fs::create_directories(folder / "full/Quillary/Library/Images");
    makeLibrary(folder / "full/Quillary/Library/Images");

    const std::string hello = here / "hello_quick";
    const std::string panel = here / "panel_until";
    std::vector<Variant> variants = {
        {"Qt Quick hello", {hello}, {}},
        {"panel, empty library, first frame", {panel, folder / "empty", "first"}, {}},
        {"panel, 100,000 files, first frame", {panel, folder / "full", "first"}, {}},
        {"panel, 100,000 files, first tiles", {panel, folder / "full", "tiles"}, {}},
    };
    for (int run = -1; run < runs; ++run)
        for (Variant& variant : variants) {
            const Figures figures = measure(variant.command);
            if (run >= 0) variant.runs.push_back(figures);
        }

    std::printf("%-36s %9s %9s %9s %7s %7s\n", "medians", "CPU s", "wall s", "MiB", "x CPU", "x MiB");
    for (const Variant& variant : variants) {
        const double cpu = median(variant.runs, &Figures::cpu);
        const double memory = median(variant.runs, &Figures::memory);
        std::printf("%-36s %9.3f %9.3f %9.1f %7.2f %7.2f\n", variant.name.c_str(), cpu,
                    median(variant.runs, &Figures::wall), memory, cpu / median(variants[0].runs, &Figures::cpu),
                    memory / median(variants[0].runs, &Figures::memory));
    }
    fs::remove_all(folder);
    return 0;
}
