// Draws SVG documents in this process, without the limits of time and memory of the helper process that draws them for
// the panel.
#include "fuzz/Promise.h"
#include "imaging/rasterizer/Canvas.h"

#include <sys/mman.h>
#include <unistd.h>

using namespace quillary;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int side = 32;
    static const int memory = memfd_create("canvas", MFD_CLOEXEC);
    fuzz::require(ftruncate(memory, 0) == 0, "a canvas can be cleared");
    auto canvas = rasterizer::Canvas::of(memory, {RasterRule::Kind::fit, side});
    fuzz::require(canvas.has_value(), "there is a canvas");
    rasterizer::drawSvg({reinterpret_cast<const std::byte*>(data), size}, *canvas);
    return 0;
}
