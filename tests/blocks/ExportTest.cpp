#include "blocks/BlockExport.h"
#include "blocks/BlocksTest.h"
#include "blocks/export/FCPXMLDowngrade.h"
#include "blocks/export/FlatTimeline.h"
#include "blocks/export/Rational.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <limits>

namespace quillary::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto largest = std::numeric_limits<std::int64_t>::max();

TEST(RationalTest, CalculatesExactlyOrNotAtAll) {
    const std::pair<const char*, Rational> times[] = {
        {"1001/30000s", Rational(1001, 30000)},
        {" 5s ", Rational(5)},
        {"-3/6s", Rational(-1, 2)},
        {"2.50s", Rational(5, 2)},
        {"0/7s", Rational(0)},
    };
    for (const auto& [text, expected] : times) EXPECT_EQ(Rational::ofTime(text), expected) << text;
    for (const char* none : {"1/0s", "5", "s", "1/2/3s", "1.s", "1.-5s", "99999999999999999999s"})
        EXPECT_EQ(Rational::ofTime(none), std::nullopt) << none;

    const Rational frame(1001, 30000);
    Rational sum;
    for (int n = 0; n < 30000; ++n) sum = sum + frame;
    EXPECT_EQ(sum, Rational(1001));
    EXPECT_EQ(Rational(7, 3) - Rational(1, 3), Rational(2));
    EXPECT_EQ(Rational(2, 3) / Rational(-4, 9), Rational(-3, 2));
    EXPECT_LT(Rational(largest - 1, largest), Rational(1));
    EXPECT_FALSE((Rational(largest) + Rational(1)).isValid());
    EXPECT_FALSE((Rational(largest) * Rational(1, 2) * Rational(3)).isValid());
    EXPECT_FALSE((Rational(1) / Rational(0)).isValid());
    EXPECT_FALSE((Rational::invalid() - Rational::invalid()).isValid());
    EXPECT_FALSE(Rational::invalid() < Rational(1) || Rational(1) < Rational::invalid());
}

class ExportTest : public BlocksTest {
protected:
    /// "position+duration@media name" of each item of each track, in seconds.
    std::vector<std::string> tracks(const QByteArray& xml) {
        std::vector<std::string> lines;
        const auto document = FCPXMLDocument::parse(xml);
        EXPECT_TRUE(document);
        leftOut = {};
        const auto timeline = flattened(*document, leftOut);
        EXPECT_TRUE(timeline);
        if (!timeline) return lines;
        const auto number = [](const Rational& time) {
            return QByteArray::number(time.toDouble(), 'g', 6).toStdString();
        };
        for (const auto& track : timeline->tracks) {
            std::string line = track.medium == FlatTimeline::Medium::video ? "V" : "A";
            for (std::size_t i = 0; i < track.items.size(); ++i) {
                const auto& item = track.items[i];
                line += " " + number(item.position) + "+" + number(item.duration) + "@" + number(item.mediaStart) +
                        (item.speed == Rational(1) ? "" : "*" + number(item.speed)) + " " + item.name.toStdString() +
                        (item.isEnabled ? "" : " off");
                if (const auto cut = track.transitions.find(i); cut != track.transitions.end())
                    line += " ><" + number(cut->second.before) + "," + number(cut->second.after);
            }
            lines.push_back(line);
        }
        return lines;
    }
    std::vector<std::string> left() const {
        std::vector<std::string> lines;
        for (const QString& text : leftOut.texts()) lines.push_back(text.toStdString());
        return lines;
    }
    /// A document of three assets (v: picture, starting at an hour; av: picture and sound; a: sound) and a compound
    /// clip with this storyline.
    static QByteArray withSpine(const QByteArray& spine, const QByteArray& more = {}) {
        return fcpxml(13,
                      R"(
            <asset id="v" name="v" start="3600s" duration="100s" hasVideo="1" format="r1a"><media-rep src="file:///m/v.mov"/></asset>
            <asset id="av" name="av" start="0s" duration="50s" hasVideo="1" hasAudio="1" format="r1a"><media-rep src="file:///m/av.mov"/></asset>
            <asset id="a" name="a" start="0s" duration="20s" hasAudio="1" audioRate="48000"><media-rep src="file:///m/a.wav"/></asset>
            <effect id="e" name="Cross Dissolve" uid="FxPlug:4731E73A-8DAC-4113-9A30-AE85B1761265"/><effect id="g" name="Clouds" uid="g"/>)" +
                          more +
                          R"(<media id="m" name="M"><sequence format="r1a" tcStart="10s" duration="60s"><spine>)" +
                          spine + "</spine></sequence></media>",
                      R"(<ref-clip ref="m" name="Root" duration="60s"/>)");
    }

    LeftOut leftOut;
};

