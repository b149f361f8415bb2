#include "drag/DropReader.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace quillary;
using platform::ItemProvider;

namespace {

ItemProvider carrying(const char* type) {
    ItemProvider item;
    item.registerData(QString::fromLatin1(type), "bytes");
    return item;
}

} // namespace

TEST(DropReader, TellsWhatADropMeans) {
    const test::TemporaryFolder folder;
    const auto file = [&](const char* name) {
        test::writeFile(folder / name, "x");
        return ItemProvider::file(folder / name);
    };
    std::filesystem::create_directory(folder / "folder");
    struct Case {
        const char* name;
        std::vector<ItemProvider> items;
        DropReader::Contents expected;
    };
    using enum DropReader::Contents;
    const Case cases[] = {
        {"nothing", {}, nothing},
        {"a picture as data", {carrying("image/png")}, image},
        {"a vector as data", {carrying("com.adobe.pdf")}, image},
        {"a picture file", {file("a.JPG")}, image},
        {"an SVG file", {file("a.svg")}, image},
        {"two picture files", {file("a.png"), file("b.png")}, batch},
        {"a film", {file("a.mov")}, batch},
        {"a sound", {file("a.wav")}, batch},
        {"a folder", {ItemProvider::file(folder / "folder")}, batch},
        {"a file that is gone", {ItemProvider::file(folder / "gone.zzz")}, batch},
        {"text", {carrying("text/plain;charset=utf-8")}, nothing},
        {"two pictures as data", {carrying("image/png"), carrying("image/png")}, nothing},
        {"selected source", {carrying("image/svg+xml")}, image},
    };
    for (const Case& each : cases) EXPECT_EQ(DropReader::contents(each.items), each.expected) << each.name;
}

TEST(DropReader, HandsOverTheFilesLaterAndOnce) {
    const std::vector<ItemProvider> items{ItemProvider::file("/a"), carrying("image/png"), ItemProvider::file("/b")};
    int calls = 0;
    std::vector<std::filesystem::path> files;
    QObject context;
    const auto take = [&](std::vector<std::filesystem::path> found) {
        ++calls;
        files = std::move(found);
    };
    DropReader::fileURLs(items, &context, take);
    EXPECT_EQ(calls, 0);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(files, (std::vector<std::filesystem::path>{"/a", "/b"}));

    auto gone = std::make_unique<QObject>();
    DropReader::fileURLs(items, gone.get(), take);
    gone.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}
