#include "media/ClipFrames.h"

#include "base/Try.h"
#include "media/Decoders.h"

#include <QTransform>
#include <algorithm>
#include <bit>

namespace quillary::media {

ClipFrames::ClipFrames(std::unique_ptr<FrameReader> reader) : m_reader(std::move(reader)) {}
ClipFrames::ClipFrames(ClipFrames&&) noexcept = default;
ClipFrames& ClipFrames::operator=(ClipFrames&&) noexcept = default;
ClipFrames::~ClipFrames() = default;

std::expected<ClipFrames, MediaError> ClipFrames::open(const std::filesystem::path& clip) {
    MediaModule* const module = TRY(decoders());
    return ClipFrames(TRY(module->openClip(clip)));
}

std::expected<QImage, MediaError> ClipFrames::frame(double seconds, double before, double after, int longestSide,
                                                    std::stop_token stop) {
    Frame frame = TRY(m_reader->frame({seconds, before, after, longestSide}, stop));
    static_assert(std::endian::native == std::endian::little, "QRgb lies in memory as blue, green, red, alpha");
    std::uint8_t* const pixels = frame.pixels.release();
    const QImage picture(
        pixels, frame.width, frame.height, qsizetype(frame.width) * 4, QImage::Format_RGB32,
        [](void* memory) { delete[] static_cast<std::uint8_t*>(memory); }, pixels);
    if (picture.isNull()) return std::unexpected(MediaError::unreadable);
    const auto [a, b, c, d] = frame.turn;
    const QTransform turn(a, b, c, d, 0, 0);
    return turn.isIdentity() ? picture : picture.transformed(turn);
}

double ClipFrames::seconds() {
    return m_reader->seconds().value_or(0);
}

QImage clipThumbnail(const std::filesystem::path& clip, int longestSide, std::stop_token stop) {
    auto frames = ClipFrames::open(clip);
    if (!frames) return {};
    constexpr double part = 0.1, latest = 2, before = 1, after = 2;
    const double at = std::min(std::max(frames->seconds(), 0.0) * part, latest);
    return frames->frame(at, before, after, longestSide, stop).value_or(QImage());
}

} // namespace quillary::media
