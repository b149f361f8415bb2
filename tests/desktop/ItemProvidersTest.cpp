#include "base/FileUrl.h"
#include "platform/ItemProvider.h"
#include "platform/SuggestedName.h"
#include "support/TemporaryFolder.h"

#include <QBuffer>
#include <QImage>
#include <QMimeData>
#include <gtest/gtest.h>
#include <thread>

using namespace quillary;
using platform::ItemProvider;

namespace {

using Data = std::vector<std::pair<const char*, QByteArray>>;

std::vector<ItemProvider> dropped(const Data& data) {
    QMimeData drop;
    for (const auto& [type, bytes] : data) drop.setData(QString::fromLatin1(type), bytes);
    return platform::itemProviders(drop);
}

QString type(const char* name) {
    return QString::fromLatin1(name);
}

} // namespace

TEST(ItemProviders, AreOneForEachFile) {
    const test::TemporaryFolder folder;
    const auto odd = folder / "od\xFF;[ #%d.png";
    test::writeFile(odd, "x");
    const auto items =
        dropped({{"text/uri-list", "# a comment\r\n" + fileUrl(odd) + "\r\nhttp://example.org/a.png\r\n" +
                                       fileUrl(folder.path()) + "\nfile:///gone\r\n"},
                 {"text/plain", "text beside it"}});
    ASSERT_EQ(items.size(), 3);
    EXPECT_EQ(items[0].fileURL(), odd);
    EXPECT_TRUE(items[0].hasItemConforming(type("image/*")));
    EXPECT_FALSE(items[0].data(type("image/png"))) << "its bytes stay in the file";
    EXPECT_EQ(items[0].data(type("public.file-url")), fileUrl(odd) + "\r\n");
    EXPECT_EQ(items[1].fileURL(), folder.path());
    EXPECT_TRUE(items[1].hasItemConforming(type("inode/directory")));
    EXPECT_EQ(items[2].fileURL(), "/gone");
}

TEST(ItemProviders, AreOneForAPictureOrText) {
    struct Case {
        const char* name;
        Data data;
        const char* type;
        QByteArray bytes;
        const char* suggestedName;
    };
    const Case cases[] = {
        {"PNG before what was told first", {{"image/jpeg", "j"}, {"image/png", "p"}}, "image/png", "p", nullptr},
        {"another kind of image", {{"image/webp", "w"}}, "image/webp", "w", nullptr},
        {"a vector", {{"text/plain", "t"}, {"image/svg+xml", "<svg/>"}}, "image/svg+xml", "<svg/>", nullptr},
        {"a browser's picture",
         {{"text/uri-list", "https://example.org/my%20logo.png\r\n"}, {"image/png", "p"}},
         "image/png",
         "p",
         "my logo"},
        {"a picture named by its page",
         {{"text/html", "<img src=\"https://example.org/cat.webp\">"}, {"image/png", "p"}},
         "image/png",
         "p",
         "cat"},
        {"text", {{"text/plain", "words"}}, "text/plain;charset=utf-8", "words", nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const auto items = dropped(each.data);
        ASSERT_EQ(items.size(), 1);
        EXPECT_FALSE(items[0].fileURL());
        EXPECT_EQ(items[0].types(), QStringList{type(each.type)});
        EXPECT_EQ(items[0].data(type(each.type)), each.bytes);
        EXPECT_EQ(items[0].suggestedName().has_value(), each.suggestedName != nullptr);
        EXPECT_EQ(items[0].suggestedName().value_or(QString()), type(each.suggestedName));
    }
    EXPECT_TRUE(dropped({}).empty());
    EXPECT_TRUE(dropped({{"application/x-unknown", "x"}}).empty());
}

TEST(ItemProviders, RecogniseABrowsersPictureByItsContents) {
    // Chromium gives the file of a dragged picture a type that tells nothing, Firefox its own PNG of it.
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    ASSERT_TRUE(QImage(4, 3, QImage::Format_RGB32).save(&buffer, "JPG"));
    const QByteArray svg = "<?xml version='1.0'?>\n<!-- drawn --><svg xmlns='http://www.w3.org/2000/svg'/>";
    const auto wide = [](const char* text) {
        const QString wanted = QString::fromLatin1(text);
        return QByteArray(reinterpret_cast<const char*>(wanted.utf16()), wanted.size() * 2);
    };
    constexpr auto anything = "application/octet-stream";
    struct Case {
        const char* name;
        Data data;
        const char* type;
        const char* suggestedName;
        const char* page = nullptr;
        const char* address = nullptr;
    };
    const Case cases[] = {
        {"a picture of a page",
         {{"text/x-moz-url", wide("https://example.org/my%20logo.jpg\na picture")},
          {anything, jpeg},
          {"chromium/x-renderer-taint", "https://shop.example.org"},
          {"text/html", "<img src=\"https://example.org/my%20logo.jpg\">"}},
         "image/jpeg",
         "my logo",
         "https://shop.example.org",
         "https://example.org/my%20logo.jpg"},
        {"a picture that is a link",
         {{"text/x-moz-url", wide("https://example.org/shop?x=1")},
          {anything, jpeg},
          {"text/html", "<img src='https://example.org/pics/cat.jpg'>"}},
         "image/jpeg",
         "cat",
         "https://example.org/shop?x=1",
         "https://example.org/pics/cat.jpg"},
        {"a drawing", {{anything, svg}, {"text/html", "<img src='a/tree.svg'>"}}, "image/svg+xml", "tree"},
        {"a picture within its page",
         {{"text/x-moz-url", wide("data:image/jpeg;base64,AAAA")},
          {anything, jpeg},
          {"text/html", "<img src='data:image/jpeg;base64,AAAA'>"}},
         "image/jpeg",
         nullptr},
        {"a picture that a script made",
         {{anything, jpeg}, {"text/html", "<img src='blob:https://example.org/1f3c-aa'>"}}, "image/jpeg", nullptr},
        {"a named one",
         {{"application/octet-stream;name=\"red barn.jpg\"", jpeg},
          {"text/html", "<img src='https://example.org/17?w=5'>"}},
         "image/jpeg",
         "red barn",
         nullptr,
         "https://example.org/17?w=5"},
        {"a promised one",
         {{"image/png", "p"},
          {"application/x-moz-file-promise-dest-filename", wide("old mill.jpg")},
          {"text/html", "<img src='https://example.org/17'>"}},
         "image/png",
         "old mill",
         nullptr,
         "https://example.org/17"},
        {"the source of a drawing",
         {{"text/html", "<pre>&lt;svg"}, {"text/plain", "see <svg xmlns='x'></svg> there"}},
         "image/svg+xml",
         nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const auto items = dropped(each.data);
        ASSERT_EQ(items.size(), 1);
        EXPECT_TRUE(items[0].data(type(each.type)));
        EXPECT_EQ(items[0].suggestedName().value_or(QString()), type(each.suggestedName));
        EXPECT_EQ(items[0].webOrigin().page, type(each.page));
        EXPECT_EQ(items[0].webOrigin().address, type(each.address));
    }
    for (const QByteArray& other : {QByteArray("PK\3\4 an archive"), QByteArray("words"), QByteArray()})
        EXPECT_TRUE(dropped({{anything, other}}).empty());
}

TEST(ItemProviders, CarryClipsAsTheyAre) {
    const QByteArray clip("\xFF\x00<fcpxml", 10);
    const auto items = dropped({{"com.apple.finalcutpro.xml.v1-14", clip},
                                {"com.apple.flexo.proFFPasteboardUTI", "private"},
                                {"text/plain", "<fcpxml/>"}});
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].data(type("com.apple.finalcutpro.xml.v1-14")), clip);
    EXPECT_EQ(items[0].data(type("com.apple.flexo.proFFPasteboardUTI")), "private");
    EXPECT_EQ(items[0].data(type("text/plain;charset=utf-8")), "<fcpxml/>");

    const auto files = dropped({{"text/uri-list", "file:///a\r\nfile:///b\r\n"}, {"com.apple.finalcutpro.xml", clip}});
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0].data(type("com.apple.finalcutpro.xml")), clip);
}

