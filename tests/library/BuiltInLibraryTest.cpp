#include "library/BuiltInLibrary.h"

#include "LibraryFixture.h"
#include "library/NaturalOrder.h"

using namespace quillary;
using namespace quillary::test;
using namespace Qt::StringLiterals;

namespace {

constexpr auto icon =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24"><rect width="24" height="12" fill="red"/></svg>)";

} // namespace

TEST(NaturalOrderTest, comparesNumbersByValue) {
    const QStringList expected{u""_s,
                               u"Arrow"_s,
                               u"arrow 2"_s,
                               u"Arrow 09"_s,
                               u"Arrow 9"_s,
                               u"Arrow 10"_s,
                               u"Arrow 10a"_s,
                               u"arrow 10b"_s,
                               u"Arrow 99999999999999999999"_s,
                               u"Arrow 100000000000000000000"_s,
                               u"arrows"_s,
                               u"Badge 1-2"_s,
                               u"Badge 1-10"_s,
                               u"Émile"_s};
    QStringList names = expected;
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::ranges::sort(names, [&](const QString& a, const QString& b) { return qHash(a, seed) < qHash(b, seed); });
        std::ranges::sort(names, naturallyBefore);
        EXPECT_EQ(names, expected) << seed;
    }
}

TEST(BuiltInLibraryTest, setsAndTheirIcons) {
    const TemporaryFolder folder;
    for (const char* file : {"Shapes/Star 10.svg", "Shapes/Star 9.png", "Shapes/.hidden.svg", "Shapes/readme.txt",
                             "Arrows/left.svg", "loose.svg", ".cache/x.svg"})
        writeFile(folder / file, icon);
    const BuiltInLibrary library(folder.path());
    EXPECT_EQ(library.sets(), (QStringList{u"Arrows"_s, u"Shapes"_s}));
    const LibraryItems items = library.items();
    std::vector<fs::path> paths;
    for (const LibraryItem& item : items) {
        paths.push_back(item.url);
        EXPECT_TRUE(item.isBuiltIn);
        EXPECT_EQ(item.collection->toStdString(), item.url.parent_path().filename());
        EXPECT_NE(item.modified, distantPast);
    }
    EXPECT_EQ(paths, (std::vector<fs::path>{folder / "Arrows/left.svg", folder / "Shapes/Star 9.png",
                                            folder / "Shapes/Star 10.svg"}));
    EXPECT_TRUE(BuiltInLibrary(folder / "missing").items().empty());
    EXPECT_TRUE(BuiltInLibrary({}).sets().empty());
}

TEST(BuiltInLibraryTest, noTwoIconsShareAName) {
    std::set<fs::path> names;
    for (const LibraryItem& item : BuiltInLibrary(BuiltInLibrary::installedFolder()).items())
        EXPECT_TRUE(names.insert(item.url.stem()).second) << item.url.native();
    EXPECT_FALSE(names.empty());
}

class RasterizedIconTest : public LibraryTest {};

TEST_F(RasterizedIconTest, isMadeOnceAndAgainWhenTheIconIsNewer) {
    writeFile(folder / "BuiltIn/Shapes/Star.svg", icon);
    writeFile(folder / "BuiltIn/Shapes/Dot.png", "bitmap");
    setDate(folder / "BuiltIn/Shapes/Star.svg", 1000);
    const BuiltInLibrary library(folder / "BuiltIn");
    const LibraryItems items = library.items();
    EXPECT_EQ(library.rasterizedPNG(items[0], storage, 512), folder / "BuiltIn/Shapes/Dot.png");
    const fs::path png = root / ".rasterized/Star.png";
    ASSERT_EQ(library.rasterizedPNG(items[1], storage, 512), png);
    EXPECT_EQ(QImage(QString::fromStdString(png.native())).size(), QSize(512, 512));

    writeFile(png, "kept as long as it is newer");
    EXPECT_EQ(library.rasterizedPNG(items[1], storage, 512), png);
    EXPECT_EQ(readFile(png), "kept as long as it is newer");
    setDate(png, 999);
    EXPECT_EQ(library.rasterizedPNG(items[1], storage, 256), png);
    EXPECT_EQ(QImage(QString::fromStdString(png.native())).size(), QSize(256, 256));
    EXPECT_EQ(everythingIn(root / ".rasterized").size(), 1U);

    writeFile(folder / "BuiltIn/Shapes/Broken.svg", "no vector");
    EXPECT_FALSE(library.rasterizedPNG(library.items()[0], storage, 256));
    EXPECT_FALSE(fs::exists(root / ".rasterized/Broken.png"));
}
