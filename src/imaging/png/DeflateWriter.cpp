#include "imaging/png/DeflateWriter.h"

#include "imaging/png/HuffmanCode.h"

#include <algorithm>
#include <bit>
#include <span>

namespace quillary::png {

namespace {

/// Four codes of this length and a started byte fit into one word.
constexpr int longestSymbolCode = 14;
constexpr int longestDistanceCode = 15;
constexpr int longestLengthCode = 7;
constexpr std::size_t longestMatch = 258;
constexpr std::size_t storedLimit = 65535;

/// A value's place in deflate's tables: a symbol and some bits after it.
struct Placed {
    std::size_t symbol;
    int extraBits;
    std::uint32_t extra;
};

/// Both tables grow alike: `steps` symbols for each doubling.
constexpr Placed placed(std::uint32_t offset, int stepBits) {
    const std::uint32_t steps = 1U << stepBits;
    if (offset < 2 * steps) return {offset, 0, 0};
    const int extraBits = std::bit_width(offset) - 1 - stepBits;
    const std::uint32_t high = offset >> extraBits;
    return {std::size_t(static_cast<std::uint32_t>(extraBits) * steps + high), extraBits,
            offset & ((1U << extraBits) - 1)};
}

constexpr Placed lengthPlace(std::size_t length) {
    if (length == longestMatch) return {285, 0, 0};
    Placed place = placed(static_cast<std::uint32_t>(length - DeflateWriter::shortestMatch), 2);
    place.symbol += 257;
    return place;
}

constexpr Placed distancePlace(std::size_t distance) {
    return placed(static_cast<std::uint32_t>(distance - 1), 1);
}

static_assert(lengthPlace(3).symbol == 257 && lengthPlace(257).symbol == 284 && lengthPlace(257).extra == 30);
static_assert(lengthPlace(13).symbol == 266 && lengthPlace(14).extra == 1 && lengthPlace(11).extraBits == 1);
static_assert(distancePlace(5).symbol == 4 && distancePlace(6).extra == 1 && distancePlace(32768).symbol == 29);

/// The next piece of a match that is longer than one symbol can tell; never leaves a rest that is too short.
constexpr std::size_t nextPiece(std::size_t length) {
    if (length <= longestMatch) return length;
    const std::size_t rest = length - longestMatch;
    return rest >= DeflateWriter::shortestMatch ? longestMatch : longestMatch - DeflateWriter::shortestMatch;
}

/// Of a very long match, how many pieces of full length can be counted at once.
constexpr std::size_t fullPieces(std::size_t length) {
    return length / longestMatch > 2 ? length / longestMatch - 2 : 0;
}

/// One entry of the run-length coded list of code lengths.
struct LengthEntry {
    std::uint8_t symbol;
    std::uint8_t extra;
};

constexpr std::size_t lengthSymbolCount = 19;

int extraBitsOf(std::uint8_t symbol) {
    return symbol == 16 ? 2 : symbol == 17 ? 3 : symbol == 18 ? 7 : 0;
}

std::vector<LengthEntry> runLengthCoded(std::span<const std::uint8_t> lengths) {
    std::vector<LengthEntry> entries;
    for (std::size_t i = 0; i < lengths.size();) {
        std::size_t run = 1;
        while (i + run < lengths.size() && lengths[i + run] == lengths[i]) ++run;
        const std::uint8_t value = lengths[i];
        i += run;
        if (value != 0) {
            entries.push_back({value, 0});
            --run;
        }
        const std::size_t most = value == 0 ? 138 : 6;
        while (run >= 3) {
            const std::size_t part = std::min(run, most);
            const bool few = part < 11;
            const std::uint8_t symbol = value != 0 ? 16 : few ? 17 : 18;
            entries.push_back({symbol, static_cast<std::uint8_t>(part - (symbol == 18 ? 11 : 3))});
            run -= part;
        }
        entries.insert(entries.end(), run, {value, 0});
    }
    return entries;
}

} // namespace

void DeflateWriter::begin(const std::uint8_t* input) {
    m_out.clear();
    m_tokens.clear();
    m_tokens.reserve(mostTokens);
    m_blockStart = m_position = input;
    m_literals = 0;
    m_symbolFrequencies.fill(0);
    m_distanceFrequencies.fill(0);
}

void DeflateWriter::match(const std::uint8_t* position, std::size_t length, std::size_t distance) {
    const auto literals = static_cast<std::size_t>(position - m_position);
    m_tokens.push_back({static_cast<std::uint32_t>(literals), static_cast<std::uint32_t>(length),
                        static_cast<std::uint32_t>(distance)});
    m_literals += literals;
    m_position = position + length;

    const std::size_t full = fullPieces(length);
    std::size_t pieces = full;
    m_symbolFrequencies[285] += static_cast<std::uint32_t>(full);
    for (length -= full * longestMatch; length > 0; ++pieces) {
        const std::size_t piece = nextPiece(length);
        ++m_symbolFrequencies[lengthPlace(piece).symbol];
        length -= piece;
    }
    m_distanceFrequencies[distancePlace(distance).symbol] += static_cast<std::uint32_t>(pieces);
    if (m_tokens.size() >= mostTokens || m_literals >= mostLiterals) endBlock();
}

void DeflateWriter::literalsTo(const std::uint8_t* end) {
    while (m_position < end) {
        const std::size_t part =
            std::min<std::size_t>(static_cast<std::size_t>(end - m_position), mostLiterals - m_literals);
        m_tokens.push_back({static_cast<std::uint32_t>(part), 0, 0});
        m_literals += part;
        m_position += part;
        if (m_tokens.size() >= mostTokens || m_literals >= mostLiterals) endBlock();
    }
}

void DeflateWriter::endBlock() {
    if (m_position == m_blockStart) return;
    // Several counters a value, since neighbours are often the same and would wait for each other.
    std::array<std::array<std::uint32_t, 256>, 4> counts{};
    const std::uint8_t* at = m_blockStart;
    for (const Token& token : m_tokens) {
        const std::uint8_t* end = at + token.literals;
        for (; end - at >= 4; at += 4)
            for (std::size_t lane = 0; lane < 4; ++lane) ++counts[lane][at[lane]];
        for (; at < end; ++at) ++counts[0][*at];
        at += token.length;
    }
    for (const auto& lane : counts)
        for (std::size_t value = 0; value < 256; ++value) m_symbolFrequencies[value] += lane[value];
    m_symbolFrequencies[endOfBlock] = 1;
    buildHuffmanCode(m_symbolFrequencies, longestSymbolCode, m_symbolLengths, m_symbolCodes);
    buildHuffmanCode(m_distanceFrequencies, longestDistanceCode, m_distanceLengths, m_distanceCodes);

    const auto bytes = static_cast<std::size_t>(m_position - m_blockStart);
    if (const std::uint64_t bits = codedBits(); bits / 8 >= bytes) {
        writeStored();
    } else {
        constexpr std::size_t headerBits = 4096;
        m_out.reserve(bits + headerBits);
        writeHeader();
        writeTokens();
    }
    m_tokens.clear();
    m_literals = 0;
    m_blockStart = m_position;
    m_symbolFrequencies.fill(0);
    m_distanceFrequencies.fill(0);
}

std::uint64_t DeflateWriter::codedBits() const {
    std::uint64_t bits = 0;
    for (std::size_t symbol = 0; symbol < symbolCount; ++symbol) {
        const int extra = symbol >= 265 && symbol < 285 ? static_cast<int>(symbol - 261) / 4 : 0;
        bits += std::uint64_t(m_symbolFrequencies[symbol]) * static_cast<unsigned>(m_symbolLengths[symbol] + extra);
    }
    for (std::size_t symbol = 0; symbol < distanceCount; ++symbol) {
        const int extra = symbol >= 4 ? static_cast<int>(symbol - 2) / 2 : 0;
        bits += std::uint64_t(m_distanceFrequencies[symbol]) * static_cast<unsigned>(m_distanceLengths[symbol] + extra);
    }
    return bits;
}

void DeflateWriter::writeStored() {
    const auto bytes = static_cast<std::size_t>(m_position - m_blockStart);
    m_out.reserve((bytes + (bytes / storedLimit + 1) * 8) * 8);
    for (const std::uint8_t* at = m_blockStart; at < m_position;) {
        const std::size_t part = std::min<std::size_t>(static_cast<std::size_t>(m_position - at), storedLimit);
        m_out.put(0, 3);
        m_out.align();
        m_out.put(part | (~part & 0xffff) << 16, 32);
        m_out.flush();
        m_out.append(at, part);
        at += part;
    }
}

void DeflateWriter::writeHeader() {
    std::size_t symbols = symbolCount;
    while (symbols > 257 && m_symbolLengths[symbols - 1] == 0) --symbols;
    std::size_t distances = distanceCount;
    while (distances > 1 && m_distanceLengths[distances - 1] == 0) --distances;

    std::vector<std::uint8_t> all(m_symbolLengths.begin(),
                                  m_symbolLengths.begin() + static_cast<std::ptrdiff_t>(symbols));
    all.insert(all.end(), m_distanceLengths.begin(),
               m_distanceLengths.begin() + static_cast<std::ptrdiff_t>(distances));
    const auto entries = runLengthCoded(all);
    std::array<std::uint32_t, lengthSymbolCount> frequencies{};
    for (const LengthEntry& entry : entries) ++frequencies[entry.symbol];
    std::array<std::uint8_t, lengthSymbolCount> lengths{};
    std::array<std::uint16_t, lengthSymbolCount> codes{};
    buildHuffmanCode(frequencies, longestLengthCode, lengths, codes);

    constexpr std::array<std::uint8_t, lengthSymbolCount> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                11, 4,  12, 3, 13, 2, 14, 1, 15};
    std::size_t told = lengthSymbolCount;
    while (told > 4 && lengths[order[told - 1]] == 0) --told;

