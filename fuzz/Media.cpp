// Opens files as the Audio and Videos shelves do: lengths, waveform, samples before and behind a seek, frames.
#include "fuzz/Promise.h"
#include "media/ClipFrames.h"
#include "media/Decoders.h"
#include "media/MediaLength.h"
#include "media/Peaks.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>
#include <cmath>

using namespace quillary;
using namespace quillary::media;

namespace {

void checkLength(const std::expected<double, MediaError>& seconds) {
    fuzz::require(!seconds || (std::isfinite(*seconds) && *seconds >= 0), "lengths are numbers");
}

void listen(const std::filesystem::path& file) {
    const auto sound = (*decoders())->openSound(file);
    if (!sound) return;
    fuzz::require((*sound)->rate() > 0 && (*sound)->channels() > 0, "a sound has a rate and channels");
    for (int i = 0; i < 3; ++i) {
        const auto samples = (*sound)->read();
        if (!samples || samples->empty()) break;
        fuzz::require(samples->size() % std::size_t((*sound)->channels()) == 0, "sample frames are whole");
    }
    if ((*sound)->seek(0.1)) static_cast<void>((*sound)->read());
}

void look(const std::filesystem::path& file) {
    constexpr int side = 64;
    auto clip = ClipFrames::open(file);
    if (!clip) return;
    for (const double at : {0.0, 0.5})
        if (const auto frame = clip->frame(at, 0.1, 0.1, side))
            fuzz::require(!frame->isNull() && frame->width() <= side && frame->height() <= side, "frames are small");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static const QCoreApplication application(*argc, *argv);
    fuzz::require(decoders().has_value(), "the decoders are there");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    const auto file = folder.path() / "media";
    test::writeFile(file, std::string_view(reinterpret_cast<const char*>(data), size));
    checkLength(audioLength(file));
    checkLength(videoLength(file));
    constexpr int count = 50;
    if (const auto peaks = readPeaks(file, count)) {
        fuzz::require(peaks->size() <= count, "a waveform has as many values as were asked for");
        for (const float peak : *peaks) fuzz::require(peak >= 0 && peak <= 1, "each of them from 0 to 1");
    }
    listen(file);
    look(file);
    return 0;
}
