#include "imaging/rasterizer/Canvas.h"

#include <unistd.h>
#include <utility>

namespace quillary::rasterizer {

bool Canvas::map(std::size_t size) {
    if (ftruncate(m_descriptor, static_cast<off_t>(size)) != 0) return false;
    auto memory = platform::Mapping::of(m_descriptor, platform::Mapping::Access::write);
    if (!memory) return false;
    m_memory.emplace(std::move(*memory));
    return true;
}

std::optional<Canvas> Canvas::of(int descriptor, RasterRule rule) {
    Canvas canvas(descriptor, rule);
    if (!canvas.map(pixelOffset)) return std::nullopt;
    return canvas;
}

std::optional<Pixels> Canvas::begin(double width, double height) {
    reply().stage = Stage::drawing;
    const auto size = m_rule(width, height);
    if (!size || !isDrawable(size->width, size->height)) return std::nullopt;
    const auto stride = static_cast<std::size_t>(size->width) * 4;
    m_memory.reset();
    if (!map(pixelOffset + stride * static_cast<std::size_t>(size->height))) return std::nullopt;
    reply().width = static_cast<std::uint32_t>(size->width);
    reply().height = static_cast<std::uint32_t>(size->height);
    reply().stride = static_cast<std::uint32_t>(stride);
    return Pixels{reinterpret_cast<std::uint8_t*>(m_memory->data()) + pixelOffset, static_cast<int>(size->width),
                  static_cast<int>(size->height), stride};
}

void Canvas::tellLocked() {
    reply().stage = Stage::locked;
}

void Canvas::finish() {
    reply().stage = Stage::done;
}

} // namespace quillary::rasterizer
