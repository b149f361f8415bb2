#include "library/Storage.h"

#include <gtest/gtest.h>

using namespace quillary;
using namespace Qt::StringLiterals;

TEST(StorageNamesTest, sanitize) {
    const QString family = u"👨‍👩‍👧"_s;
    const std::pair<QString, QString> cases[] = {
        {u"Logo"_s, u"Logo"_s},
        {u"///"_s, u"---"_s},
        {u"a/b\\c:d*e?f\"g<h>i|j"_s, u"a-b-c-d-e-f-g-h-i-j"_s},
        {u" \t\n padded \r\n"_s, u"padded"_s},
        {u" "_s, u"Image"_s},
        {u""_s, u"Image"_s},
        {QString(100, u'x'), QString(80, u'x')},
        {family.repeated(81), family.repeated(80)},
        {u"e\u0301"_s.repeated(90), u"e\u0301"_s.repeated(80)},
        {u"two\nlines\tand\u0000nul"_s, u"two-lines-and-nul"_s},
        {u".hidden"_s, u"-hidden"_s},
        {u".."_s, u"-."_s},
        {u"../../etc/passwd"_s, u"-.-..-etc-passwd"_s},
        {u"Größe 東京 (final) [1]"_s, u"Größe 東京 (final) [1]"_s},
    };
    for (const auto& [name, expected] : cases) EXPECT_EQ(Storage::sanitize(name), expected) << name.toStdString();
}

TEST(StorageNamesTest, appending) {
    const std::pair<QString, std::filesystem::path> cases[] = {
        {u""_s, "/shelf"},
        {u"Logos"_s, "/shelf/Logos"},
        {u"Logos / Sports"_s, "/shelf/Logos/Sports"},
        {u"  Logos  /   /  Sports "_s, "/shelf/Logos/Sports"},
        {u" /  / "_s, "/shelf"},
        {u"A/B"_s, "/shelf/A-B"},
        {u".. / .. / etc"_s, "/shelf/etc"},
        {u"../../etc"_s, "/shelf/-.-..-etc"},
        {u". / A"_s, "/shelf/A"},
        {u".hidden / a\nb"_s, "/shelf/-hidden/a-b"},
        {u"a\u0000b"_s, "/shelf/a-b"},
    };
    for (const auto& [collection, expected] : cases)
        EXPECT_EQ(Storage::appending(collection, "/shelf"), expected) << collection.toStdString();
}

TEST(StorageNamesTest, shelfByExtension) {
    using enum Storage::Folder;
    const std::pair<const char*, std::optional<Storage::Folder>> cases[] = {
        {"a.PNG", images}, {"a.tif", images}, {"a.Pdf", images}, {"a.hevc", videos},
        {"a.MXF", videos}, {"a.aac", audio},  {"a.aif", audio},  {"a.txt", {}},
        {"a.fcpxml", {}},  {"png", {}},       {".png", {}},      {"a.png.part", {}},
    };
    for (const auto& [name, shelf] : cases) EXPECT_EQ(Storage::shelf(name), shelf) << name;
    EXPECT_TRUE(Storage::isVector("a.SVG") && Storage::isReadableImage("a.SVG"));
    EXPECT_FALSE(Storage::isVector("a.png"));
}
