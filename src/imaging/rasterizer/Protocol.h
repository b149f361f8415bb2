#pragma once

#include <cstddef>
#include <cstdint>

/// What the panel and its rasteriser say to each other.
///
///     quillary-rasterizer svg|pdf enlarge|fit LONG-EDGE SECONDS
///
/// Descriptor 3 holds the document, descriptor 4 an empty shared memory. The rasteriser gives that memory its size and
/// leaves a Reply at its beginning and the pixels, premultiplied ARGB of 32 bits in the machine's order, at
/// `pixelOffset`.
namespace quillary::rasterizer {

inline constexpr int documentDescriptor = 3;
inline constexpr int pixelDescriptor = 4;
inline constexpr std::size_t pixelOffset = 4096;

enum class Stage : std::uint32_t {
    loading, ///< the document is not understood yet: ending here means that it is unreadable
    drawing, ///< it has a size and is being drawn: ending here means that there is no picture
    done,
    locked ///< the document asks for a password
};

struct Reply {
    Stage stage;
    std::uint32_t width; ///< pixels
    std::uint32_t height;
    std::uint32_t stride; ///< bytes from row to row
};

} // namespace quillary::rasterizer
