#pragma once

#include "imaging/reduced/Bytes.h"

#include <array>
#include <bit>
#include <cstring>
#include <optional>

namespace quillary::reduced {

/// The bits of a JPEG scan, most significant first. Behind the data, at a marker or the end, come zeros.
class ScanBits {
public:
    explicit ScanBits(Bytes scan) : m_at(scan.data()), m_end(scan.data() + scan.size()) {}

    /// At least 32 bits are in sight afterwards.
    void fill() {
        if (m_count >= 32) return;
        if (m_end - m_at >= 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, m_at, 8);
            if constexpr (std::endian::native == std::endian::little) word = __builtin_bswap64(word);
            if (!holdsAllOnes(word)) {
                const int bytes = (63 - m_count) >> 3;
                m_bits |= word >> m_count;
                m_at += bytes;
                m_count += bytes * 8;
                m_bits &= ~std::uint64_t(0) << (64 - m_count);
                return;
            }
        }
        // By value, so that in a loop the bits stay in registers.
        *this = filledBytewise(*this);
    }

    std::uint32_t peek(int bits) const { return static_cast<std::uint32_t>(m_bits >> (64 - bits)); }
    std::uint32_t peekAny(int bits) const {
        return static_cast<std::uint32_t>(m_bits >> 1 >> (63 - bits));
    } ///< or none
    void skip(int bits) {
        m_bits <<= bits;
        m_count -= bits;
    }

    /// Whether more was read than there is.
    bool overrun() const { return m_count < m_padding; }

    /// Goes on behind the restart marker that must come next.
    bool restart() {
        if (overrun() || m_count - m_padding >= 8) return false;
        while (m_end - m_at >= 2 && m_at[0] == 0xff && m_at[1] == 0xff) ++m_at;
        if (m_end - m_at < 2 || m_at[0] != 0xff || m_at[1] < 0xd0 || m_at[1] > 0xd7) return false;
        m_at += 2;
        m_bits = 0;
        m_count = 0;
        m_padding = 0;
        return true;
    }

private:
    static bool holdsAllOnes(std::uint64_t word) {
        const std::uint64_t inverted = ~word;
        return ((inverted - 0x0101010101010101U) & word & 0x8080808080808080U) != 0;
    }

    [[gnu::noinline]] static ScanBits filledBytewise(ScanBits bits) {
        while (bits.m_count <= 56) {
            std::uint64_t byte = 0;
            if (bits.m_at < bits.m_end && *bits.m_at != 0xff) {
                byte = *bits.m_at++;
            } else if (bits.m_end - bits.m_at >= 2 && bits.m_at[1] == 0) {
                byte = 0xff;
                bits.m_at += 2;
            } else {
                bits.m_padding += 8;
            }
            bits.m_bits |= byte << (56 - bits.m_count);
            bits.m_count += 8;
        }
        return bits;
    }

    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
    std::uint64_t m_bits = 0;
    int m_count = 0;   ///< bits in sight
    int m_padding = 0; ///< of those, or of those already read, zeros that are not in the file
};

/// A Huffman table that tells what a code means without decoding its value.
class SkipTable {
public:
    static constexpr int blockEnd = 64;

    struct alignas(4) Entry {
        std::uint8_t bits = 0;    ///< of the code and of the value behind it; 0: no such code
        std::uint8_t advance = 0; ///< coefficients that it stands for; the rest of the block counts as `blockEnd`
        std::uint8_t length = 0;  ///< of the code alone
        std::uint8_t size = 0;    ///< of the value
    };
    /// As many codes with their values as lie whole within the bits that a table can look at.
    struct alignas(4) Several {
        std::uint8_t bits = 0;          ///< of all of them
        std::uint8_t before = blockEnd; ///< coefficients of all but the last; they must not end the block
        std::uint8_t advance = 0;       ///< of all of them
    };

    /// From a DHT segment's counts and symbols. None when they are no Huffman code.
    static std::optional<SkipTable> make(Bytes counts, Bytes symbols);

    /// What the bits in sight begin with.
    Entry at(const ScanBits& bits) const {
        const Entry entry = m_short[bits.peek(shortBits)];
        return entry.bits ? entry : longCode(bits);
    }
    Several several(const ScanBits& bits) const { return m_several[bits.peek(shortBits)]; }

private:
    static constexpr int shortBits = 12;
    static constexpr int longestCode = 16;

    static Entry entry(int length, std::uint8_t symbol);
    Several severalIn(std::uint32_t window) const;
    Entry longCode(const ScanBits& bits) const;

    std::array<Entry, std::size_t(1) << shortBits> m_short{};
    std::array<Several, std::size_t(1) << shortBits> m_several{};
    std::array<std::uint32_t, longestCode + 1> m_firstCode{};
    std::array<std::uint32_t, longestCode + 1> m_firstIndex{};
    std::array<std::uint32_t, longestCode + 1> m_count{};
    std::array<std::uint8_t, 256> m_symbols{};
};

} // namespace quillary::reduced
