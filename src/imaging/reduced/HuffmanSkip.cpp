#include "imaging/reduced/HuffmanSkip.h"

#include <algorithm>

namespace quillary::reduced {

SkipTable::Entry SkipTable::entry(int length, std::uint8_t symbol) {
    const int run = symbol >> 4;
    const int size = symbol & 15;
    constexpr int zeroRun = 15;
    const int advance = size == 0 && run != zeroRun ? blockEnd : run + 1;
    return {static_cast<std::uint8_t>(length + size), static_cast<std::uint8_t>(advance),
            static_cast<std::uint8_t>(length), static_cast<std::uint8_t>(size)};
}

std::optional<SkipTable> SkipTable::make(Bytes counts, Bytes symbols) {
    if (counts.size() != longestCode || symbols.size() > 256) return {};
    SkipTable table;
    std::ranges::copy(symbols, table.m_symbols.begin());
    std::uint32_t code = 0;
    std::uint32_t index = 0;
    for (int length = 1; length <= longestCode; ++length, code <<= 1) {
        const std::uint32_t count = counts[static_cast<std::size_t>(length) - 1];
        if (index + count > symbols.size() || code + count > std::uint32_t(1) << length) return {};
        table.m_firstCode[length] = code;
        table.m_firstIndex[length] = index;
        table.m_count[length] = count;
        for (std::uint32_t i = 0; i < count && length <= shortBits; ++i) {
            const std::size_t first = std::size_t(code + i) << (shortBits - length);
            std::fill_n(table.m_short.begin() + first, std::size_t(1) << (shortBits - length),
                        entry(length, symbols[index + i]));
        }
        code += count;
        index += count;
    }
    if (index != symbols.size()) return {};
    for (std::uint32_t window = 0; window < table.m_several.size(); ++window)
        table.m_several[window] = table.severalIn(window);
    return table;
}

SkipTable::Several SkipTable::severalIn(std::uint32_t window) const {
    constexpr std::uint32_t mask = (1U << shortBits) - 1;
    Several all;
    while (all.advance < blockEnd) {
        const Entry next = m_short[window << all.bits & mask];
        if (next.bits == 0 || all.bits + next.bits > shortBits) break;
        all.before = all.advance;
        all.bits = static_cast<std::uint8_t>(all.bits + next.bits);
        all.advance = static_cast<std::uint8_t>(all.advance + next.advance);
    }
    return all;
}

SkipTable::Entry SkipTable::longCode(const ScanBits& bits) const {
    for (int length = shortBits + 1; length <= longestCode; ++length) {
        const std::uint32_t offset = bits.peek(length) - m_firstCode[length];
        if (offset < m_count[length]) return entry(length, m_symbols[m_firstIndex[length] + offset]);
    }
    return {};
}

} // namespace quillary::reduced
