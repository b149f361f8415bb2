#include "xml/Document.h"

#include "support/TemporaryFolder.h"

#include <chrono>
#include <gmock/gmock.h>
#include <string>

using namespace quillary::xml;
using testing::HasSubstr;

namespace {

Document parsed(const QByteArray& bytes) {
    auto document = Document::parse(bytes);
    EXPECT_TRUE(document) << (document ? "" : document.error().description().toStdString());
    return std::move(document).value();
}

/// Entities of which each is ten of the one before.
QByteArray bomb(const QByteArray& kernel, const QByteArray& use) {
    QByteArray text = "<!DOCTYPE a [<!ENTITY e0 \"" + kernel + "\">";
    for (int i = 1; i < 20; ++i) {
        const QByteArray before = "&e" + QByteArray::number(i - 1) + ";";
        text += "<!ENTITY e" + QByteArray::number(i) + " \"" + before.repeated(10) + "\">";
    }
    return text + "]>" + use;
}

} // namespace

TEST(XmlDocument, KeepsWhatItDoesNotKnow) {
    const QByteArray text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"
        "<!DOCTYPE svg PUBLIC \"-//X//Y\" \"http://host.invalid/x.dtd\" [\n<!ENTITY st \"fill:#fff\">\n]>\n"
        "<!-- before -->\n<?tool keep?>\n"
        "<svg xmlns=\"urn:s\" xmlns:i=\"urn:i\" i:v=\"1\" style=\"&st;\">\n"
        "  <i:own><![CDATA[ a < b ]]></i:own>\n  <b/> ü &#x1F600; &amp;&st;\n</svg>\n<!-- after -->\n";
    QByteArray expected = text;
    expected.replace("&#x1F600;", "😀");
    EXPECT_EQ(parsed(text).serialize(), expected);

    const auto latin = parsed("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a b=\"\xfc\"/>");
    EXPECT_EQ(latin.root().attribute("b"), "ü");
    EXPECT_EQ(latin.serialize(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a b=\"\xfc\"/>\n");
    EXPECT_EQ(parsed("<a>ü</a>").serialize(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>ü</a>\n");
}

TEST(XmlDocument, ReadsAndChangesNodes) {
    auto document =
        parsed("<!DOCTYPE r [<!ENTITY who \"you &amp; me\">]>"
               "<r><a id='1' p:id='2' xmlns:p='urn:p' to='&who;'>one<b>two</b></a><p:a xmlns:p='urn:p'/><a/></r>");
    Node root = document.root();
    EXPECT_EQ(root.name(), "r");
    EXPECT_FALSE(root.parent());
    ASSERT_EQ(root.elements().size(), 3U);
    EXPECT_EQ(root.elements()[1].name(), "p:a");
    Node a = root.firstElement("a");
    EXPECT_EQ(a.attribute("id"), "1");
    EXPECT_EQ(a.attribute("to"), "you & me");
    EXPECT_EQ(a.attribute("none"), std::nullopt);
    EXPECT_EQ(a.text(), "onetwo");
    EXPECT_EQ(document.select("//a").size(), 2U);
    EXPECT_EQ(document.select("b", a).size(), 1U);
    EXPECT_TRUE(document.select("//[").empty());

    a.setAttribute("to", "<\"&who;\"\x01 ü");
    a.removeAttribute("id");
    Node added = root.appendElement("c");
    for (Node child : a.children()) added.append(child);
    added.append(root);
    root.elements()[1].remove();
    EXPECT_THAT(
        document.serialize().toStdString(),
        HasSubstr(
            "<r><a xmlns:p=\"urn:p\" p:id=\"2\" to=\"&lt;&quot;&amp;who;&quot; ü\"/><a/><c>one<b>two</b></c></r>"));
}

TEST(XmlDocument, RefusesWhatIsNoDocument) {
    const QByteArray deep = QByteArray("<a>").repeated(200'000) + QByteArray("</a>").repeated(200'000);
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("text"), QByteArray("<a>"), QByteArray("<a/><b/>"), QByteArray("<a>&unknown;</a>"),
          QByteArray("<a b=1/>"), QByteArray("<a b='\x01'/>"), QByteArray("<a>\xff</a>"), deep}) {
        const auto document = Document::parse(bytes);
        ASSERT_FALSE(document) << bytes.left(40).constData();
        EXPECT_EQ(document.error().kind, XmlError::Kind::malformed);
        EXPECT_THAT(document.error().description().toStdString(), HasSubstr("well-formed"));
    }
    EXPECT_EQ(Document::parse("<a></a>", 6).error().kind, XmlError::Kind::tooLarge);
    EXPECT_TRUE(Document::parse("<a></a>", 7));
}

TEST(XmlDocument, ReadsLongDocumentsWithLongValues) {
    const QByteArray element = "<a b='" + QByteArray(1900, 'v') + "'/>";
    QByteArray bytes = "<all>";
    constexpr int count = 6'000; // 11 MB on one line
    for (int n = 0; n < count; ++n) bytes += element;
    const auto document = Document::parse(bytes + "</all>");
    ASSERT_TRUE(document) << document.error().description().toStdString();
    EXPECT_EQ(document->root().elements().size(), count);
}

TEST(XmlDocument, ReadsNothingElse) {
    const quillary::test::TemporaryFolder folder;
    quillary::test::writeFile(folder / "secret.txt", "secret");
    quillary::test::writeFile(folder / "secret.dtd", "<!ENTITY from \"secret\">");
    const auto path = QByteArray::fromStdString(folder.path());
    const QByteArray type = "<!DOCTYPE a SYSTEM \"file://" + path + "/secret.dtd\" [<!ENTITY x SYSTEM \"file://" +
                            path + "/secret.txt\">]>";
    const auto document = parsed(type + "<a>&x;</a>");
    EXPECT_EQ(document.root().text(), "");
    EXPECT_THAT(document.serialize().toStdString(), HasSubstr("secret.dtd"));
    EXPECT_THAT(document.serialize().toStdString(), HasSubstr("<a>&x;</a>"));
    const auto lossy = Document::parse(type + "<a xmlns='relative' b='&from;'/>");
    ASSERT_FALSE(lossy);
    EXPECT_THAT(lossy.error().description().toStdString(), HasSubstr("'from' not defined"));
}

TEST(XmlDocument, SurvivesEntitiesThatMultiply) {
    const auto start = std::chrono::steady_clock::now();
    for (const QByteArray& kernel : {QByteArray("ha"), QByteArray()})
        for (const QByteArray& use : {QByteArray("<a>&e19;</a>"), QByteArray("<a b='&e19;'/>")}) {
            const auto document = Document::parse(bomb(kernel, use));
            if (!document) continue;
            EXPECT_LE(document->root().text().size(), 16 * 1024 * 1024);
            EXPECT_LE(document->root().attribute("b").value_or("").size(), 16 * 1024 * 1024);
        }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}
