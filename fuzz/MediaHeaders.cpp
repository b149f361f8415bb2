// Feeds files to the readers of sound and clip headers.
#include "fuzz/Promise.h"
#include "media/MediaError.h"
#include "media/headers/BigEndianHeaders.h"
#include "media/headers/Mp4Header.h"
#include "media/headers/MpegAudioHeader.h"
#include "media/headers/WaveHeader.h"
#include "support/TemporaryFolder.h"

#include <cmath>

using namespace quillary;
using namespace quillary::media;

namespace {

void check(std::optional<double> seconds) {
    fuzz::require(!seconds || (std::isfinite(*seconds) && *seconds >= 0), "lengths are numbers");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const auto path = folder.path() / "media";
    test::writeFile(path, std::string_view(reinterpret_cast<const char*>(data), size));
    const auto file = HeaderFile::open(path);
    if (!file) return 0;
    if (const auto wave = waveHeader(*file)) {
        fuzz::require(wave->rate > 0 && wave->frameBytes > 0, "a header makes sense");
        fuzz::require(wave->offset + wave->bytes <= size, "samples lie in the file");
    }
    if (const auto mp4 = mp4Header(*file))
        for (const auto& track : mp4->tracks) check(track.seconds);
    for (const auto read : {aiffSeconds, cafSeconds, flacSeconds}) check(read(*file));
    check(mpegAudioSeconds(*file));
    check(adtsSeconds(*file));
    return 0;
}
