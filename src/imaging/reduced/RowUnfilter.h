#pragma once

#include <cstddef>
#include <cstdint>

namespace quillary::reduced {

/// Turns a filtered row of a PNG back into samples, in place. `above` is the finished row before, null for the first.
/// False when there is no such filter.
bool unfilterRow(std::uint8_t filter, std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
                 std::size_t bytesPerPixel);

} // namespace quillary::reduced
