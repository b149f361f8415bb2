// What scrolling over many images costs the main thread, frame by frame, and what the panel occupies meanwhile:
// bench_scroll [images]
#include "ui/PanelStage.h"

#include <QGuiApplication>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <random>
#include <string>

using namespace quillary;
using quillary::test::PanelStage;

namespace {

constexpr int imagesInAFolder = 500;

/// Milliseconds that this thread has worked.
double worked() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

/// In MiB, of one line of the process's status.
double occupied(const std::string& line) {
    std::ifstream status("/proc/self/status");
    for (std::string text; std::getline(status, text);)
        if (text.starts_with(line + ':')) return std::stod(text.substr(line.size() + 1)) / 1024;
    return 0;
}

void fill(const std::filesystem::path& shelf, int images) {
    QImage picture(96, 64, QImage::Format_RGB32);
    picture.fill(QColor(0x388ADE));
    std::filesystem::path original;
    for (int i = 0; i < images; ++i) {
        const auto folder = shelf / ("Collection " + std::to_string(i / imagesInAFolder));
        const auto file = folder / ("Frame " + std::to_string(i) + ".png");
        if (i % imagesInAFolder == 0) {
            std::filesystem::create_directories(folder);
            original = file;
            picture.save(QString::fromStdString(original.string()));
        } else {
            std::filesystem::create_hard_link(original, file);
        }
    }
}

class Frames {
public:
    Frames(PanelStage& stage, QQuickItem& grid) : m_stage(stage), m_grid(grid) {
        QObject::connect(&stage.window, &QQuickWindow::frameSwapped, [this] { ++m_swapped; });
    }

    /// The work for the frame after a jump to this height, what else waits on the main thread included.
    void jump(double to) {
        const int before = m_swapped;
        const double start = worked();
        m_grid.setProperty("contentY", to);
        PanelStage::comesTrue([&] { return m_swapped > before; });
        // As an event loop of the program's own does.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_work.push_back(worked() - start);
    }
    void tell(const char* what) {
        std::ranges::sort(m_work);
        const auto at = [&](double part) {
            return m_work[static_cast<std::size_t>(part * static_cast<double>(m_work.size() - 1))];
        };
        std::printf("%-28s median %5.2f ms   95 %% %5.2f ms   worst %5.2f ms\n", what, at(0.5), at(0.95), at(1));
        m_work.clear();
    }

private:
    PanelStage& m_stage;
    QQuickItem& m_grid;
    int m_swapped = 0;
    std::vector<double> m_work;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    const int images = argc > 1 ? std::stoi(argv[1]) : 50'000;
    PanelStage stage;
    fill(*stage.storage.root() / "Library/Images", images);
    stage.model.setTab(PanelModel::Tab::library);
    if (!stage.show({380, 460})) return 1;
    stage.model.refreshShelves();
    PanelStage::comesTrue([&] { return stage.model.imagesShelf()->count() == images; });
    PanelStage::wait(1500);
    auto* grid = stage.root->findChild<QQuickItem*>(QStringLiteral("tiles"));
    if (!grid) return 1;

    std::printf("%d images, resident %.0f MiB as the shelf stands\n", images, occupied("VmRSS"));
    Frames frames(stage, *grid);
    for (int step = 1; step <= 400; ++step) frames.jump(step * 24.0);
    frames.tell("a row every fourth frame");
    for (int step = 1; step <= 400; ++step) frames.jump(9'600 + step * 200.0);
    frames.tell("two rows a frame");
    std::mt19937 random(1);
    std::uniform_real_distribution<> anywhere(0, grid->property("contentHeight").toDouble() - grid->height());
    for (int step = 0; step < 100; ++step) frames.jump(anywhere(random));
    frames.tell("jumps");
    std::printf("resident %.0f MiB in the end, at most %.0f MiB\n", occupied("VmRSS"), occupied("VmHWM"));
    return 0;
}
