// What a hand feels, as wall time of the whole program: the panel in a window on an X server, other processes as owner of
// the clipboard and as receiver of drags, a sound server with a sink that nobody hears. Needs a display, xdotool, and for
// the sound pulseaudio:
//
//     python3 tests/support/desktop/session.py --size 1200x700 -- build/release/bench_felt [rounds]
//
// Each line tells median and 95 %, in milliseconds. "Main thread" is the longest stretch without a turn of the event
// loop, as wall time and as processor time of that thread.
#include "Driver.h"
#include "support/Pictures.h"
#include "support/Rounds.h"

#include <QPainter>
#include <fstream>

namespace quillary::benchmark {

namespace {

constexpr QSize large{4000, 3000};
constexpr int sounds = 200;
constexpr int images = 10'000;

/// Twelve megapixels as they come from a camera, on a ground that can be cut out: red in the middle, white at the edge.
QImage largePicture() {
    QImage image(large, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QImage photo = Pictures::photo(2400);
    painter.drawImage((large.width() - photo.width()) / 2, (large.height() - photo.height()) / 2, photo);
    painter.fillRect(QRect(QPoint(), large / 8).translated(large.width() * 7 / 16, large.height() * 7 / 16), Qt::red);
    return image;
}

void fillLibrary(const std::filesystem::path& library) {
    QImage picture(96, 64, QImage::Format_RGB32);
    picture.fill(QColor(0x388ADE));
    const auto shelf = library / "Library/Images";
    std::filesystem::create_directories(shelf);
    const auto original = shelf / "Frame 0.png";
    picture.save(QString::fromStdString(original));
    for (int i = 1; i < images; ++i)
        std::filesystem::create_hard_link(original, shelf / ("Frame " + std::to_string(i) + ".png"));
    // A second of a tone of 16 bits at 48 kHz.
    const auto folder = library / "Library/Audio";
    std::filesystem::create_directories(folder);
    std::string samples;
    for (int i = 0; i < 48'000; ++i) {
        const int value = i / 50 % 2 == 0 ? 12'000 : -12'000;
        samples += {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
    }
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i) text += static_cast<char>((value >> (8 * i)) & 0xFF);
        return text;
    };
    const std::string wave = "RIFF" + number(36 + 96'000, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) +
                             number(1, 2) + number(48'000, 4) + number(96'000, 4) + number(2, 2) + number(16, 2) +
                             "data" + number(96'000, 4) + samples;
    for (int i = 0; i < sounds; ++i)
        std::ofstream(folder / ("Sound " + std::to_string(i) + ".wav"), std::ios::binary) << wave;
}

class Felt {
public:
    Felt(Driver& driver, std::filesystem::path folder, int rounds)
        : m_driver(driver), m_folder(std::move(folder)), m_rounds(rounds) {}

    void run() {
        const QImage picture = largePicture();
        for (const char* format : {"png", "jpeg"})
            picture.save(QString::fromStdString(m_folder / "large.") + QLatin1String(format), format, 90);
        // The clipboard's picture, then the cut-out of it, then a drag at once after each.
        for (int round = 0; round < m_rounds; ++round) {
            stage("jpeg", "paste of 12 megapixels, JPEG, to the picture");
            m_driver.settle();
            stage("png", "paste of 12 megapixels, PNG, to the picture");
            drag("drag at once after that paste");
            removeBackground();
            slide();
            drag("drag at once after the slider");
            m_driver.settle();
            drag("drag a while after that");
            browse();
        }
        listen();
    }

private:
    void stage(const char* format, const char* what) {
        m_driver.model().clear();
        m_driver.ownClipboard(QStringLiteral("image/%1=%2")
                                  .arg(QLatin1String(format), QString::fromStdString(m_folder / "large.") +
                                                                  QLatin1String(format)));
        m_driver.settle();
        const Watch watch;
        m_driver.key(Qt::Key_V, Qt::ControlModifier);
        require(m_driver.screenBecomes(&Driver::middleOfStage,
                                       [](QColor color) { return color.red() > 200 && color.green() < 90; }),
                "the picture comes");
        m_driver.note(what, watch);
    }

    void drag(const char* what) {
        const Driver::Drop drop = m_driver.dragOut(m_driver.middleOfStage());
        m_driver.note(what, drop.mainThread, ": main thread");
        m_driver.note(what, drop.fromRelease, ": release to the file elsewhere");
        m_driver.note(what, {drop.mainThread.processor, 0}, ": main thread, processor");
    }

    void removeBackground() {
        const Watch watch;
        m_driver.model().removeBackground(PanelModel::CutoutMethod::solid);
        const auto white = [](QColor color) { return color.lightness() > 250; };
        require(m_driver.screenBecomes(&Driver::edgeOfStage, [&](QColor color) { return !white(color); }),
                "the ground goes");
        m_driver.note("Remove Background, flat, to the picture", watch);
        m_driver.settle();
    }

    /// As a slider that is moved quickly: a step a frame.
    void slide() {
        PanelModel& model = m_driver.model();
        for (int step = 1; step <= 20; ++step) {
            const Blocked blocked;
            const Watch watch;
            model.setEdgeRefine(step % 2 == 0 ? 0.3 : 0.3 + step * 0.02);
            m_driver.nextFrame();
            m_driver.note("slider step to the next frame", watch);
            m_driver.note("slider step", blocked.longest(), ": main thread");
        }
    }

    void browse() {
        PanelModel& model = m_driver.model();
        for (const auto tab : {PanelModel::Tab::library, PanelModel::Tab::intake, PanelModel::Tab::library}) {
            const Watch watch;
            model.setTab(tab);
            m_driver.nextFrame();
            m_driver.note("tab change to the next frame", watch);
            m_driver.settle();
        }
        Shelf& shelf = *model.imagesShelf();
        require(m_driver.comesTrue([&] { return shelf.count() >= images; }), "the shelf is listed");
        m_driver.focusSearch();
        for (const Qt::Key key : {Qt::Key_7, Qt::Key_7, Qt::Key_Backspace, Qt::Key_Backspace}) {
            const int before = shelf.visibleModel()->count();
            const Watch watch;
            m_driver.key(key);
            require(m_driver.comesTrue([&] { return shelf.visibleModel()->count() != before; }), "the list changes");
            m_driver.nextFrame();
            m_driver.note("search keystroke to the list, 10,000 files", watch);
        }
        m_driver.key(Qt::Key_Escape);
        model.setTab(PanelModel::Tab::intake);
        m_driver.settle();
    }

    void listen() {
        if (!m_driver.hearsSound()) return;
        PanelModel& model = m_driver.model();
        model.setTab(PanelModel::Tab::library);
        model.setLibraryKind(PanelModel::LibraryKind::audio);
        AudioShelf& shelf = *model.audioShelf();
        require(m_driver.comesTrue([&] { return shelf.count() == sounds; }), "the sounds are listed");
        m_driver.settle();
        m_driver.focusTiles();
        for (int round = 0; round < m_rounds * 3; ++round) {
            m_driver.key(Qt::Key_Down);
            m_driver.silence();
            const Watch watch;
            m_driver.key(Qt::Key_Space);
            m_driver.waitForSound();
            m_driver.note("sound key to sound", watch);
            m_driver.key(Qt::Key_Space);
        }
    }

    Driver& m_driver;
    const std::filesystem::path m_folder;
    const int m_rounds;
};

} // namespace

} // namespace quillary::benchmark

int main(int argc, char** argv) {
    using namespace quillary::benchmark;
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
    std::string pattern = (std::filesystem::temp_directory_path() / "quillary-felt-XXXXXX").string();
    const std::filesystem::path folder = mkdtemp(pattern.data());
    fillLibrary(folder / "library/Quillary");
    const int status = Driver::run(argc, argv, folder, [&](Driver& driver) { Felt(driver, folder, rounds).run(); });
    std::filesystem::remove_all(folder);
    return status;
}
