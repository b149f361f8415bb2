#include "media/MediaLength.h"

#include "base/Try.h"
#include "media/Decoders.h"
#include "media/headers/BigEndianHeaders.h"
#include "media/headers/Mp4Header.h"
#include "media/headers/MpegAudioHeader.h"
#include "media/headers/WaveHeader.h"

namespace quillary::media {

namespace {

constexpr double bytesASecondAtLeast = 20;

std::optional<double> headerLength(const HeaderFile& file, std::stop_token stop) {
    if (const auto wave = waveHeader(file)) return static_cast<double>(wave->frames()) / wave->rate;
    if (looksLikeMp4(file)) {
        const auto header = mp4Header(file);
        return header ? header->seconds(Mp4Header::Kind::sound) : std::nullopt;
    }
    for (const auto read : {aiffSeconds, cafSeconds, flacSeconds})
        if (const auto seconds = read(file)) return seconds;
    for (const std::string_view other : {"RIFF", "RF64", "BW64", "FORM", "caff", "fLaC", "OggS"})
        if (file.startsWith(other)) return {};
    if (const auto seconds = mpegAudioSeconds(file, stop)) return seconds;
    return adtsSeconds(file, stop);
}

} // namespace

std::expected<double, MediaError> audioLength(const std::filesystem::path& file, std::stop_token stop) {
    const auto header = TRY(HeaderFile::open(file));
    if (const auto seconds = headerLength(header, stop)) return *seconds;
    if (stop.stop_requested()) return std::unexpected(MediaError::stopped);
    return TRY(decoders())->scannedSeconds(file, TrackKind::sound, stop);
}

std::expected<double, MediaError> videoLength(const std::filesystem::path& file, std::stop_token stop) {
    const auto header = TRY(HeaderFile::open(file));
    if (const auto mp4 = mp4Header(header)) {
        if (const auto seconds = mp4->seconds(Mp4Header::Kind::video)) return *seconds;
        return std::unexpected(MediaError::noVideoTrack);
    }
    MediaModule* const module = TRY(decoders());
    // Other containers count their frames in the header; a coded frame takes at least some bytes.
    if (!looksLikeMp4(header))
        if (const auto told = TRY(module->openClip(file))->seconds())
            if (*told * bytesASecondAtLeast <= static_cast<double>(header.size())) return *told;
    return module->scannedSeconds(file, TrackKind::video, stop);
}

} // namespace quillary::media