    constexpr std::uint64_t dynamicCode = 2;
    m_out.put(dynamicCode << 1, 3);
    m_out.put(symbols - 257, 5);
    m_out.put(distances - 1, 5);
    m_out.put(told - 4, 4);
    m_out.flush();
    for (std::size_t i = 0; i < told; ++i) {
        m_out.put(lengths[order[i]], 3);
        m_out.flush();
    }
    for (const LengthEntry& entry : entries) {
        m_out.put(codes[entry.symbol], lengths[entry.symbol]);
        m_out.put(entry.extra, extraBitsOf(entry.symbol));
        m_out.flush();
    }
}

void DeflateWriter::writeTokens() {
    BitWriter& out = m_out;
    // Code and length side by side, one load a literal.
    std::array<std::uint32_t, 256> literal;
    for (std::size_t value = 0; value < 256; ++value)
        literal[value] = m_symbolCodes[value] | std::uint32_t(m_symbolLengths[value]) << 16;
    const auto putLiteral = [&](std::uint8_t value) {
        const std::uint32_t entry = literal[value];
        out.put(entry & 0xffff, static_cast<int>(entry >> 16));
    };
    const auto putPiece = [&](std::size_t length, std::size_t distance) {
        const Placed l = lengthPlace(length);
        out.put(m_symbolCodes[l.symbol], m_symbolLengths[l.symbol]);
        out.put(l.extra, l.extraBits);
        const Placed d = distancePlace(distance);
        out.put(m_distanceCodes[d.symbol], m_distanceLengths[d.symbol]);
        out.put(d.extra, d.extraBits);
        out.flush();
    };

    const std::uint8_t* at = m_blockStart;
    for (const Token& token : m_tokens) {
        const std::uint8_t* end = at + token.literals;
        for (; end - at >= 4; at += 4) {
            putLiteral(at[0]);
            putLiteral(at[1]);
            putLiteral(at[2]);
            putLiteral(at[3]);
            out.flush();
        }
        for (; at < end; ++at) {
            putLiteral(*at);
            out.flush();
        }
        for (std::size_t length = token.length; length > 0;) {
            const std::size_t piece = nextPiece(length);
            putPiece(piece, token.distance);
            length -= piece;
        }
        at += token.length;
    }
    out.put(m_symbolCodes[endOfBlock], m_symbolLengths[endOfBlock]);
    out.flush();
}

void DeflateWriter::alignedEnd(bool last) {
    endBlock();
    constexpr std::size_t room = 128;
    m_out.reserve(room);
    // An empty stored block.
    m_out.put(last ? 1 : 0, 3);
    m_out.align();
    m_out.put(0xffff0000U, 32);
    m_out.flush();
}

} // namespace quillary::png
