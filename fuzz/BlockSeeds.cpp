// fuzz_blocks_seeds FOLDER: writes the documents that the fuzzer of blocks begins with, and the media they refer to.
#include "FuzzLibrary.h"
#include "blocks/Clips.h"
#include "support/TemporaryFolder.h"

#include <string>

using namespace quillary::test;

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const std::filesystem::path corpus = argv[1];
    const std::filesystem::path media = quillary::fuzz::mediaFolder();
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
    return 0;
}
