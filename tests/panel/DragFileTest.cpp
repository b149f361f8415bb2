#include "panel/DragFile.h"
#include "panel/PanelParts.h"
#include "support/Jam.h"
#include "support/SmallFileSystem.h"

#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;
using State = DragFile::State;
using Files = std::vector<fs::path>;

class DragFileTest : public testing::Test, protected PanelParts {
protected:
    DragFile::Maker maker(const QString& name, QColor color = Qt::red) {
        PastedImage image;
        image.image = picture(30, 20, color);
        image.name = name;
        return [image, this](const std::stop_token& stop) {
            return storage.prepare(image, Storage::Folder::recent, {}, stop);
        };
    }
    bool become(State state) {
        return comesTrue([&] { return drag.state() == state; });
    }
    fs::path recent(const char* name) { return root() / "Recent" / name; }
    static QColor colorOf(const fs::path& file) {
        return QImage(QString::fromStdString(file)).pixelColor(1, 1);
    }

    DragFile drag{storage, work};
};

TEST_F(DragFileTest, IsNamedLastAndOnce) {
    EXPECT_EQ(drag.state(), State::idle);
    EXPECT_FALSE(drag.offer());
    drag.prepare(maker(QStringLiteral("logo")));
    EXPECT_EQ(drag.state(), State::encoding);
    ASSERT_TRUE(become(State::ready));
    EXPECT_TRUE(fs::is_empty(root() / "Recent"));
    const QSignalSpy changed(&drag, &DragFile::fileChanged);
    const auto files = drag.offer();
    EXPECT_EQ(drag.state(), State::named);
    EXPECT_EQ(drag.file(), recent("logo.png"));
    EXPECT_EQ(files(), Files{recent("logo.png")});
    EXPECT_EQ(drag.offer()(), Files{recent("logo.png")}) << "the same for the next drag";
    fs::remove(recent("logo.png"));
    EXPECT_EQ(drag.offer()(), Files{recent("logo.png")}) << "made again when it is gone";
    drag.discard();
    EXPECT_EQ(drag.state(), State::idle);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(files(), Files{recent("logo.png")}) << "a receiver that is slow";
}

TEST_F(DragFileTest, BelongsToThePictureOfTheDragsFirstMoment) {
    DragFile::Files red;
    DragFile::Files blue;
    {
        const Jam jam(work);
        drag.prepare(maker(QStringLiteral("red")));
        drag.prepare(maker(QStringLiteral("void"), Qt::yellow));
        drag.prepare(maker(QStringLiteral("red")));
        red = drag.offer();
        drag.prepare(maker(QStringLiteral("blue"), Qt::blue));
        blue = drag.offer();
        drag.discard();
        EXPECT_EQ(drag.state(), State::idle);
    }
    // One asks while the other still waits.
    Files inner;
    QTimer::singleShot(0, &drag, [&] { inner = red(); });
    EXPECT_EQ(blue(), Files{recent("blue.png")});
    ASSERT_TRUE(comesTrue([&] { return !inner.empty(); }));
    EXPECT_EQ(inner, Files{recent("red.png")});
    EXPECT_EQ(colorOf(recent("red.png")), QColor(Qt::red));
    EXPECT_EQ(colorOf(recent("blue.png")), QColor(Qt::blue));
    EXPECT_FALSE(fs::exists(recent("void.png")));
    EXPECT_EQ(drag.file(), std::nullopt);
}

TEST_F(DragFileTest, TheEventLoopRunsWhileAReceiverWaits) {
    auto jam = std::make_unique<Jam>(work);
    drag.prepare(maker(QStringLiteral("late")));
    const auto files = drag.offer();
    bool ran = false;
    QTimer::singleShot(0, &drag, [&] {
        ran = true;
        jam.reset();
    });
    EXPECT_EQ(files(), Files{recent("late.png")});
    EXPECT_TRUE(ran);
}

TEST_F(DragFileTest, TellsWhoeverWaitsForItsName) {
    std::vector<fs::path> told;
    const auto tell = [&](const fs::path& file) { told.push_back(file); };
    drag.whenNamed(tell);
    drag.prepare(maker(QStringLiteral("a")));
    drag.whenNamed(tell);
    EXPECT_TRUE(told.empty());
    drag.prepare(maker(QStringLiteral("b")));
    ASSERT_TRUE(comesTrue([&] { return told.size() == 1; }));
    ASSERT_TRUE(become(State::ready));
    drag.whenNamed(tell);
    EXPECT_EQ(told, (Files{recent("a.png"), recent("b.png")}));
}

TEST_F(DragFileTest, ListenersHearOfEveryFileThatWasMade) {
    std::vector<bool> heard;
    const auto listen = [&](const fs::path& readable) { heard.push_back(fs::file_size(readable) > 0); };
    drag.prepare(maker(QStringLiteral("a")), listen);
    drag.prepare(maker(QStringLiteral("b")));
    drag.discard();
    EXPECT_TRUE(comesTrue([&] { return heard == std::vector{true}; }));
    drag.prepare([](const std::stop_token&) { return std::unexpected(StorageError::noRoot()); },
                 [&](const fs::path& readable) { heard.push_back(!readable.empty()); });
    EXPECT_TRUE(comesTrue([&] { return heard.size() == 2; }));
    EXPECT_FALSE(heard.back());
}

TEST_F(DragFileTest, AFailureIsToldToWhoeverAskedAndTriedAgain) {
    const SmallFileSystem full("tmpfs", "size=64k");
    if (!full.problem().empty()) GTEST_SKIP() << full.problem();
    Storage small(store, bookmarks, desktop, full.path());
    DragFile here(small, work);
    QSignalSpy failed(&here, &DragFile::failed);
    PastedImage noise;
    noise.image = picture(300, 300);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 300; ++x) noise.image.setPixel(x, y, qRgb(x * y * 7, x * x + y, y * y * 3 + x));
    noise.name = QStringLiteral("noise");
    ASSERT_TRUE(small.root());
    const auto filler = full / "filler";
    writeFile(filler, std::string(60 * 1024, 'x'));
    here.prepare([&](const std::stop_token& stop) {
        return small.prepare(noise, Storage::Folder::recent, {}, stop);
    });
    ASSERT_TRUE(comesTrue([&] { return here.state() == State::idle; }));
    EXPECT_EQ(failed.count(), 0) << "nobody has asked";
    const auto files = here.offer();
    EXPECT_TRUE(files().empty());
    ASSERT_EQ(failed.count(), 1);
    EXPECT_EQ(failed.front().front().toString(), QStringLiteral("Could not write noise.png: No space left on device"));
    EXPECT_TRUE(files().empty()) << "asked once more by the same drag";
    EXPECT_EQ(failed.count(), 1);
}

} // namespace

} // namespace quillary::test