TEST(ItemProviders, AskAHangingSourceOnce) {
    class Hanging : public QMimeData {
    public:
        QStringList formats() const override {
            return {type("text/uri-list"), type("image/png"), type("text/plain"), type("com.maker.clip")};
        }
        mutable int asked = 0;

    protected:
        QVariant retrieveData(const QString&, QMetaType) const override {
            ++asked;
            std::this_thread::sleep_for(std::chrono::seconds(1));
            return {};
        }
    };
    const Hanging drop;
    const auto items = platform::itemProviders(drop);
    EXPECT_EQ(drop.asked, 1);
    ASSERT_EQ(items.size(), 1) << "the drop held something, which could not be had";
    EXPECT_TRUE(items[0].types().isEmpty());
}

TEST(SuggestedName, ComesFromTheAddress) {
    struct Case {
        const char* address;
        const char* name;
    };
    for (const auto& [address, name] : {Case{"https://example.org/a/my%20logo.png", "my logo"},
                                        {"https://example.org/a/my%2520logo.png", "my logo"},
                                        {"https://example.org/M%C3%BCnchen.tar.gz?x=1", "M\xC3\xBCnchen.tar"},
                                        {"https://example.org/a/%20logo%20.tar.gz?size=1#top", "logo .tar"},
                                        {"https://example.org/folder/", "folder"},
                                        {"https://example.org/123-456.png", nullptr},
                                        {"https://logos/logos", nullptr},
                                        {"https://example.org/x.png", nullptr},
                                        {"https://example.org/12345.png", nullptr},
                                        {"https://example.org/", nullptr},
                                        {"https://example.org", nullptr},
                                        {"https://host.org/host.org.png", nullptr},
                                        {"https://example.org/.hidden", ".hidden"}})
        EXPECT_EQ(platform::suggestedName(QUrl(type(address))).value_or(QString()), QString::fromUtf8(name)) << address;
    for (const int length : {60, 61}) {
        const QString name(length, u'a');
        const QUrl address(QStringLiteral("https://example.org/%1.png").arg(name));
        EXPECT_EQ(platform::suggestedName(address).has_value(), length == 60);
    }
}