TEST_F(ExportTest, LaysConnectedClipsOutByTheirLanes) {
    EXPECT_THAT(tracks(withSpine(R"(
        <asset-clip ref="v" name="one" offset="10s" start="3605s" duration="4s">
            <asset-clip ref="av" name="above" lane="2" offset="3606s" duration="2s" enabled="0"/>
            <asset-clip ref="a" name="below" lane="-1" offset="3604s" duration="3s"/>
            <spine lane="1" offset="3607s"><asset-clip ref="v" name="s1" offset="0s" duration="1s"/><gap duration="1s" offset="1s"/><asset-clip ref="v" name="s2" offset="2s" duration="1s"/></spine>
            <title ref="g" name="T" lane="3" offset="3605s" duration="1s"/>
        </asset-clip>
        <asset-clip ref="av" name="two" offset="14s" start="5s" duration="2s"><asset-clip ref="av" name="late" lane="2" offset="5s" duration="1s"/><asset-clip ref="v" name="twin" lane="2" offset="5s" duration="1s"/></asset-clip>)")),
                ElementsAre("V 0+4@3605 one 4+2@5 two", "V 2+1@3600 s1 4+1@3600 s2", "V 1+2@0 above off 4+1@0 late",
                            "V 4+1@3600 twin", "A 4+2@5 two", "A 0+2@1 below", "A 1+2@0 above off 4+1@0 late"));
    EXPECT_THAT(left(), ElementsAre("Titles (1): “T”"));
    // Lanes as far out as numbers go.
    EXPECT_THAT(tracks(withSpine(R"(
        <asset-clip ref="a" name="on" duration="1s">
            <asset-clip ref="a" name="far" lane="-2147483648" duration="1s"/><asset-clip ref="a" name="near" lane="-1" duration="1s"/>
        </asset-clip>)")),
                ElementsAre("A 0+1@0 on", "A 0+1@0 near", "A 0+1@0 far"));
}

TEST_F(ExportTest, OpensClipsWithinClips) {
    const QByteArray inner = R"(
        <media id="in" name="In"><sequence format="r1a" tcStart="100s" duration="8s"><spine>
            <asset-clip ref="v" name="i1" offset="100s" duration="5s"><asset-clip ref="v" name="i2" lane="1" offset="3601s" duration="9s"/></asset-clip>
            <asset-clip ref="v" name="i3" offset="105s" duration="3s"/></spine></sequence></media>
        <media id="mc" name="Mc"><multicam format="r1a" tcStart="0s">
            <mc-angle name="A" angleID="A"><gap offset="0s" duration="1s"/><asset-clip ref="av" name="camA" offset="1s" duration="9s"/></mc-angle>
            <mc-angle name="B" angleID="B"><asset-clip ref="av" name="camB" offset="0s" duration="9s"/></mc-angle>
            <mc-angle name="C" angleID="C"/></multicam></media>)";
    EXPECT_THAT(
        tracks(withSpine(R"(<ref-clip ref="in" name="nested" offset="10s" start="102s" duration="4s"/>)", inner)),
        ElementsAre("V 0+3@3602 i1 3+1@3600 i3", "V 0+4@3601 i2"));
    EXPECT_THAT(left(), IsEmpty());
    EXPECT_THAT(
        tracks(withSpine(
            R"(<mc-clip ref="mc" name="multi" offset="10s" start="2s" duration="3s"><mc-source angleID="A" srcEnable="audio"/><mc-source angleID="B" srcEnable="video"/></mc-clip>)",
            inner)),
        ElementsAre("V 0+3@2 camB", "A 0+3@1 camA"));
    EXPECT_THAT(left(), ElementsAre("Unused angles of multicam clips (1): “C”"));
    EXPECT_THAT(
        tracks(withSpine(
            R"(<sync-clip name="sync" offset="10s" start="1s" duration="3s"><spine><asset-clip ref="v" name="pic" offset="0s" duration="10s"/></spine><asset-clip ref="a" name="snd" lane="-1" offset="0s" duration="10s"/></sync-clip>
               <clip name="old" offset="13s" start="3602s" duration="2s"><video ref="v" offset="3600s" start="3600s" duration="9s"><audio ref="a" lane="-1" offset="3600s" duration="9s"/></video></clip>
               <audition offset="15s"><asset-clip ref="v" name="chosen" duration="1s"/><asset-clip ref="v" name="other" duration="1s"/></audition>)")),
        ElementsAre("V 0+3@3601 pic 3+2@3602 v 5+1@3600 chosen", "A 0+3@1 snd 3+2@2 a"));
    EXPECT_THAT(left(), ElementsAre("Alternatives in auditions (1): “other”"));

    // Clips that hold themselves end.
    const auto endless = FCPXMLDocument::parse(withSpine(
        R"(<ref-clip ref="m" name="self" offset="10s" duration="60s" start="10s"/><ref-clip ref="m" offset="70s" duration="60s" start="10s"/>)"));
    EXPECT_FALSE(flattened(*endless, leftOut) && left().empty());
}

TEST_F(ExportTest, KeepsDissolvesSplitSoundAndTheMediaOfRetimedClips) {
    EXPECT_THAT(tracks(withSpine(R"(
            <asset-clip ref="v" name="one" offset="10s" duration="5s"/>
            <transition name="Cross Dissolve" offset="14s" duration="2s"><filter-video ref="e"/></transition>
            <asset-clip ref="v" name="two" offset="15s" duration="5s"/>
            <transition name="Wipe" offset="19s" duration="2s"><filter-video ref="g"/></transition>
            <asset-clip ref="av" name="split" offset="20s" start="10s" duration="5s" audioStart="8s" audioDuration="6s"/>
            <asset-clip ref="v" name="fast" offset="25s" start="2s" duration="4s"><timeMap><timept time="0s" value="3600s"/><timept time="10s" value="3620s"/></timeMap><filter-video ref="g" name="Blur"/><filter-video ref="g"/></asset-clip>
            <video ref="g" name="Clouds" offset="29s" duration="2s"/>
            <asset-clip ref="gone" name="lost" offset="31s" duration="2s"/>)")),
                ElementsAre("V 0+5@3600 one ><1,1 5+5@3600 two 10+5@10 split 15+4@3604*2 fast", "A 8+6@8 split"));
    EXPECT_THAT(left(), ElementsAre("Video effects (2): “Blur”, “Clouds”", "Generators (1): “Clouds”",
                                    "Clips without media (1): “lost”", "Transitions (1): “Wipe”"));
}

TEST_F(ExportTest, NeverReadsBeyondTheMedia) {
    // In slow motion 8 s show 4 of the media; backwards and still frames are a speed, too.
    EXPECT_THAT(
        tracks(withSpine(R"(
            <asset-clip ref="v" name="slow" offset="10s" start="190s" duration="8s"><timeMap><timept time="0s" value="3600s"/><timept time="200s" value="3700s"/></timeMap></asset-clip>
            <asset-clip ref="v" name="back" offset="18s" start="0s" duration="2s"><timeMap><timept time="0s" value="3650s"/><timept time="50s" value="3600s"/></timeMap></asset-clip>
            <asset-clip ref="v" name="still" offset="20s" start="0s" duration="2s"><timeMap><timept time="0s" value="3610s"/><timept time="9s" value="3610s"/></timeMap></asset-clip>
            <asset-clip ref="v" name="ramp" offset="22s" start="0s" duration="2s"><timeMap><timept time="0s" value="3600s"/><timept time="1s" value="3601s"/><timept time="2s" value="3605s"/></timeMap></asset-clip>
            <asset-clip ref="a" name="over" offset="24s" start="18s" duration="5s"/><asset-clip ref="a" name="past" offset="29s" start="20s" duration="1s"/>)")),
        ElementsAre("V 0+8@3695*0.5 slow 8+2@3648*-1 back 10+2@3610*0 still 12+2@3600*2.5 ramp", "A 14+2@18 over"));
    EXPECT_THAT(left(), ElementsAre("Speed changes (1): “ramp”",
                                    "Parts of clips beyond the end of their media (2): “over”, “past”"));
    // 25 pictures a second shown as 24: the clip's clock, from 0 or from the media's beginning, is slower.
    const QByteArray conformed =
        R"(<format id="f24" frameDuration="1/24s"/><media id="c" name="C"><sequence format="f24" tcStart="0s"><spine>
        <asset-clip ref="v" name="zero" offset="0s" start="3760s" duration="50s"><conform-rate srcFrameRate="25"/></asset-clip>
        <asset-clip ref="v" name="begin" offset="50s" start="3604s" duration="100s"><conform-rate srcFrameRate="25"/></asset-clip>
        <asset-clip ref="v" name="as it is" offset="150s" start="3600s" duration="100s"><conform-rate scaleEnabled="0" srcFrameRate="25"/></asset-clip>
        <clip name="old" offset="250s" start="3750s" duration="100s"><conform-rate srcFrameRate="25"/><video ref="v" offset="3600s" start="3600s" duration="100s"/></clip>
        </spine></sequence></media>)";
    EXPECT_THAT(
        tracks(fcpxml(13,
                      R"(<asset id="v" name="v" start="3600s" duration="100s" hasVideo="1" format="r1a"/>)" + conformed,
                      R"(<ref-clip ref="c" name="C" duration="350s"/>)")),
        ElementsAre("V 0+50@3609.6*0.96 zero 50+100@3603.84*0.96 begin 150+100@3600 as it is 250+100@3600*0.96 v"));
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(ExportTest, TakesMarkersAndRolesAlong) {
    const QByteArray xml = withSpine(R"(
        <asset-clip ref="av" name="one" offset="10s" start="5s" duration="4s" audioRole="dialogue.interview" videoRole="A cam">
            <marker start="6s" duration="1/25s" value="Look" note="closer"/><marker start="7s" value="Fix" completed="0"/>
            <chapter-marker start="8s" value="Part 2"/><marker start="99s" value="hidden"/></asset-clip>
        <title ref="g" name="T" offset="14s" start="3600s" duration="2s"><marker start="3601s" value="on the title"/></title>)");
    const auto block = save(QByteArray(xml)
                                .replace("file:///m/v.mov", fileUrl(media("v.mov")))
                                .replace("file:///m/av.mov", fileUrl(media("av.mov")))
                                .replace("file:///m/a.wav", fileUrl(media("a.wav"))));
    ASSERT_TRUE(block) << block.error().line().toStdString();
    const auto result = BlockExport::write(store, {.block = block->url, .output = folder / "o.otio"});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->leftOut, QStringList({u"Markers outside of their clips (1): “hidden”"_s, u"Titles (1): “T”"_s}));
    const QJsonValue stack =
        QJsonDocument::fromJson(QByteArray::fromStdString(readFile(result->output))).object()["tracks"_L1];
    const auto told = [](const QJsonValue& marker) {
        const QJsonValue range = marker["marked_range"_L1];
        return u"%1 %2 %3 at %4/%5"_s
            .arg(marker["OTIO_SCHEMA"_L1].toString(), marker["color"_L1].toString(), marker["name"_L1].toString())
            .arg(range["start_time"_L1]["value"_L1].toInt())
            .arg(range["start_time"_L1]["rate"_L1].toInt());
    };
    const QJsonValue picture = stack["children"_L1][0]["children"_L1][0];
    const QJsonValue sound = stack["children"_L1][1]["children"_L1][0];
    ASSERT_EQ(picture["markers"_L1].toArray().size(), 3);
    EXPECT_EQ(told(picture["markers"_L1][0]), u"Marker.2 BLUE Look at 150/25"_s);
    EXPECT_EQ(told(picture["markers"_L1][1]), u"Marker.2 RED Fix at 175/25"_s);
    EXPECT_EQ(told(picture["markers"_L1][2]), u"Marker.2 ORANGE Part 2 at 200/25"_s);
    EXPECT_EQ(picture["markers"_L1][0]["comment"_L1], u"closer"_s);
    EXPECT_EQ(told(stack["markers"_L1][0]), u"Marker.2 BLUE on the title at 125/25"_s);
    EXPECT_EQ(picture["metadata"_L1]["fcpxml"_L1]["videoRole"_L1], u"A cam"_s);
    EXPECT_EQ(sound["metadata"_L1]["fcpxml"_L1]["audioRole"_L1], u"dialogue.interview"_s);
}

TEST_F(ExportTest, BringsEveryVersionUpOrSaysThatItCannot) {
    // Every reference leads to a resource at the top.
    const auto dangling = [](const FCPXMLDocument& document) {
        QStringList lost;
        const auto resources = document.root().firstElement("resources");
        std::set<QByteArray> ids;
        for (const xml::Node resource : resources.elements()) ids.insert(resource.attribute("id").value_or("?"));
        const auto look = [&](const auto& self, xml::Node element) -> void {
            for (const char* name : {"ref", "format"})
                if (const auto id = element.attribute(name); id && !element.isNamed("text-style") && !ids.contains(*id))
                    lost.append(QString::fromUtf8(element.name() + ' ' + *id));
            for (const xml::Node child : element.elements()) self(self, child);
        };
        look(look, document.root());
        return lost;
    };
    for (int minor = 2; minor <= 14; ++minor) {
        QByteArray xml = richCompound(folder / "media", minor);
        if (minor == 2) {
            // Resources, and clips, stand in the project.
            xml.replace("<resources>", "<project name=\"Old\" uuid=\"u\"><resources>");
            xml.replace("</fcpxml>", "<sequence format=\"r1\" duration=\"2s\"><spine><ref-clip ref=\"r22\" "
                                     "duration=\"2s\"/></spine></sequence></project></fcpxml>");
        }
        auto document = FCPXMLDocument::parse(xml);
        ASSERT_TRUE(document);
        leftOut = {};
        EXPECT_TRUE(bringToVersion110(*document, leftOut)) << minor;
        EXPECT_EQ(dangling(*document), QStringList()) << minor;
        EXPECT_EQ(document->media().size(), 6U) << minor;
        EXPECT_TRUE(document->root().firstElement().isNamed("resources"));
        leftOut = {};
        EXPECT_TRUE(bringToVersion110(*document, leftOut));
        EXPECT_THAT(left(), IsEmpty()) << minor;
        if (minor > 2) continue;
        EXPECT_EQ(document->derivedName(), u"Old"_s);
        EXPECT_EQ(document->root().firstElement("event").firstElement().attribute("name"), "Opening");
    }
    // What refers to nothing leaves a gap, and what stands behind it its place.
    auto lost = FCPXMLDocument::parse(withSpine(
        R"(<asset-clip ref="v" name="one" duration="1s"/><asset-clip ref="gone" name="lost" offset="1s" duration="2s"/><asset-clip ref="a" name="two" offset="3s" duration="1s"><filter-audio ref="none"/></asset-clip>)"));
    leftOut = {};
    EXPECT_TRUE(bringToVersion110(*lost, leftOut));
    EXPECT_EQ(dangling(*lost), QStringList());
    const auto spine = FCPXMLDocument::spineOf(lost->clips().back(), lost->resources()).elements();
    ASSERT_EQ(spine.size(), 3U);
    EXPECT_TRUE(spine[1].isNamed("gap") && spine[1].attribute("duration") == "2s");
    EXPECT_EQ(spine[2].attribute("name"), "two");
    EXPECT_THAT(left(), ElementsAre("“asset-clip” settings (1): “lost”", "Audio effects (1)"));

    // Each of several clips comes in a project of its own.
    auto several = FCPXMLDocument::parse(
        fcpxml(13, R"(<asset id="v" format="r1" duration="9s"><media-rep src="file:///m/v.mov"/></asset>)",
               R"(<asset-clip ref="v" name="one" duration="1s"/><asset-clip ref="v" name="two" duration="2s"/>)"));
    EXPECT_TRUE(bringToVersion110(*several, leftOut));
    EXPECT_EQ(several->elements("project").size(), 2U);
    EXPECT_EQ(several->elements("project").back().attribute("name"), "two");

    const std::pair<const char*, const char*> refused[] = {
        {"<fcpxml version=\"1.15\"><clip/></fcpxml>", "FCPXML 1.15 cannot be brought to version 1.10."},
        {"<fcpxml version=\"2.0\"><clip/></fcpxml>", "FCPXML 2.0 cannot be brought to version 1.10."},
        {"<fcpxml><clip/></fcpxml>",
         "The document does not tell its version of FCPXML, so it cannot be brought to version 1.10."},
        {"<fcpxml version=\"1.9\"><project><sequence format=\"r1\"/></project></fcpxml>",
         "A timeline refers to the format “r1”, which the document does not have, so it cannot be brought to version "
         "1.10."},
        {"<fcpxml version=\"1.2\"><project><resources><asset "
         "id=\"a\"/></resources></project><project><resources><asset "
         "id=\"a\"/></resources></project></fcpxml>",
         "Two resources of the document are called “a”, so it cannot be brought to version 1.10."},
    };
    for (const auto& [xml, told] : refused) {
        auto document = FCPXMLDocument::parse(xml);
        const auto brought = bringToVersion110(*document, leftOut);
        ASSERT_FALSE(brought) << xml;
        EXPECT_EQ(brought.error().description(), QString::fromUtf8(told));
    }
}

TEST_F(ExportTest, RefusesWhatHasNoExactTime) {
    for (
        const char* spine :
        {R"(<asset-clip ref="v" offset="10s" start="1/9223372036854775807s" duration="5s"><asset-clip ref="v" lane="1" offset="1/9223372036854775806s" duration="1s"/></asset-clip>)",
         R"(<title ref="g" offset="10s" duration="1/9223372036854775807s"/><asset-clip ref="v" duration="1/9223372036854775806s"/>)"}) {
        const auto document = FCPXMLDocument::parse(withSpine(spine));
        const auto timeline = flattened(*document, leftOut);
        ASSERT_FALSE(timeline);
        EXPECT_EQ(timeline.error().description(), u"The times in this block are too fine to be kept exactly."_s);
    }
}

TEST_F(ExportTest, WritesOpenTimelineIO) {
    const auto block = save(richCompound(folder / "media"));
    ASSERT_TRUE(block);
    const auto written = BlockExport::write(
        store, {.block = block->url, .format = BlockExport::Format::otio, .output = folder / "out/o.otio"});
    EXPECT_FALSE(written) << "the folder is not there";
    fs::create_directories(folder / "out");
    for (const bool relative : {false, true}) {
        const auto result = BlockExport::write(store, {.block = block->url,
                                                       .format = BlockExport::Format::otio,
                                                       .output = folder / "out/o.otio",
                                                       .areTargetsRelative = relative});
        ASSERT_TRUE(result);
        EXPECT_TRUE(result->leftOut.contains(u"Titles (1): “Lower third”"_s));
        const QJsonObject timeline =
            QJsonDocument::fromJson(QByteArray::fromStdString(readFile(result->output))).object();
        EXPECT_EQ(timeline["OTIO_SCHEMA"_L1], u"Timeline.1"_s);
        EXPECT_EQ(timeline["tracks"_L1]["OTIO_SCHEMA"_L1], u"Stack.1"_s);
        const QJsonArray tracks = timeline["tracks"_L1]["children"_L1].toArray();
        ASSERT_EQ(tracks.size(), 5);
        for (const QJsonValue track : tracks) {
            // Every track is as long as the block.
            double seconds = 0;
            for (const QJsonValue child : track["children"_L1].toArray()) {
                const QJsonValue duration = child["source_range"_L1]["duration"_L1];
                EXPECT_EQ(duration["value"_L1].toDouble(), std::round(duration["value"_L1].toDouble()));
                seconds += duration["value"_L1].toDouble() / duration["rate"_L1].toDouble();
            }
            EXPECT_NEAR(seconds, 14.014, 1e-9);
        }
        const QJsonObject clip = tracks[0]["children"_L1][0].toObject();
        EXPECT_EQ(clip["OTIO_SCHEMA"_L1], u"Clip.2"_s);
        EXPECT_EQ(clip["source_range"_L1]["duration"_L1]["value"_L1], 150) << "its media are no longer";
        EXPECT_DOUBLE_EQ(clip["source_range"_L1]["duration"_L1]["rate"_L1].toDouble(), 30000 / 1001.0);
        const QJsonValue media = clip["media_references"_L1]["DEFAULT_MEDIA"_L1];
        EXPECT_EQ(media["OTIO_SCHEMA"_L1], u"ExternalReference.1"_s);
        EXPECT_EQ(media["available_range"_L1]["duration"_L1]["value"_L1], 150);
        const fs::path file = videoElements / "A1B2C3D4-interview take 1.mov";
        EXPECT_EQ(media["target_url"_L1].toString().toUtf8(),
                  relative ? relativeReference(file, folder / "out") : fileUrl(file));
        // A still has no length of its own.
        EXPECT_TRUE(
            tracks[1]["children"_L1][1]["media_references"_L1]["DEFAULT_MEDIA"_L1]["available_range"_L1].isNull());
    }
}

TEST_F(ExportTest, WritesAnOlderFcpxml) {
    QByteArray xml = richCompound(folder / "media", 14);
    xml.replace("<adjust-conform type=\"fill\"/>", "<adjust-conform type=\"fill\"/><adjust-colorConform enabled=\"1\"/>"
                                                   "<adjust-stereo-3D convergence=\"0\"/>");
    xml.replace("<format id=\"r1\" ", "<format id=\"r1\" heroEye=\"left\" ");
    xml.replace("srcFrameRate=\"29.97\"", "srcFrameRate=\"119.88\"");
    const auto block = save(xml);
    ASSERT_TRUE(block);
    const auto result = BlockExport::write(
        store, {.block = block->url, .format = BlockExport::Format::fcpxml110, .output = {}, .folder = folder.path()});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->output, folder / "Opening.fcpxml");
    EXPECT_EQ(result->leftOut,
              QStringList({u"Settings that version 1.10 does not know (2): “heroEye”, “srcFrameRate”"_s,
                           u"Color conforming (1)"_s, u"Stereo 3D settings (1)"_s}));
    QByteArray written = QByteArray::fromStdString(readFile(result->output));
    EXPECT_TRUE(written.contains("<fcpxml version=\"1.10\">"));
    for (const char* kept :
         {"1001/30000s", "7007/1000s", "14014/1000s", "<![CDATA[<kept> & raw]]>", "<title ", "<filter-video ",
          "<project name=\"Opening\"><sequence format=\"r1\" duration=\"14014/1000s\""})
        EXPECT_TRUE(written.contains(kept)) << kept;
    for (const char* gone : {"colorConform", "stereo-3D", "heroEye", "119.88"})
        EXPECT_FALSE(written.contains(gone)) << gone;
    // What was exported is a block like the one before, and needs no second pass.
    const auto again = FCPXMLDocument::parse(written);
    EXPECT_EQ(ArrangementStore::summarize(*again).seconds, block->summary.seconds);
    EXPECT_EQ(again->derivedName(), u"Opening"_s);
    auto once = FCPXMLDocument::parse(written);
    leftOut = {};
    EXPECT_TRUE(bringToVersion110(*once, leftOut));
    EXPECT_THAT(left(), IsEmpty());

    // Up to version 1.8 the asset names its file.
    auto old = FCPXMLDocument::parse(singleClip({.file = media("old.mov")}, 8));
    EXPECT_TRUE(bringToVersion110(*old, leftOut));
    const auto references = old->media();
    ASSERT_EQ(references.size(), 1U);
    EXPECT_TRUE(references[0].holder.isNamed("media-rep"));
    EXPECT_EQ(references[0].file(), folder / "media/old.mov");
    EXPECT_THAT(left(), IsEmpty());
}

TEST_F(ExportTest, LosesNothingOnTheWay) {
    const auto block = save(singleClip(asset("clip.mov")));
    ASSERT_TRUE(block);
    const std::string stored = readFile(block->url);
    BlockExport::Request request{.block = block->url, .format = BlockExport::Format::fcpxml110, .output = block->url};
    EXPECT_FALSE(BlockExport::write(store, request));
    request.output = folder / "media";
    EXPECT_FALSE(BlockExport::write(store, request));
    request.folder = blocks;
    EXPECT_EQ(BlockExport::write(store, request)->output, blocks / "Single 2.fcpxml");
    EXPECT_EQ(readFile(block->url), stored);
    // A file that moved is found, one that is gone is told.
    fs::create_directories(root / "Recent/Final Cut Elements");
    fs::rename(videoElements / "A1B2C3D4-clip.mov", root / "Recent/Final Cut Elements/renamed.mov");
    const auto found = BlockExport::write(store, request);
    EXPECT_THAT(readFile(found->output), HasSubstr("renamed.mov"));
    EXPECT_TRUE(found->leftOut.isEmpty());
    fs::remove(root / "Recent/Final Cut Elements/renamed.mov");
    EXPECT_EQ(BlockExport::write(store, request)->leftOut,
              QStringList{u"Missing media, named all the same (1): “A1B2C3D4-clip.mov”"_s});
}

} // namespace

} // namespace quillary::test
