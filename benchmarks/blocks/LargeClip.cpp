#include "LargeClip.h"

#include "base/FileUrl.h"

#include <cstdint>

namespace quillary::benchmark {

namespace {

constexpr qsizetype bookmarkBytes = 820;

QByteArray uid(int number) {
    // Spread over the first characters too, as digests are.
    return QByteArray::number(static_cast<std::uint32_t>(number) * 2654435761U, 16).rightJustified(8, '0').toUpper() +
           QByteArray::number(number).rightJustified(24, '0');
}

QByteArray asset(int number, const std::filesystem::path& media) {
    const QByteArray n = QByteArray::number(number);
    return R"(        <asset id="a)" + n + R"(" name="Clip )" + n + R"(" uid=")" + uid(number) +
           R"(" start="90000/2500s" duration="12512/2500s" hasVideo="1" format="r1" hasAudio="1" videoSources="1" audioSources="1" audioChannels="2" audioRate="48000">
            <media-rep kind="original-media" sig=")" +
           uid(number) + R"(" src=")" + fileUrl(media / (n.toStdString() + ".mov")) + R"(">
                <bookmark>)" +
           QByteArray(bookmarkBytes, 'Q') + R"(</bookmark>
            </media-rep>
            <metadata>
                <md key="com.apple.proapps.studio.rawToLogConversion" value="0"/>
                <md key="com.apple.proapps.spotlight.kMDItemProfileName" value="HD 1-1-1"/>
                <md key="com.apple.proapps.studio.cameraISO" value="0"/>
                <md key="com.apple.proapps.spotlight.kMDItemCodecs"><array><string>Apple ProRes 422</string><string>Linear PCM</string></array></md>
                <md key="com.apple.proapps.mio.ingestDate" value="2026-01-02 03:04:05 +0100"/>
            </metadata>
        </asset>
)";
}

QByteArray storyline(int number) {
    const QByteArray n = QByteArray::number(number);
    return R"(            <asset-clip ref="a)" + n + R"(" offset=")" + n + R"(/25s" name="Clip )" + n +
           R"(" start="90000/2500s" duration="1/25s" audioRole="dialogue">
                <title ref="r2" lane="1" offset="90000/2500s" name="Title )" +
           n + R"(" duration="1/25s"><text><text-style ref="ts)" + n + R"(">Text</text-style></text></title>
            </asset-clip>
)";
}

} // namespace

QByteArray largeClip(int assets, const std::filesystem::path& media) {
    QByteArray xml = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE fcpxml>

<fcpxml version="1.13">
    <resources>
        <format id="r1" name="FFVideoFormat1080p25" frameDuration="100/2500s" width="1920" height="1080"/>
        <effect id="r2" name="Basic Title" uid=".../Titles.localized/Basic Title.moti"/>
)";
    for (int n = 1; n <= assets; ++n) xml += asset(n, media);
    xml += R"(        <media id="c1" name="Large"><sequence format="r1" duration="480s"><spine>
)";
    for (int n = 1; n <= assets; ++n) xml += storyline(n);
    return xml + R"(        </spine></sequence></media>
    </resources>
    <ref-clip ref="c1" name="Large" duration="480s"/>
</fcpxml>
)";
}

} // namespace quillary::benchmark
