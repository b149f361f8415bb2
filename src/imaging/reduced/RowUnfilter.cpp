#include "imaging/reduced/RowUnfilter.h"

#include <cstdlib>

namespace quillary::reduced {

namespace {

enum Filter : std::uint8_t { none, sub, up, average, paeth };

std::uint8_t sum(int a, int b) {
    return static_cast<std::uint8_t>(a + b);
}

template <std::size_t Step>
void unfilterSub(std::uint8_t* row, std::size_t size) {
    for (std::size_t i = Step; i < size; ++i) row[i] = sum(row[i], row[i - Step]);
}

void unfilterUp(std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) row[i] = sum(row[i], above[i]);
}

/// Neighbours stay in registers; the channels' chains are independent, so that several run at once.
template <std::size_t Step>
void unfilterAverage(std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    int left[Step] = {};
    for (std::size_t i = 0; i < size; i += Step)
        for (std::size_t c = 0; c < Step; ++c) {
            left[c] = sum(row[i + c], (left[c] + (above ? above[i + c] : 0)) / 2);
            row[i + c] = static_cast<std::uint8_t>(left[c]);
        }
}

template <std::size_t Step>
void unfilterPaeth(std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    int left[Step] = {};
    int corner[Step] = {};
    for (std::size_t i = 0; i < size; i += Step)
        for (std::size_t c = 0; c < Step; ++c) {
            const int a = left[c];
            const int b = above[i + c];
            const int toA = b - corner[c];
            const int toB = a - corner[c];
            const int farA = std::abs(toA);
            const int farB = std::abs(toB);
            const int farC = std::abs(toA + toB);
            const int nearer = farB <= farC ? b : corner[c];
            const int far = farB <= farC ? farB : farC;
            left[c] = sum(row[i + c], farA <= far ? a : nearer);
            row[i + c] = static_cast<std::uint8_t>(left[c]);
            corner[c] = b;
        }
}

template <std::size_t Step>
bool unfilter(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t size) {
    switch (filter) {
    case none:
        return true;
    case sub:
        unfilterSub<Step>(row, size);
        return true;
    case up:
        if (above) unfilterUp(row, above, size);
        return true;
    case average:
        unfilterAverage<Step>(row, above, size);
        return true;
    case paeth:
        // Without a row above the nearest is always the one to the left.
        if (above)
            unfilterPaeth<Step>(row, above, size);
        else
            unfilterSub<Step>(row, size);
        return true;
    default:
        return false;
    }
}

} // namespace

bool unfilterRow(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                 std::size_t bytesPerPixel) {
    switch (bytesPerPixel) {
    case 1:
        return unfilter<1>(filter, row, above, rowBytes);
    case 2:
        return unfilter<2>(filter, row, above, rowBytes);
    case 3:
        return unfilter<3>(filter, row, above, rowBytes);
    default:
        return unfilter<4>(filter, row, above, rowBytes);
    }
}

} // namespace quillary::reduced
