#include "samples/Clips.h"

#include "base/FileUrl.h"

#include <fstream>

namespace quillary::test {

namespace {

constexpr int firstWithRepresentations = 9;

const QByteArray formats = R"x(
        <format id="r1" name="FFVideoFormat1080p2997" frameDuration="1001/30000s" width="1920" height="1080" colorSpace="1-1-1 (Rec. 709)"/>
        <format id="r1a" name="FFVideoFormat2160p25" frameDuration="100/2500s" width="3840" height="2160"/>
        <format id="r1b" name="FFVideoFormatRateUndefined" width="800" height="600"/>)x";

QByteArray sequence(const QByteArray& spine, const QByteArray& duration) {
    return R"(<sequence format="r1" duration=")" + duration +
           R"(" tcStart="0s" tcFormat="NDF" audioLayout="stereo" audioRate="48k"><spine>)" + spine +
           "</spine></sequence>";
}

} // namespace

QByteArray assetElement(const ClipAsset& asset, int minor) {
    const QByteArray src = asset.src.isEmpty() ? fileUrl(asset.file).replace('&', "&amp;") : asset.src;
    const QByteArray name = QByteArray::fromStdString(asset.file.stem().native()).replace('&', "&amp;");
    const QByteArray uid = asset.uid.isEmpty() ? QByteArray() : " uid=\"" + asset.uid + '"';
    const QByteArray bookmark = "<bookmark>Ym9va21hcms=\n  </bookmark>";
    const QByteArray open = "<asset id=\"" + asset.id + "\" name=\"" + name + '"' + uid + asset.more;
    const QByteArray metadata =
        R"(<metadata><md key="com.apple.proapps.spotlight.kMDItemOrientation" value="0"/></metadata>)";
    if (minor < firstWithRepresentations) return open + " src=\"" + src + "\">" + bookmark + metadata + "</asset>";
    return open + R"(><media-rep kind="original-media" sig="0123456789ABCDEF" src=")" + src + "\">" + bookmark +
           "</media-rep>" + metadata + "</asset>";
}

QByteArray fcpxml(int minor, const QByteArray& resources, const QByteArray& clips) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE fcpxml>\n\n<fcpxml version=\"1." +
           QByteArray::number(minor) + "\">\n    <resources>" + formats + resources + "\n    </resources>\n    " +
           clips + "\n</fcpxml>\n";
}

QByteArray singleClip(const ClipAsset& asset, int minor, const QByteArray& within) {
    return fcpxml(minor, assetElement(asset, minor),
                  R"(<asset-clip ref=")" + asset.id + R"(" name="Single" duration="5005/1000s" format="r1">)" + within +
                      "</asset-clip>");
}

QByteArray compound(const QByteArray& name, const std::vector<ClipAsset>& assets, int minor) {
    QByteArray resources;
    QByteArray spine;
    for (const ClipAsset& asset : assets) {
        resources += assetElement(asset, minor);
        spine += R"(<asset-clip ref=")" + asset.id + R"(" name="in the spine" offset="0s" duration="2s"/>)";
    }
    resources += R"(<media id="r90" name=")" + name + R"(" uid="compound" modDate="2026-01-02 03:04:05 +0100">)" +
                 sequence(spine, "2s") + "</media>";
    return fcpxml(minor, resources, R"(<ref-clip ref="r90" name=")" + name + R"(" duration="2s"/>)");
}

