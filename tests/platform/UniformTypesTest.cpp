#include "platform/UniformTypes.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace quillary::platform;
using namespace quillary::test;
using namespace Qt::StringLiterals;

TEST(UniformTypesTest, conforms) {
    const struct {
        QString type;
        QString ancestor;
        bool expected;
    } cases[] = {
        {u"image/png"_s, u"public.png"_s, true},
        {u"public.png"_s, u"public.image"_s, true},
        {u"image/png"_s, u"image/*"_s, true},
        {u"image/svg+xml"_s, u"image/*"_s, true},
        {u"application/pdf"_s, u"image/*"_s, false},
        {u"image/png"_s, u"image/jpeg"_s, false},
        {u"image/svg+xml"_s, u"application/xml"_s, true},
        {u"text/plain;charset=utf-8"_s, u"text/plain"_s, true},
        {u"imagery/x"_s, u"image/*"_s, false},
        {u"no.such.type"_s, u"public.data"_s, false},
        {u"no.such.type"_s, u"no.such.type"_s, true},
    };
    for (const auto& [type, ancestor, expected] : cases)
        EXPECT_EQ(conforms(type, ancestor), expected) << type.toStdString() << " " << ancestor.toStdString();
}

TEST(UniformTypesTest, contentTypeByExtensionThenByFirstBytes) {
    const TemporaryFolder folder;
    const std::string png = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR";
    const struct {
        const char* name;
        std::string bytes;
        QString expected;
    } cases[] = {
        {"a.PNG", "no picture at all", u"image/png"_s},
        {"b.jpg", png, u"image/jpeg"_s},
        {"c", png, u"image/png"_s},
        {"d.unheard-of", png, u"image/png"_s},
        {"e.tar.gz", "", u"application/gzip"_s},
        {"f.mov", "", u"video/quicktime"_s},
        {"g", "%PDF-1.7\n", u"application/pdf"_s},
        {"h", std::string("\0\1\2\3", 4), u"application/octet-stream"_s},
    };
    for (const auto& [name, bytes, expected] : cases) {
        writeFile(folder / name, bytes);
        EXPECT_EQ(contentType(folder / name), expected) << name;
    }
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(contentType(folder / "pipe"), u"application/octet-stream"_s) << "a pipe is not opened";
    EXPECT_EQ(contentType(folder / "missing"), u"application/octet-stream"_s);
}
