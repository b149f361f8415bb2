#include "imaging/png/RowFilter.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <cstring>

namespace quillary::png {

namespace {

// The loops below run over what has a left neighbour; the first pixel's neighbours to the left are 0.

QUILLARY_MULTIVERSION void subRow(const std::uint8_t* row, std::uint8_t* out, std::size_t from, std::size_t to) {
    const std::uint8_t* left = row - from;
    for (std::size_t i = from; i < to; ++i) out[i] = static_cast<std::uint8_t>(row[i] - left[i]);
}

QUILLARY_MULTIVERSION void upRow(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out,
                                 std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) out[i] = static_cast<std::uint8_t>(row[i] - above[i]);
}

QUILLARY_MULTIVERSION void averageRow(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out,
                                      std::size_t from, std::size_t to) {
    const std::uint8_t* left = row - from;
    for (std::size_t i = from; i < to; ++i) {
        // The mean rounded down, without leaving eight bits.
        const auto mean = static_cast<std::uint8_t>((left[i] & above[i]) + ((left[i] ^ above[i]) >> 1));
        out[i] = static_cast<std::uint8_t>(row[i] - mean);
    }
}

QUILLARY_MULTIVERSION void paethRow(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out,
                                    std::size_t from, std::size_t to) {
    const std::uint8_t* left = row - from;
    const std::uint8_t* corner = above - from;
    for (std::size_t i = from; i < to; ++i) {
        const auto a = static_cast<std::int16_t>(left[i]);
        const auto b = static_cast<std::int16_t>(above[i]);
        const auto c = static_cast<std::int16_t>(corner[i]);
        const auto toA = static_cast<std::int16_t>(b - c);
        const auto toB = static_cast<std::int16_t>(a - c);
        const auto toC = static_cast<std::int16_t>(toA + toB);
        const auto farA = static_cast<std::int16_t>(toA < 0 ? -toA : toA);
        const auto farB = static_cast<std::int16_t>(toB < 0 ? -toB : toB);
        const auto farC = static_cast<std::int16_t>(toC < 0 ? -toC : toC);
        const std::int16_t nearer = farB <= farC ? b : c;
        const std::int16_t far = farB <= farC ? farB : farC;
        out[i] = static_cast<std::uint8_t>(row[i] - (farA <= far ? a : nearer));
    }
}

/// The sum of the bytes' distances from 0, as signed ones.
QUILLARY_MULTIVERSION std::uint64_t sumOfDifferences(const std::uint8_t* bytes, std::size_t count) {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < count;) {
        // Short enough for narrow sums, which more of fit into a register.
        constexpr std::size_t part = 256;
        const std::size_t end = std::min(count, i + part);
        std::uint16_t narrow = 0;
        for (; i < end; ++i) {
            const std::uint8_t value = bytes[i];
            const auto negated = static_cast<std::uint8_t>(-value);
            narrow = static_cast<std::uint16_t>(narrow + (value < negated ? value : negated));
        }
        sum += narrow;
    }
    return sum;
}

} // namespace

RowFilter::RowFilter(std::size_t rowBytes, std::size_t bytesPerPixel)
    : m_rowBytes(rowBytes), m_bytesPerPixel(bytesPerPixel), m_empty(rowBytes), m_trial(rowBytes + 1) {}

void RowFilter::apply(Filter filter, const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out) const {
    if (!above) above = m_empty.data();
    *out++ = static_cast<std::uint8_t>(filter);
    const std::size_t pixel = m_bytesPerPixel;
    switch (filter) {
    case Filter::none:
        std::memcpy(out, row, m_rowBytes);
        return;
    case Filter::sub:
        std::memcpy(out, row, pixel);
        subRow(row, out, pixel, m_rowBytes);
        return;
    case Filter::up:
        upRow(row, above, out, 0, m_rowBytes);
        return;
    case Filter::average:
        for (std::size_t i = 0; i < pixel; ++i) out[i] = static_cast<std::uint8_t>(row[i] - (above[i] >> 1));
        averageRow(row, above, out, pixel, m_rowBytes);
        return;
    case Filter::paeth:
        upRow(row, above, out, 0, pixel);
        paethRow(row, above, out, pixel, m_rowBytes);
        return;
    }
}

void RowFilter::applyBest(const std::uint8_t* row, const std::uint8_t* above, std::uint8_t* out) {
    apply(Filter::none, row, above, out);
    std::uint64_t least = sumOfDifferences(out + 1, m_rowBytes);
    for (const Filter filter : {Filter::sub, Filter::up, Filter::average, Filter::paeth}) {
        apply(filter, row, above, m_trial.data());
        const std::uint64_t sum = sumOfDifferences(m_trial.data() + 1, m_rowBytes);
        if (sum >= least) continue;
        least = sum;
        std::memcpy(out, m_trial.data(), m_rowBytes + 1);
    }
}

} // namespace quillary::png
