#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quillary::reduced {

using Bytes = std::span<const std::uint8_t>;

/// Numbers of a file, most significant byte first. The caller has checked that they are there.
inline std::uint32_t big16(Bytes bytes, std::size_t at) {
    return std::uint32_t(bytes[at]) << 8 | bytes[at + 1];
}
inline std::uint32_t big32(Bytes bytes, std::size_t at) {
    return big16(bytes, at) << 16 | big16(bytes, at + 2);
}

} // namespace quillary::reduced
