#include "library/LibraryFilter.h"

#include "base/Text.h"
#include "library/Storage.h"

#include <gtest/gtest.h>
#include <random>

using namespace quillary;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

LibraryItem item(const char* path, std::optional<QString> collection = {}, std::optional<QString> format = {}) {
    return {fs::path("/q/Library/Images") / path, {}, std::move(collection), std::move(format)};
}

SearchableItems searchable(LibraryItems items) {
    return SearchableItems(std::make_shared<const LibraryItems>(std::move(items)));
}

} // namespace

TEST(LibraryFilterTest, visibleRows) {
    const SearchableItems items = searchable({
        item("Logo Größe.png", {}, u"png"_s),
        item("A/arrow.png", u"A"_s, u"svg"_s),
        item("A/B/Arrow logo.svg", u"A / B"_s),
        item("AB/x.logo.png", u"AB"_s, u"svg"_s),
        item("A/B/\xff.png", u"A / B"_s, u"jpeg"_s),
        item("Cafe\u0301.png"),
    });
    const FavoriteFiles stars({u"Library/Images/A/arrow.png"_s, u"Library/Images/A/B/\uFFFD.png"_s, u"gone.png"_s},
                              "/q");
    using Rows = std::vector<quint32>;
    const struct {
        const char* what;
        LibraryQuery query;
        Rows expected;
    } cases[] = {
        {"everything", {}, {0, 1, 2, 3, 4, 5}},
        {"unfiled", {.collection = CollectionFilter::unfiled()}, {0, 5}},
        {"a collection with those below", {.collection = CollectionFilter::named(u"A"_s)}, {1, 2, 4}},
        {"a sub-collection", {.collection = CollectionFilter::named(u"A / B"_s)}, {2, 4}},
        {"a built-in set", {.collection = CollectionFilter::builtIn(u"A"_s)}, {1}},
        {"a format", {.format = u"svg"_s}, {1, 3}},
        {"favourites", {.favoritesOnly = true}, {1, 4}},
        {"a text, whatever its case and blanks around", {.search = u"  LOGO "_s}, {0, 2, 3}},
        {"no extension", {.search = u"png"_s}, {}},
        {"no folder name", {.search = u"A / B"_s}, {}},
        {"letters beyond ASCII", {.search = u"GRÖ"_s}, {0}},
        {"composed letters", {.search = u"CAFÉ"_s}, {5}},
        {"not across names", {.search = u"größe\narrow"_s}, {}},
        {"everything at once", {CollectionFilter::named(u"A"_s), true, u"svg"_s, u"arr"_s}, {1}},
    };
    for (const auto& [what, query, expected] : cases)
        EXPECT_EQ(visibleRows(items, query, [&](const LibraryItem& at) { return stars.contains(at.url); }), expected)
            << what;
    EXPECT_TRUE(visibleRows(SearchableItems(), {}, {}).empty());
    EXPECT_TRUE(visibleRows(searchable({}), {.search = u"x"_s}, {}).empty());
}

TEST(LibraryFilterTest, findsWhatAPlainSearchFinds) {
    std::mt19937 random(11);
    LibraryItems all;
    const QString letters = u"abcßÉe\u0301Kİ東 1"_s;
    for (int i = 0; i < 3000; ++i) {
        QString name;
        for (unsigned length = random() % 8; length > 0; --length)
            name += letters[static_cast<int>(random() % letters.size())];
        all.push_back(item((name + u".png"_s).toUtf8().constData()));
    }
    const SearchableItems items = searchable(all);
    for (const QString& wanted :
         {u"a"_s, u"ss"_s, u"É"_s, u"e\u0301"_s, u"k"_s, u"i"_s, u"東"_s, u"b c"_s, u"11"_s, u"zz"_s}) {
        const QString folded = foldedForSearch(wanted);
        std::vector<quint32> expected;
        for (quint32 row = 0; row < all.size(); ++row)
            if (foldedForSearch(shownStem(all[row].url)).contains(folded)) expected.push_back(row);
        EXPECT_EQ(items.matching(folded), expected) << wanted.toStdString();
    }
}

TEST(FileLocationTest, isAPathInAllRespects) {
    for (const char* text : {"/a/b.png", "/b.png", "/a/.hidden", "/a/b.tar.gz", "/a/..", "/a/b", "/"}) {
        const fs::path path = text;
        const FileLocation location = path;
        EXPECT_EQ(location.path(), path);
        EXPECT_TRUE(location == path && path == location) << text;
        EXPECT_EQ(location.stem(), path.stem()) << text;
        EXPECT_EQ(location.extension(), path.extension()) << text;
        EXPECT_FALSE(location == fs::path("/a/bc.png"));
    }
    const auto folder = std::make_shared<const FileLocation::Folder>("/a", std::string("b.png\0c.png", 11));
    EXPECT_EQ(FileLocation(folder, 6, 5), FileLocation(fs::path("/a/c.png")));
    EXPECT_EQ(std::hash<FileLocation>()(FileLocation(folder, 6, 5)), std::hash<FileLocation>()(fs::path("/a/c.png")));
}
