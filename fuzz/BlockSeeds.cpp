#include "fuzz/FuzzLibrary.h"
#include "fuzz/Seeds.h"
#include "samples/Clips.h"
#include "support/TemporaryFolder.h"

#include <string>

using namespace quillary::test;

namespace quillary::fuzz {

void writeBlockSeeds(const std::filesystem::path& corpus) {
    const std::filesystem::path media = mediaFolder();
    int number = 0;
    const auto seed = [&](const QByteArray& xml) {
        writeFile(corpus / ("seed " + std::to_string(++number) + ".fcpxml"), xml.toStdString());
    };
    for (const int minor : {8, 9, 13, 14}) seed(richCompound(media, minor));
    const ClipAsset clip{.file = media / "logo.png"};
    const ClipAsset plain{.id = "r3", .uid = "", .file = media / "no uid.mov"};
    seed(singleClip(clip, 8));
    seed(singleClip(plain, 13, R"(<title lane="1" name="t"/><adjust-transform scale="1 1"/>)"));
    seed(compound("Two", {clip, plain}));
    seed(fcpxml(11, "<effect id='e' uid='Glidemark'/>", "<import-options/><library><event name='e'/></library>"));
    seed("<fcpxml/>");
}

} // namespace quillary::fuzz
