#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

/// What the module of demuxers and decoders offers. It links large libraries, so it is loaded on first use; this header
/// therefore shows plain types only.
///
/// Every file is read by one descriptor of a regular file, nothing else is ever opened, and an operation that takes
/// longer than `operationSeconds` ends as `unreadable`.
namespace quillary::media {

enum class MediaError;
enum class TrackKind { sound, video };

inline constexpr int operationSeconds = 5;

/// Samples as a decoder gives them: 16-bit integers with the channels interleaved, or floating-point numbers, as many
/// in each plane. A plane is a channel; interleaved ones are a single plane.
struct DecodedSamples {
    std::span<const std::int16_t> integers = {};
    std::span<const float* const> planes = {}; ///< none for integers
    std::size_t planeLength = 0;
    bool empty() const { return integers.empty() && planeLength == 0; }
};

/// A sound that is being decoded: its samples in turn as 16-bit integers, channels interleaved, from the first to the
/// last one that is to be heard. One thread at a time.
class SoundReader {
public:
    virtual ~SoundReader() = default;
    virtual int channels() const = 0;
    virtual int rate() const = 0; ///< sample frames a second
    /// The next samples, whole sample frames, valid until the next call; empty at the end. What is damaged on the way
    /// is left out. A file that cannot be read any further is an error.
    virtual std::expected<std::span<const std::int16_t>, MediaError> read() = 0;
    /// The same without making integers of floating-point samples.
    virtual std::expected<DecodedSamples, MediaError> readDecoded() = 0;
    /// The next `read` begins at this time, exact to the sample where the format allows.
    virtual std::expected<void, MediaError> seek(double seconds) = 0;
};

/// One frame, four bytes a pixel: blue, green, red, 255. Not yet turned upright.
struct Frame {
    int width = 0;
    int height = 0;
    double seconds = 0;         ///< its time in the clip
    int turn[4] = {1, 0, 0, 1}; ///< the rows (a, b) and (c, d) of a turn by quarters, with or without a mirror
    std::unique_ptr<std::uint8_t[]> pixels; ///< rows from the top, without padding
};

/// A clip of which frames are fetched. One thread at a time.
class FrameReader {
public:
    virtual ~FrameReader() = default;

    struct Request {
        double seconds = 0;
        double before = 0; ///< how much earlier a frame may be
        double after = 0;  ///< how much later
        int longestSide = 0;
    };
    /// A key frame within the tolerances if there is one, because that is quick; otherwise the first frame within them.
    /// Beyond the end the last frame that can be had. Clips that cannot seek give the key frame nearest to the time.
    virtual std::expected<Frame, MediaError> frame(const Request& request, std::stop_token stop) = 0;
    /// What the header says, absent when it says nothing.
    virtual std::optional<double> seconds() = 0;
};

/// Any thread.
class MediaModule {
public:
    virtual ~MediaModule() = default;
    virtual std::expected<std::unique_ptr<SoundReader>, MediaError> openSound(const std::filesystem::path& file) = 0;
    virtual std::expected<std::unique_ptr<FrameReader>, MediaError> openClip(const std::filesystem::path& file) = 0;
    /// The length of a track by the length of its packets, all of which are read.
    virtual std::expected<double, MediaError> scannedSeconds(const std::filesystem::path& file, TrackKind kind,
                                                             std::stop_token stop) = 0;
};

/// The module and its one entry, which never gives null.
inline constexpr const char* mediaModule = "quillary-media.so";
inline constexpr const char* mediaModuleSymbol = "quillaryMedia";
using MediaModuleEntry = MediaModule* (*)();

} // namespace quillary::media
