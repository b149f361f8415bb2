#pragma once

#include "imaging/reduced/HuffmanSkip.h"

#include <QByteArray>
#include <array>
#include <optional>
#include <vector>

namespace quillary::reduced {

/// What a sequential JPEG says of itself before its one scan.
struct JpegHeader {
    struct Component {
        int across = 1; ///< sampling factors
        int down = 1;
        std::size_t quantization = 0; ///< numbers of tables
        std::size_t constants = 0;
        std::size_t others = 0;
        std::uint8_t name = 0;
    };

    int width = 0;
    int height = 0;
    int orientation = 1;
    QByteArray profile;
    std::vector<Component> components;                 ///< one, or three of YCbCr
    std::array<int, 4> constantSteps{};                ///< of each quantization table the first step
    std::array<std::optional<SkipTable>, 4> constants; ///< Huffman tables of the constant coefficients
    std::array<std::optional<SkipTable>, 4> others;    ///< and of all others
    std::size_t restartInterval = 0;                   ///< in units of the scan; 0: none
    Bytes scan;

    /// Absent for every other kind of JPEG.
    static std::optional<JpegHeader> read(Bytes file);
};

} // namespace quillary::reduced
