#include "base/FileUrl.h"

#include <gtest/gtest.h>

namespace quillary {

TEST(FileUrl, SpellsEveryByteAndFindsTheWayBack) {
    const std::pair<std::filesystem::path, QByteArray> cases[] = {
        {"/a b.png", "file:///a%20b.png"},
        {"/50%#?;[x].png", "file:///50%25%23%3F%3B%5Bx%5D.png"},
        {"/ü.png", "file:///%C3%BC.png"},
        {"/bytes\xFF\n.png", "file:///bytes%FF%0A.png"},
        {"/it's (1)&2=3,@:~!$*+.png", "file:///it's%20(1)&2=3,@:~!$*+.png"},
    };
    for (const auto& [path, url] : cases) {
        EXPECT_EQ(fileUrl(path), url);
        EXPECT_EQ(pathOfFileUrl(url), path);
    }
}

TEST(FileUrl, ReadsOnlyPathsOfThisMachine) {
    EXPECT_EQ(pathOfFileUrl("file://localhost/a%20b"), "/a b");
    EXPECT_EQ(pathOfFileUrl("file:/a"), "/a");
    for (const char* other : {"", "file:", "file://", "file:///%", "file:///%4", "file:///%zz", "file:///a%2Fb",
                              "file:///a%00b", "file://elsewhere/a", "file:a", "https://example.org/a", "/a"})
        EXPECT_EQ(pathOfFileUrl(other), std::nullopt) << other;
}

TEST(FileUrl, RefersToFilesFromAFolder) {
    const std::pair<std::filesystem::path, QByteArray> cases[] = {
        {"/a/b/c d.mov", "c%20d.mov"},
        {"/a/b/Media/ü.mov", "Media/%C3%BC.mov"},
        {"/a/x.mov", "../x.mov"},
        {"/a/b/c:d.mov", "./c:d.mov"},
    };
    for (const auto& [path, reference] : cases) {
        EXPECT_EQ(relativeReference(path, "/a/b"), reference);
        EXPECT_EQ(pathOfReference(reference, "/a/b"), path);
        EXPECT_EQ(pathOfReference(fileUrl(path), "/elsewhere"), path);
    }
    for (const char* other : {"", "/x.mov", "https://a/b", "x:y", "a%2Fb", "a%00", "a?b", "a#b"})
        EXPECT_EQ(pathOfReference(other, "/a/b"), std::nullopt) << other;
}

} // namespace quillary
