#pragma once

#include <cstdint>
#include <span>

namespace quillary::png {

/// A prefix code of at most `longest` bits a symbol, near the best for these frequencies. `lengths` gets 0 where a
/// symbol does not occur, `codes` the bits in the order in which deflate writes them (least significant first). At
/// least two symbols get a code, so that it is always complete. All spans have the same size, which is more than one.
void buildHuffmanCode(std::span<const std::uint32_t> frequencies, int longest, std::span<std::uint8_t> lengths,
                      std::span<std::uint16_t> codes);

} // namespace quillary::png
