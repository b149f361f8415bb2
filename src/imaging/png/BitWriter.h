#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace quillary::png {

/// Appends bits, least significant first, to a growing array of bytes. The caller makes room beforehand.
class BitWriter {
public:
    /// Room for this many bits more, and for the tail of a whole word.
    void reserve(std::size_t bits) {
        const std::size_t needed = m_size + bits / 8 + 2 * sizeof(std::uint64_t);
        if (m_bytes.size() < needed) m_bytes.resize(needed + needed / 4);
    }

    /// At most 56 bits between two calls of `flush`.
    void put(std::uint64_t bits, int count) {
        m_word |= bits << m_count;
        m_count += count;
    }
    void flush() {
        if constexpr (std::endian::native == std::endian::big) m_word = std::byteswap(m_word);
        std::memcpy(m_bytes.data() + m_size, &m_word, sizeof m_word);
        if constexpr (std::endian::native == std::endian::big) m_word = std::byteswap(m_word);
        const int whole = m_count / 8;
        m_size += static_cast<std::size_t>(whole);
        m_word >>= whole * 8;
        m_count %= 8;
    }
    /// Fills the last byte up.
    void align() {
        m_count = (m_count + 7) / 8 * 8;
        flush();
    }
    /// Whole bytes, when aligned.
    void append(const std::uint8_t* bytes, std::size_t count) {
        std::memcpy(m_bytes.data() + m_size, bytes, count);
        m_size += count;
    }

    const std::uint8_t* data() const { return m_bytes.data(); }
    /// Whole bytes written so far.
    std::size_t size() const { return m_size; }
    void clear() {
        m_size = 0;
        m_word = 0;
        m_count = 0;
    }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_size = 0;
    std::uint64_t m_word = 0;
    int m_count = 0;
};

} // namespace quillary::png
