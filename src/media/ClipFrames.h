#pragma once

#include "media/MediaError.h"

#include <QImage>
#include <expected>
#include <filesystem>
#include <memory>
#include <stop_token>

namespace quillary::media {

class FrameReader;

/// An opened clip that gives small upright frames. One thread at a time.
class ClipFrames {
public:
    static std::expected<ClipFrames, MediaError> open(const std::filesystem::path& clip);
    ClipFrames(ClipFrames&&) noexcept;
    ClipFrames& operator=(ClipFrames&&) noexcept;
    ~ClipFrames();

    /// A frame from `before` seconds before the time to `after` seconds behind it, at best a key frame; beyond the end
    /// the last one. At most `longestSide` pixels on the longer side.
    std::expected<QImage, MediaError> frame(double seconds, double before, double after, int longestSide,
                                            std::stop_token stop = {});
    /// 0 when the header says nothing.
    double seconds();

private:
    explicit ClipFrames(std::unique_ptr<FrameReader> reader);
    std::unique_ptr<FrameReader> m_reader;
};

/// The frame that stands for a clip: from 10 % of its length but at most 2 seconds into it, from its beginning when the
/// length is unknown. Null when there is none. Any thread.
QImage clipThumbnail(const std::filesystem::path& clip, int longestSide, std::stop_token stop = {});

} // namespace quillary::media
