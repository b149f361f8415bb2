// What scrolling over many images or sounds costs the main thread, frame by frame, and what the panel occupies
// meanwhile: bench_scroll [images|sounds|longest] [how many], where the longest are sounds by length
#include "samples/Media.h"
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
        // Through an object of its own: the window outlives what counts its frames.
        QObject::connect(&stage.window, &QQuickWindow::frameSwapped, &m_counting, [this] { ++m_swapped; });
    }

    /// The work for the frame after a jump to this height, what else waits on the main thread included.
    void jump(double to) {
        const int before = m_swapped;
        const double start = worked();
        m_grid.setProperty("contentY", to);
        quillary::test::comesTrue([&] { return m_swapped > before; });
        // As an event loop of the program's own does.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_work.push_back(worked() - start);
    }
    /// A jump that does not count: what stands elsewhere than in the frame before is made anew.
    void begin(double at) {
        jump(at);
        m_work.clear();
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
    QObject m_counting;
    std::vector<double> m_work;
};

void list(PanelStage& stage, PanelModel::LibraryKind kind, const quillary::Shelf& shelf, int files) {
    stage.model.setTab(PanelModel::Tab::library);
    stage.model.setLibraryKind(kind);
    stage.model.refreshShelves();
    quillary::test::comesTrue([&] { return shelf.count() == files; });
}

QQuickItem* gridOf(PanelStage& stage) {
    // Pages that were shown before stay.
    for (auto* grid : stage.view->findChildren<QQuickItem*>(QStringLiteral("tiles")))
        if (grid->isVisible()) return grid;
    return nullptr;
}

void images(PanelStage& stage, int files) {
    fill(stage.root() / "Library/Images", files);
    list(stage, PanelModel::LibraryKind::images, *stage.model.imagesShelf(), files);
    quillary::test::wait(1500);
    auto* const grid = gridOf(stage);
    if (!grid) return;
    std::printf("%d images, resident %.0f MiB as the shelf stands\n", files, occupied("VmRSS"));
    Frames frames(stage, *grid);
    for (int step = 1; step <= 400; ++step) frames.jump(step * 24.0);
    frames.tell("a row every fourth frame");
    for (int step = 1; step <= 400; ++step) frames.jump(9'600 + step * 200.0);
    frames.tell("two rows a frame");
    std::mt19937 random(1);
    std::uniform_real_distribution<> anywhere(0, grid->property("contentHeight").toDouble() - grid->height());
    for (int step = 0; step < 100; ++step) frames.jump(anywhere(random));
    frames.tell("jumps");
}

/// Scrolls from top to bottom over and over for as long as lengths are being read, at most so many frames.
void scrollWhileReading(PanelStage& stage, const char* what, double step) {
    AudioShelf& shelf = *stage.model.audioShelf();
    auto* const grid = gridOf(stage);
    if (!grid) return;
    Frames frames(stage, *grid);
    frames.begin(0);
    int count = 0;
    constexpr int most = 4000;
    for (double at = 0; count < most && (count < 200 || shelf.durationsRemaining() > 0); ++count) {
        const double end = grid->property("contentHeight").toDouble() - grid->height();
        at = at + step > end ? 0 : at + step;
        frames.jump(at);
    }
    std::printf("%5d frames, %d lengths left: ", count, shelf.durationsRemaining());
    frames.tell(what);
}

void sounds(PanelStage& stage, AudioShelf::AudioSort sort, int files) {
    const auto folder = stage.root() / "Library/Audio";
    std::filesystem::create_directories(folder);
    // Compressed ones without a table, so that their lengths take a while.
    const auto original = folder / "Sound 0.mp3";
    test::encode(original, test::SoundFile{"mp3", "libmp3lame", test::Pcm{44100, 2, 44100 * 60}, {{"write_xing", "0"}}},
                 test::wobblingTone(300, 44100));
    for (int i = 1; i < files; ++i)
        std::filesystem::create_hard_link(original, folder / ("Sound " + std::to_string(i) + ".mp3"));
    AudioShelf& shelf = *stage.model.audioShelf();
    shelf.setAudioSort(sort);
    list(stage, PanelModel::LibraryKind::audio, shelf, files);
    quillary::test::comesTrue([&] { return shelf.durationsRemaining() > 0; });
    scrollWhileReading(stage, "lengths being read", 24);
    quillary::test::comesTrue([&] { return shelf.durationsRemaining() == 0; });
    scrollWhileReading(stage, "two rows a frame, at rest", 92);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    const std::string kind = argc > 1 ? argv[1] : "images";
    PanelStage stage;
    if (!stage.show({380, 460})) return 1;
    const bool longest = kind == "longest";
    if (kind == "sounds" || longest)
        sounds(stage, longest ? AudioShelf::AudioSort::longest : AudioShelf::AudioSort::recent,
               argc > 2 ? std::stoi(argv[2]) : 10'000);
    else
        images(stage, argc > 2 ? std::stoi(argv[2]) : 50'000);
    std::printf("resident %.0f MiB in the end, at most %.0f MiB\n", occupied("VmRSS"), occupied("VmHWM"));
    return 0;
}
