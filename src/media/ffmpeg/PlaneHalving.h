#pragma once

#include <array>
#include <cstdint>
#include <vector>

struct AVFrame;
struct AVPixFmtDescriptor;

namespace quillary::media {

/// Averages the planes of decoded frames, two by two samples at a time, which is several times quicker than scaling
/// them to any size. Keeps its memory for the next frame. One thread at a time.
class PlaneHalving {
public:
    /// A frame as a scaler sees it: planes with the bytes from row to row, sizes in pixels.
    struct Planes {
        std::array<const std::uint8_t*, 4> data{};
        std::array<int, 4> stride{};
        int width = 0;
        int height = 0;
    };

    /// The frame, halved for as long as that leaves at least these many pixels in both directions. Samples that do not
    /// lie in planes of their own stay as they are. Valid while the frame lives and until the next call.
    Planes reduced(const AVFrame& frame, int leastWidth, int leastHeight);

private:
    static Planes halved(const Planes& from, const AVPixFmtDescriptor& format, int bytes,
                         std::vector<std::uint8_t>& memory);

    std::vector<std::vector<std::uint8_t>> m_memory; ///< of each step
};

} // namespace quillary::media
