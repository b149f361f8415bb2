#include "imaging/png/HuffmanCode.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quillary::png {

namespace {

constexpr std::size_t mostSymbols = 288;
constexpr int deepest = 15;

struct Leaf {
    std::uint32_t frequency;
    std::uint16_t symbol;
};

/// The symbols that occur, rarest first.
std::span<Leaf> leavesOf(std::span<const std::uint32_t> frequencies, std::array<Leaf, mostSymbols>& storage) {
    std::size_t count = 0;
    for (std::size_t symbol = 0; symbol < frequencies.size(); ++symbol)
        if (frequencies[symbol]) storage[count++] = {frequencies[symbol], static_cast<std::uint16_t>(symbol)};
    for (std::uint16_t symbol = 0; count < 2; ++symbol)
        if (!frequencies[symbol]) storage[count++] = {0, symbol};
    const std::span leaves(storage.data(), count);
    std::ranges::sort(leaves, [](const Leaf& a, const Leaf& b) {
        return a.frequency != b.frequency ? a.frequency < b.frequency : a.symbol < b.symbol;
    });
    return leaves;
}

using DepthCounts = std::array<std::uint32_t, mostSymbols>;

/// How many leaves of the optimal tree lie at each depth. Two queues, leaves and inner nodes, are both sorted by
/// weight.
DepthCounts optimalDepths(std::span<const Leaf> leaves) {
    const std::size_t count = leaves.size();
    std::array<std::uint64_t, mostSymbols> weight{};
    std::array<std::uint16_t, mostSymbols> parentOfLeaf{};
    std::array<std::uint16_t, mostSymbols> parentOfNode{};
    std::size_t leaf = 0;
    std::size_t node = 0;
    for (std::size_t made = 0; made + 1 < count; ++made) {
        for (int child = 0; child < 2; ++child) {
            const bool takeLeaf = leaf < count && (node == made || leaves[leaf].frequency <= weight[node]);
            weight[made] += takeLeaf ? leaves[leaf].frequency : weight[node];
            (takeLeaf ? parentOfLeaf[leaf++] : parentOfNode[node++]) = static_cast<std::uint16_t>(made);
        }
    }
    DepthCounts counts{};
    std::array<std::uint16_t, mostSymbols> depth{};
    for (std::size_t i = count - 1; i-- > 0;)
        depth[i] = i + 2 == count ? std::uint16_t(0) : static_cast<std::uint16_t>(depth[parentOfNode[i]] + 1);
    for (std::size_t i = 0; i < count; ++i) ++counts[depth[parentOfLeaf[i]] + 1U];
    return counts;
}

/// Lifts the leaves that lie too deep, and lowers as many others as that costs.
void limitDepth(DepthCounts& counts, std::size_t longest) {
    for (std::size_t depth = longest + 1; depth < counts.size(); ++depth) {
        counts[longest] += counts[depth];
        counts[depth] = 0;
    }
    std::uint64_t used = 0;
    for (std::size_t depth = 1; depth <= longest; ++depth) used += std::uint64_t(counts[depth]) << (longest - depth);
    for (; used > std::uint64_t(1) << longest; --used) {
        std::size_t depth = longest - 1;
        while (counts[depth] == 0) --depth;
        --counts[longest];
        --counts[depth];
        counts[depth + 1] += 2;
    }
}

std::uint16_t reversed(std::uint32_t code, int length) {
    std::uint32_t result = 0;
    for (int bit = 0; bit < length; ++bit) result |= (code >> bit & 1U) << (length - 1 - bit);
    return static_cast<std::uint16_t>(result);
}

} // namespace

void buildHuffmanCode(std::span<const std::uint32_t> frequencies, int longest, std::span<std::uint8_t> lengths,
                      std::span<std::uint16_t> codes) {
    std::array<Leaf, mostSymbols> storage;
    const auto leaves = leavesOf(frequencies, storage);
    auto counts = optimalDepths(leaves);
    limitDepth(counts, static_cast<std::size_t>(longest));

    std::ranges::fill(lengths, std::uint8_t(0));
    std::size_t next = 0;
    for (int length = longest; length > 0; --length)
        for (std::uint32_t i = 0; i < counts[static_cast<std::size_t>(length)]; ++i)
            lengths[leaves[next++].symbol] = static_cast<std::uint8_t>(length);

    std::array<std::uint32_t, deepest + 2> first{};
    for (int length = 1; length <= longest; ++length) {
        const auto at = static_cast<std::size_t>(length);
        first[at + 1] = (first[at] + counts[at]) << 1;
    }
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
        if (const int length = lengths[symbol]) codes[symbol] = reversed(first[lengths[symbol]]++, length);
}

} // namespace quillary::png
