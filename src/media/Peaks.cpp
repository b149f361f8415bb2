#include "media/Peaks.h"

#include "base/Try.h"
#include "media/Decoders.h"
#include "media/MediaLength.h"
#include "media/PeakLoop.h"
#include "media/headers/WaveHeader.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace quillary::media {

namespace {

using PeakList = std::expected<std::vector<float>, MediaError>;

/// Samples that lie in the file as they are needed are not decoded.
bool isPlain(const WaveHeader& wave) {
    return wave.integers && wave.bits == 16 && std::endian::native == std::endian::little;
}

void tell(const PeaksReport& report, const PeakLoop& loop) {
    if (!report) return;
    const auto done = static_cast<std::uint64_t>(loop.seen());
    report(done, std::max(done, static_cast<std::uint64_t>(loop.expected())));
}

PeakList plainPeaks(const HeaderFile& file, const WaveHeader& wave, int count, const std::stop_token& stop,
                    const PeaksReport& report) {
    const std::uint64_t length = wave.frames() * static_cast<std::uint64_t>(wave.frameBytes);
    PeakLoop loop(static_cast<std::int64_t>(length / sizeof(std::int16_t)), count);
    for (std::uint64_t at = 0; at < length;) {
        if (stop.stop_requested()) return std::unexpected(MediaError::stopped);
        const auto wanted = std::min<std::uint64_t>(HeaderFile::capacity, length - at);
        const auto bytes = file.bytes(wave.offset + at, static_cast<std::size_t>(wanted));
        if (bytes.empty()) break; // it became shorter meanwhile
        loop.add({reinterpret_cast<const std::int16_t*>(bytes.data()), bytes.size() / sizeof(std::int16_t)});
        at += bytes.size();
        tell(report, loop);
    }
    return loop.finish();
}

} // namespace

PeakList readPeaks(const std::filesystem::path& file, int count, std::stop_token stop, const PeaksReport& report) {
    {
        const auto header = TRY(HeaderFile::open(file));
        if (const auto wave = waveHeader(header)) {
            if (wave->frames() == 0) return std::vector<float>();
            if (isPlain(*wave)) return plainPeaks(header, *wave, count, stop, report);
        }
    }
    const double seconds = TRY(audioLength(file, stop));
    auto opened = TRY(decoders())->openSound(file);
    if (!opened && opened.error() == MediaError::noSamples) return std::vector<float>();
    const auto reader = TRY(std::move(opened));
    // A length that was made of whole frames must not lose one of them to rounding.
    constexpr double rounding = 1e-6;
    const auto frames = static_cast<std::int64_t>(std::min(seconds * reader->rate() + rounding, 1e15));
    PeakLoop loop(frames * reader->channels(), count);
    while (true) {
        if (stop.stop_requested()) return std::unexpected(MediaError::stopped);
        const auto samples = TRY(reader->readDecoded());
        if (samples.empty()) return loop.finish();
        if (samples.planes.empty())
            loop.add(samples.integers);
        else
            loop.add(samples.planes, samples.planeLength);
        tell(report, loop);
    }
}

} // namespace quillary::media