QByteArray richCompound(const std::filesystem::path& folder, int minor) {
    const std::vector<ClipAsset> assets{
        {"r2", "A1B2C3D4E5F60718293A4B5C6D7E8F90", folder / "interview take 1.mov"},
        {"r3", "0F1E2D3C4B5A69788796A5B4C3D2E1F0", folder / "Über & drüben #3.mp4",
         R"( start="3600s" duration="100100/30000s" hasVideo="1" hasAudio="1" format="r1a")"},
        {"r4", "5A5A5A5A5A5A5A5A5A5A5A5A5A5A5A5A", folder / "logo.png",
         R"( start="0s" duration="0s" hasVideo="1" format="r1b")"},
        {"r5", "7E7E7E7E7E7E7E7E7E7E7E7E7E7E7E7E", folder / "musik 100%.wav",
         R"( start="0s" duration="441000/44100s" hasAudio="1" audioSources="1" audioChannels="2" audioRate="44100")"},
        {"r6", "", folder / "no uid.mov"},
        {"r7", "1234123412341234ABCDABCDABCDABCD", folder / "camera raw.r3d"},
    };
    QByteArray resources = R"(
        <effect id="r10" name="Basic Title" uid=".../Titles.localized/Bumper:Opener.localized/Basic Title.localized/Basic Title.moti"/>
        <effect id="r11" name="Cross Dissolve" uid="FxPlug:4731E73A-8DAC-4113-9A30-AE85B1761265"/>
        <effect id="r12" name="gLIDEMARK Zoom" uid="~/Effects.localized/Zoom/Zoom.moef" src="file:///Effects/Zoom.moef"/>
        <!-- kept: a comment -->)";
    std::filesystem::create_directories(folder);
    for (const ClipAsset& asset : assets) {
        std::ofstream(asset.file) << "media of " << asset.file.filename().native();
        resources += "\n        " + assetElement(asset, minor);
    }
    resources += R"(<media id="r20" name="Angles"><multicam format="r1" tcStart="0s"><mc-angle name="A" angleID="a1">
            <asset-clip ref="r2" name="angle" offset="0s" duration="2s"/></mc-angle></multicam></media>
        <media id="r21" name="Inner"><sequence format="r1a" duration="2s"><spine><video ref="r4" name="deep" duration="2s"/></spine></sequence></media>
        <media id="r22" name="Opening" uid="compound" modDate="2026-01-02 03:04:05 +0100">)" +
                 sequence(R"(
            <asset-clip ref="r2" name="Interview" offset="0s" duration="7007/1000s" format="r1" audioRole="dialogue">
                <adjust-conform type="fill"/><conform-rate srcFrameRate="29.97"/>
                <title ref="r10" lane="2" name="Lower third" offset="1s" duration="3003/1000s"><text><text-style ref="ts1">Änne &amp; Söhne</text-style></text><note><![CDATA[<kept> & raw]]></note></title>
                <video ref="r4" lane="1" name="Logo" offset="1s" duration="2s" start="3600s"/>
                <asset-clip ref="r5" lane="-1" name="Music" offset="0s" duration="7007/1000s" audioRole="music"/>
                <marker start="1s" duration="1001/30000s" value="&author;"/>
                <filter-video ref="r12" name="Zoom"/>
            </asset-clip>
            <transition name="Cross Dissolve" offset="6s" duration="1s"><filter-video ref="r11" name="Cross Dissolve"/></transition>
            <sync-clip name="Synchronised" offset="7s" duration="2s"><spine><asset-clip ref="r3" name="picture"/></spine><asset-clip ref="r5" lane="-1" name="sound"/></sync-clip>
            <mc-clip ref="r20" name="Cameras" offset="9s" duration="2s"><mc-source angleID="a1" srcEnable="all"/></mc-clip>
            <ref-clip ref="r21" name="Nested" offset="11s" duration="2s"><clip lane="3" name="above" duration="1s"><video ref="r7"/></clip></ref-clip>
            <gap name="Gap" offset="13s" duration="1s"><asset-clip ref="r6" lane="1" name="over the gap" duration="1s"/></gap>)",
                          "14014/1000s") +
                 "</media>";
    QByteArray document =
        fcpxml(minor, resources,
               R"(<ref-clip ref="r22" name="Opening" duration="14014/1000s" modDate="2026-01-02 03:04:05 +0100"/>)");
    return document.replace("<!DOCTYPE fcpxml>", "<!DOCTYPE fcpxml [<!ENTITY author \"the editor\">]>");
}

} // namespace quillary::test
