#pragma once

#include "media/ffmpeg/MediaModule.h"
#include "media/ffmpeg/PlaneHalving.h"

struct AVFrame;
struct AVStream;
struct SwsContext;

namespace quillary::media {

/// Makes small pictures of decoded frames: square pixels, the frame's own colour matrix and range. Keeps what the last
/// frame needed for the next one of its kind. One thread at a time.
class FrameScaling {
public:
    FrameScaling() = default;
    ~FrameScaling();
    FrameScaling(const FrameScaling&) = delete;
    FrameScaling& operator=(const FrameScaling&) = delete;

    /// At most `longestSide` pixels on the longer side, never larger than the frame. False when out of memory or the
    /// pixels are of no known kind. Leaves the frame's time alone.
    bool scale(const AVFrame& from, int longestSide, Frame& into);

private:
    PlaneHalving m_halving;
    SwsContext* m_context = nullptr;
};

/// The turn that the track asks for; none for a matrix that is broken or no turn by quarters.
void readTurn(const AVStream& track, int (&turn)[4]);

} // namespace quillary::media
