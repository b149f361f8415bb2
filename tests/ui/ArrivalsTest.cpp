#include "samples/Clips.h"
#include "samples/Media.h"
#include "ui/ShelfRows.h"
#include "ui/ShownPanel.h"

#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>

namespace quillary::test {

namespace {

namespace fs = std::filesystem;
using Kind = PanelModel::LibraryKind;

/// A shelf, and a file of its kind that lies elsewhere.
struct ShelfCase {
    Kind kind;
    const char* folder;
    const char* extension;
};

/// Whatever a file comes by, the shelf that is looked at shows it, without a restart and without another change.
class ArrivalsTest : public ShownPanel, public testing::WithParamInterface<ShelfCase> {
protected:
    ArrivalsTest() {
        fs::create_directories(shelf);
        stage.resize({900, 1400});
        stage.model.setTab(PanelModel::Tab::library);
        stage.model.setLibraryKind(GetParam().kind);
        of().refresh();
        EXPECT_TRUE(comesTrue([this] { return of().upToDate(); }));
        writeFile(source, bytes());
    }

    Shelf& of() {
        switch (GetParam().kind) {
        case Kind::videos:
            return *stage.model.videoShelf();
        case Kind::audio:
            return *stage.model.audioShelf();
        case Kind::blocks:
            return *stage.model.blocksShelf();
        case Kind::images:
            break;
        }
        return *stage.model.imagesShelf();
    }
    std::string bytes() {
        switch (GetParam().kind) {
        case Kind::audio:
            return waveFile({.rate = 8000, .channels = 1, .frames = 8000}, wobblingTone(200, 8000));
        case Kind::blocks:
            return richCompound(stage.folder / "media").toStdString();
        default:
            return readFile(stage.file("some.png", picture(40, 30)));
        }
    }
    fs::path target(const std::string& name) { return shelf / (name + GetParam().extension); }
    static void run(const std::string& command, const fs::path& from, const fs::path& to) {
        EXPECT_EQ(std::system((command + " '" + from.native() + "' '" + to.native() + "'").c_str()), 0) << command;
    }
    static void setModifiedAlone(const fs::path& file) {
        const timespec times[] = {{0, UTIME_OMIT}, {0, UTIME_NOW}};
        EXPECT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    }

    /// Whether the window shows a row or tile of this name.
    bool shows(const std::string& name) { return shownRow(stage.view.get(), QString::fromStdString(name)) != nullptr; }
    bool comes(const std::string& name) {
        return comesTrue([&] { return shows(name); }, 5'000);
    }

    const fs::path shelf = stage.root() / "Library" / GetParam().folder;
    const fs::path source = stage.folder / (std::string("source") + GetParam().extension);
};

TEST_P(ArrivalsTest, WhatOtherProgramsPutThere) {
    run("cp", source, target("copied"));
    EXPECT_TRUE(comes("copied"));
    run("cp -p", source, target("copied with its date"));
    EXPECT_TRUE(comes("copied with its date"));
    run("ln", source, target("linked"));
    EXPECT_TRUE(comes("linked"));
    run("ln", source, target("linked and dated"));
    setModifiedAlone(target("linked and dated"));
    EXPECT_TRUE(comes("linked and dated"));
    run("cp", source, target("touched"));
    run("touch -r", source, target("touched"));
    EXPECT_TRUE(comes("touched"));
    run("ln", source, target("marked"));
    setModifiedAlone(target("marked"));
    Storage::setSourceFormat(target("marked"), QStringLiteral("jpeg"));
    EXPECT_TRUE(comes("marked"));
    run("cp", source, target("renamed over"));
    run("cp", source, shelf / ".waiting");
    run("mv -f", shelf / ".waiting", target("renamed over"));
    EXPECT_TRUE(comes("renamed over"));
    run("mv", target("renamed over"), target("renamed"));
    EXPECT_TRUE(comes("renamed"));
    EXPECT_TRUE(comesTrue([&] { return !shows("renamed over"); }));
}

TEST_P(ArrivalsTest, WhatIsWrittenSlowly) {
    const std::string whole = bytes();
    std::ofstream writer(target("slow"), std::ios::binary);
    for (std::size_t part = 0; part < 4; ++part) {
        writer << whole.substr(part * whole.size() / 4, (part + 1) * whole.size() / 4 - part * whole.size() / 4)
               << std::flush;
        wait(150);
        if (part < 3) {
            EXPECT_FALSE(shows("slow")) << "half a file";
        }
    }
    // Whole by now, although nobody closed it.
    EXPECT_TRUE(comes("slow"));
    writer.close();
    wait(300);
    EXPECT_TRUE(shows("slow"));
}

TEST_P(ArrivalsTest, WhatThePanelFilesItself) {
    if (GetParam().kind == Kind::blocks)
        stage.model.blocksShelf()->captureBlocks({platform::ItemProvider::file(source)});
    else
        stage.model.saveToLibrary({source});
    ASSERT_TRUE(comesTrue([this] { return of().count() == 1; }, 5'000)) << of().noteText().toStdString();
    EXPECT_TRUE(comes(std::string(of().visible().front().url.nameStem())));
}

INSTANTIATE_TEST_SUITE_P(Shelves, ArrivalsTest,
                         testing::Values(ShelfCase{Kind::images, "Images", ".png"},
                                         ShelfCase{Kind::videos, "Videos", ".mp4"},
                                         ShelfCase{Kind::audio, "Audio", ".wav"},
                                         ShelfCase{Kind::blocks, "Blocks", ".fcpxml"}),
                         [](const auto& shelf) { return std::string(shelf.param.folder); });

} // namespace

} // namespace quillary::test
