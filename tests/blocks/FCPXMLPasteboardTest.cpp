#include "blocks/FCPXMLPasteboard.h"

#include "platform/ItemProvider.h"
#include "support/FakePasteboard.h"

#include <gtest/gtest.h>

namespace quillary {

using namespace Qt::StringLiterals;
using test::FakePasteboard;

namespace {

const QByteArray document = "<?xml version=\"1.0\"?><!DOCTYPE fcpxml><fcpxml version=\"1.10\"/>";

} // namespace

TEST(FCPXMLPasteboard, TestsOnlyTheFirst512Bytes) {
    EXPECT_TRUE(FCPXMLPasteboard::isFCPXML(document));
    EXPECT_TRUE(FCPXMLPasteboard::isFCPXML(QByteArray(505, ' ') + "<fcpxml"));
    EXPECT_FALSE(FCPXMLPasteboard::isFCPXML(QByteArray(506, ' ') + "<fcpxml"));
    EXPECT_FALSE(FCPXMLPasteboard::isFCPXML({}));
    EXPECT_FALSE(FCPXMLPasteboard::isFCPXML("\xFF<fcpxml"));
    // Byte 512 falls inside a character: rejected, although the tag stands before it.
    const QByteArray head = "<fcpxml" + QByteArray(504, ' ');
    EXPECT_FALSE(FCPXMLPasteboard::isFCPXML(head + "ü"));
    EXPECT_TRUE(FCPXMLPasteboard::isFCPXML(head + "aü"));
}

TEST(FCPXMLPasteboard, TakesTheFirstTypeThatPasses) {
    const QString text = u"text/plain;charset=utf-8"_s;
    FakePasteboard both{{u"public.utf8-plain-text"_s, document + "<!-- text -->"},
                        {u"com.apple.finalcutpro.xml.v1-12"_s, document}};
    FakePasteboard broken{{FCPXMLPasteboard::primary, "not a document"},
                          {u"com.apple.finalcutpro.xml.v1-13"_s, document}};
    FakePasteboard plain{{text, document}};
    FakePasteboard none{{text, "a note"}};
    for (FakePasteboard* board : {&both, &broken, &plain}) EXPECT_EQ(FCPXMLPasteboard::xml(*board), document);
    EXPECT_EQ(FCPXMLPasteboard::xml(none), std::nullopt);
}

TEST(FCPXMLPasteboard, OffersABlockUnderEveryType) {
    const auto item = FCPXMLPasteboard::provider(document, u"Opening"_s);
    EXPECT_EQ(item.types(), FCPXMLPasteboard::types());
    for (const QString& type : FCPXMLPasteboard::types()) EXPECT_EQ(item.data(type), document);
    EXPECT_EQ(item.suggestedName(), u"Opening"_s);
    EXPECT_EQ(FCPXMLPasteboard::xml(item), document);
    EXPECT_TRUE(FCPXMLPasteboard::carriesClips(item));

    // A type whose data never came is passed over.
    platform::ItemProvider late;
    late.registerData(FCPXMLPasteboard::primary, {});
    late.registerData(u"com.apple.finalcutpro.xml.v1-14"_s, document);
    EXPECT_EQ(FCPXMLPasteboard::xml(late), document);
}

TEST(FCPXMLPasteboard, KnowsClipsThatCannotBePasted) {
    FakePasteboard clips;
    EXPECT_FALSE(FCPXMLPasteboard::holdsFinalCutClips(clips));
    clips.put(FCPXMLPasteboard::flexoType, "opaque");
    EXPECT_TRUE(FCPXMLPasteboard::holdsFinalCutClips(clips));

    for (const QString& usable : {u"image/png"_s, u"public.jpeg"_s, u"application/pdf"_s, u"image/tiff"_s}) {
        FakePasteboard other;
        other.put(FCPXMLPasteboard::flexoType, "opaque");
        other.put(usable, "data");
        EXPECT_FALSE(FCPXMLPasteboard::holdsFinalCutClips(other)) << usable.toStdString();
    }
    clips.put(FCPXMLPasteboard::primary, document);
    EXPECT_FALSE(FCPXMLPasteboard::holdsFinalCutClips(clips));
}

} // namespace quillary
