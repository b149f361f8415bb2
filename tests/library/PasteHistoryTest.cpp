#include "library/PasteHistory.h"

#include "platform/FileAttributes.h"
#include "support/TemporaryFolder.h"

#include <QColor>
#include <gtest/gtest.h>
#include <thread>

namespace quillary {

namespace {

namespace fs = std::filesystem;

PastedImage image(const QString& name, QRgb color, QSize size = {30, 20}) {
    QImage pixels(size, QImage::Format_RGBA8888);
    pixels.fill(QColor::fromRgba(color));
    return {.image = pixels,
            .pixelSize = size,
            .hasAlphaChannel = true,
            .source = PastedImage::RasterizedVector{QStringLiteral("logo.svg")},
            .name = name,
            .formatLabel = QStringLiteral("SVG"),
            .sourceBytes = 1234,
            .webOrigin = {QStringLiteral("https://x.example/"), QStringLiteral("https://x.example/logo.svg")}};
}

std::string names(const PasteHistory& history) {
    std::string all;
    for (const auto& entry : history.entries()) all += entry.name.toStdString() + " ";
    return all;
}

std::size_t folders(const fs::path& root) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(root), fs::directory_iterator()));
}

} // namespace

TEST(PasteHistory, GivesBackWhatWasStaged) {
    const test::TemporaryFolder cache;
    const PasteHistory history(cache.path());
    const PastedImage pasted = image(QStringLiteral("a / b"), 0x80204060, {300, 100});
    history.keep(pasted);
    const auto entries = history.entries();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(QImage(QString::fromStdString(entries[0].preview())).size(), QSize(96, 32));
    const auto back = history.read(entries[0]);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->image, pasted.image);
    EXPECT_EQ(back->source, pasted.source);
    EXPECT_EQ(back->name, pasted.name);
    EXPECT_EQ(back->formatLabel, pasted.formatLabel);
    EXPECT_EQ(back->sourceBytes, pasted.sourceBytes);
    EXPECT_EQ(back->webOrigin, pasted.webOrigin);
    fs::remove(entries[0].picture());
    EXPECT_FALSE(history.read(entries[0]));
    EXPECT_TRUE(PasteHistory({}).entries().empty());
    PasteHistory({}).keep(pasted);
}

TEST(PasteHistory, KeepsTheLastTwelveAndEachOnce) {
    const test::TemporaryFolder cache;
    const PasteHistory history(cache.path());
    for (unsigned i = 0; i < 15; ++i) history.keep(image(QString::number(i), 0xff000000 | i * 9));
    EXPECT_EQ(names(history), "14 13 12 11 10 9 8 7 6 5 4 3 ");
    history.keep(image(QStringLiteral("again"), 0xff000000 | 5 * 9));
    EXPECT_EQ(names(history), "5 14 13 12 11 10 9 8 7 6 4 3 ");
    const fs::path root = history.entries()[0].folder.parent_path();
    EXPECT_EQ(folders(root), PasteHistory::most);
    EXPECT_EQ(fs::status(root).permissions() & fs::perms::others_all, fs::perms::none);
    EXPECT_EQ(history.clear(), 12);
    EXPECT_EQ(folders(root), 0);
}

TEST(PasteHistory, SurvivesCrowdsAndRuins) {
    const test::TemporaryFolder cache;
    const PasteHistory history(cache.path());
    {
        std::vector<std::jthread> crowd;
        for (unsigned i = 0; i < 4; ++i)
            crowd.emplace_back([&history, i] {
                for (unsigned j = 0; j < 12; ++j)
                    history.keep(image(QStringLiteral("n"), 0xff000000 | ((i % 2) * 50 + j)));
                if (i == 3) history.clear();
            });
    }
    history.keep(image(QStringLiteral("last"), 0xff123456)); // the crowd's may all be cleared
    const auto entries = history.entries();
    ASSERT_FALSE(entries.empty());
    EXPECT_LE(entries.size(), PasteHistory::most);
    for (const auto& entry : entries) EXPECT_TRUE(history.read(entry));
    const fs::path root = entries[0].folder.parent_path();
    // What a killed writer left goes with the next picture; a ruined entry is none.
    fs::create_directories(root / ".quillary-1-left.part" / "deep");
    fs::create_directories(root / "ruin");
    history.keep(image(QStringLiteral("new"), 0xffffffff));
    EXPECT_FALSE(fs::exists(root / ".quillary-1-left.part"));
    EXPECT_EQ(history.entries()[0].name, QStringLiteral("new"));
    for (const auto& entry : history.entries()) EXPECT_NE(entry.folder.filename(), "ruin");
}

} // namespace quillary
