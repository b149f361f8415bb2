#include "values/CollectionNode.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace quillary {

using namespace Qt::StringLiterals;

namespace {

/// The tree as text: children in brackets.
QString drawn(const std::vector<CollectionNode>& nodes) {
    QStringList parts;
    for (const CollectionNode& node : nodes)
        parts += node.children.empty() ? node.name : node.name + u"["_s + drawn(node.children) + u"]"_s;
    return parts.join(u' ');
}

} // namespace

TEST(Collections, MakeATreeOfEveryPrefix) {
    EXPECT_EQ(drawn(collectionTree({u"Logos / Sports"_s})), u"Logos[Sports]"_s);
    EXPECT_EQ(drawn(collectionTree({u"b"_s, u"a / y"_s, u"a / x / 1"_s, u"a"_s})), u"a[x[1] y] b"_s);
    EXPECT_EQ(collectionTree({u"a / x / 1"_s}).front().children.front().path, u"a / x"_s);
    EXPECT_TRUE(collectionTree({}).empty());
}

TEST(Collections, ListTheFoldersOfOneLevel) {
    const QStringList paths = {u"A / B"_s, u"A / C"_s, u"D"_s, u"A / B / E"_s, u"AB / F"_s};
    EXPECT_EQ(childFolders({}, paths),
              (std::vector<FolderEntry>{{u"A"_s, u"A"_s}, {u"AB"_s, u"AB"_s}, {u"D"_s, u"D"_s}}));
    EXPECT_EQ(childFolders(u"A"_s, paths), (std::vector<FolderEntry>{{u"B"_s, u"A / B"_s}, {u"C"_s, u"A / C"_s}}));
    EXPECT_TRUE(childFolders(u"D"_s, paths).empty());
}

TEST(Collections, SearchFolderNamesAndWalkPaths) {
    EXPECT_EQ(folderMatches(u"SPÖRT"_s, {u"x / Spörts / y"_s, u"b"_s, u"a spört"_s}),
              (QStringList{u"a spört"_s, u"x / Spörts / y"_s}));
    EXPECT_EQ(crumbs(u"A / B / C"_s),
              (std::vector<Crumb>{{u"A"_s, u"A"_s}, {u"B"_s, u"A / B"_s}, {u"C"_s, u"A / B / C"_s}}));
    EXPECT_TRUE(crumbs({}).empty());
    EXPECT_EQ(folderLeaf(u"A / B"_s), u"B"_s);
    EXPECT_TRUE(liesIn(u"A / B"_s, u"A"_s));
    EXPECT_TRUE(liesIn(u"A"_s, u"A"_s));
    EXPECT_FALSE(liesIn(u"AB"_s, u"A"_s));
    EXPECT_FALSE(liesIn(u"A"_s, u"A / B"_s));
    EXPECT_FALSE(liesIn({}, u"A"_s));
}

} // namespace quillary
