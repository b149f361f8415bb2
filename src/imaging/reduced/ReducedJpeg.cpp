#include "imaging/reduced/JpegHeader.h"
#include "imaging/reduced/ReducedPicture.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillary::reduced {

namespace {

constexpr int blockSide = 8;

int blocks(int pixels) {
    return (pixels + blockSide - 1) / blockSide;
}

/// The means of one component's blocks, as many as whole units of the scan hold.
struct Plane {
    const SkipTable* constants;
    const SkipTable* others;
    int step;   ///< of the constant coefficients
    int across; ///< blocks in a unit
    int down;
    int width = 0;
    int previous = 0; ///< constant coefficient
    std::vector<std::uint8_t> means = {};
};

struct Planes {
    std::vector<Plane> all;
    int across = 1; ///< most blocks in a unit
    int down = 1;
    int columns = 0; ///< of units
    int rows = 0;
};

Planes planesOf(const JpegHeader& header) {
    Planes planes;
    // With one component a unit of the scan is one block, whatever its sampling says.
    const bool alone = header.components.size() == 1;
    for (const auto& component : header.components) {
        const Plane& plane = planes.all.emplace_back(Plane{
            .constants = &*header.constants[component.constants],
            .others = &*header.others[component.others],
            .step = header.constantSteps[component.quantization],
            .across = alone ? 1 : component.across,
            .down = alone ? 1 : component.down,
        });
        planes.across = std::max(planes.across, plane.across);
        planes.down = std::max(planes.down, plane.down);
    }
    planes.columns = (blocks(header.width) + planes.across - 1) / planes.across;
    planes.rows = (blocks(header.height) + planes.down - 1) / planes.down;
    for (Plane& plane : planes.all) {
        plane.width = planes.columns * plane.across;
        plane.means.resize(static_cast<std::size_t>(plane.width) * planes.rows * plane.down);
    }
    return planes;
}

/// Reads a difference of constants, without branches, since its sign and size are anybody's guess. False when the code
/// makes no sense.
bool addDifference(ScanBits& bits, const SkipTable& table, int& level) {
    constexpr int largestConstant = 1 << 14;
    // Of each size of value the least positive one, and what is to be added to those below it.
    static constexpr std::array<int, 12> positive{0, 1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 1024};
    static constexpr std::array<int, 12> offset{0, -1, -3, -7, -15, -31, -63, -127, -255, -511, -1023, -2047};
    const auto code = table.at(bits);
    if (code.bits == 0 || code.size >= positive.size()) return false;
    bits.skip(code.length);
    const auto raw = static_cast<int>(bits.peekAny(code.size));
    bits.skip(code.size);
    level += raw + (offset[code.size] & -int(raw < positive[code.size]));
    level = std::clamp(level, -largestConstant, largestConstant);
    return true;
}

bool skipOthers(ScanBits& bits, const SkipTable& table) {
    for (int at = 1; at < SkipTable::blockEnd;) {
        bits.fill();
        const auto codes = table.several(bits);
        if (at + codes.before < SkipTable::blockEnd) {
            bits.skip(codes.bits);
            at += codes.advance;
            continue;
        }
        const auto code = table.at(bits);
        if (code.bits == 0) return false;
        bits.skip(code.bits);
        at += code.advance;
    }
    return true;
}

/// One component's blocks of one unit.
bool readBlocks(ScanBits& reader, Plane& plane, int column, int row) {
    ScanBits bits = reader;
    int level = plane.previous;
    for (int y = 0; y < plane.down; ++y) {
        std::uint8_t* mean =
            &plane.means[static_cast<std::size_t>(row * plane.down + y) * plane.width + column * plane.across];
        for (int x = 0; x < plane.across; ++x) {
            bits.fill();
            if (!addDifference(bits, *plane.constants, level)) return false;
            mean[x] = static_cast<std::uint8_t>(std::clamp(128 + ((level * plane.step + 4) >> 3), 0, 255));
            if (!skipOthers(bits, *plane.others)) return false;
        }
    }
    plane.previous = level;
    reader = bits;
    return true;
}

bool readScan(const JpegHeader& header, Planes& planes) {
    ScanBits bits(header.scan);
    std::size_t untilRestart = header.restartInterval;
    for (int row = 0; row < planes.rows; ++row) {
        for (int column = 0; column < planes.columns; ++column) {
            if (header.restartInterval != 0 && untilRestart-- == 0) {
                if (!bits.restart()) return false;
                for (Plane& plane : planes.all) plane.previous = 0;
                untilRestart = header.restartInterval - 1;
            }
            for (Plane& plane : planes.all)
                if (!readBlocks(bits, plane, column, row)) return false;
        }
        if (bits.overrun()) return false;
    }
    return true;
}

std::uint8_t clamped(int value) {
    constexpr int half = 1 << 15;
    return static_cast<std::uint8_t>(std::clamp((value + half) >> 16, 0, 255));
}

QImage coloured(const JpegHeader& header, const Planes& planes) {
    QImage image(blocks(header.width), blocks(header.height), QImage::Format_RGBX8888);
    if (image.isNull()) return image;
    const bool grey = planes.all.size() == 1;
    struct Row {
        const std::uint8_t* means;
        int shift; ///< from the picture's columns to the plane's
    };
    const auto rowOf = [&](const Plane& plane, int y) -> Row {
        const int line = plane.down < planes.down ? y >> 1 : y;
        return {plane.means.data() + static_cast<std::size_t>(line) * plane.width,
                plane.across < planes.across ? 1 : 0};
    };
    for (int y = 0, width = image.width(), height = image.height(); y < height; ++y) {
        uchar* out = image.scanLine(y);
        const Row light = rowOf(planes.all[0], y);
        const Row blueness = grey ? light : rowOf(planes.all[1], y);
        const Row redness = grey ? light : rowOf(planes.all[2], y);
        for (int x = 0; x < width; ++x, out += 4) {
            const int level = light.means[x >> light.shift] << 16;
            const int blue = grey ? 0 : blueness.means[x >> blueness.shift] - 128;
            const int red = grey ? 0 : redness.means[x >> redness.shift] - 128;
            // The factors of JFIF, in 65536ths.
            out[0] = clamped(level + 91881 * red);
            out[1] = clamped(level - 22554 * blue - 46802 * red);
            out[2] = clamped(level + 116130 * blue);
            out[3] = 255;
        }
    }
    return image;
}

} // namespace

std::optional<Picture> readJpeg(Bytes file, int longestSide) {
    const auto header = JpegHeader::read(file);
    if (!header || blocks(std::max(header->width, header->height)) < longestSide) return {};
    Planes planes = planesOf(*header);
    if (!readScan(*header, planes)) return {};
    return Picture{coloured(*header, planes), {header->width, header->height}, header->orientation, header->profile};
}

} // namespace quillary::reduced
