#pragma once

#include "imaging/png/BitWriter.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillary::png {

/// Turns a sequence of literal runs and matches over one piece of input into deflate blocks, each with a code of its
/// own. The pieces of several writers, each ended by `alignedEnd`, may be joined byte by byte to one deflate stream.
///
/// The input is covered from front to back: `match` takes all bytes between the last match and its position as
/// literals.
class DeflateWriter {
public:
    static constexpr std::size_t window = 32768;
    static constexpr std::size_t shortestMatch = 3;

    /// Starts on a new piece of input, which must outlive the writing.
    void begin(const std::uint8_t* input);

    /// `length` bytes from `position` on repeat what lies `distance` bytes before. Any length from 3.
    void match(const std::uint8_t* position, std::size_t length, std::size_t distance);
    /// Everything up to `end` that no match covers is literals.
    void literalsTo(const std::uint8_t* end);
    /// Writes what is collected as a block.
    void endBlock();
    /// Ends the piece on a byte border; `last` ends the whole stream.
    void alignedEnd(bool last);

    const BitWriter& output() const { return m_out; }

private:
    static constexpr std::size_t symbolCount = 286;
    static constexpr std::size_t distanceCount = 30;
    static constexpr std::size_t endOfBlock = 256;
    static constexpr std::size_t mostTokens = 16384;
    static constexpr std::size_t mostLiterals = 131072;

    struct Token {
        std::uint32_t literals;
        std::uint32_t length;
        std::uint32_t distance;
    };

    void writeStored();
    void writeHeader();
    void writeTokens();
    std::uint64_t codedBits() const;

    BitWriter m_out;
    const std::uint8_t* m_blockStart = nullptr;
    const std::uint8_t* m_position = nullptr; ///< covered up to here
    std::vector<Token> m_tokens;
    std::size_t m_literals = 0; ///< in this block

    std::array<std::uint32_t, symbolCount> m_symbolFrequencies{};
    std::array<std::uint32_t, distanceCount> m_distanceFrequencies{};
    std::array<std::uint8_t, symbolCount> m_symbolLengths{};
    std::array<std::uint8_t, distanceCount> m_distanceLengths{};
    std::array<std::uint16_t, symbolCount> m_symbolCodes{};
    std::array<std::uint16_t, distanceCount> m_distanceCodes{};
};

} // namespace quillary::png
