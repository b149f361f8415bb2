#include "imaging/rasterizer/Canvas.h"

#include <algorithm>
#include <librsvg/rsvg.h>
#include <memory>

namespace quillary::rasterizer {

namespace {

constexpr double pixelsPerInch = 96;
/// The widest and highest surface that the drawing library takes.
constexpr int widestSurface = 32'000;

struct Release {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
template <typename T>
using Held = std::unique_ptr<T, Release>;

std::optional<double> pixels(const RsvgLength& length) {
    switch (length.unit) {
    case RSVG_UNIT_PX:
        return length.length;
    case RSVG_UNIT_IN:
        return length.length * pixelsPerInch;
    case RSVG_UNIT_CM:
        return length.length * pixelsPerInch / 2.54;
    case RSVG_UNIT_MM:
        return length.length * pixelsPerInch / 25.4;
    case RSVG_UNIT_PT:
        return length.length * pixelsPerInch / 72;
    case RSVG_UNIT_PC:
        return length.length * pixelsPerInch / 6;
    default:
        return std::nullopt;
    }
}

struct PageSize {
    double width;
    double height;
};

/// What the document says of its size in pixels, else the shape of its view box, else all that it draws right and below
/// of the origin.
PageSize pageSize(RsvgHandle* handle) {
    PageSize result{};
    if (rsvg_handle_get_intrinsic_size_in_pixels(handle, &result.width, &result.height)) return result;

    gboolean hasWidth = FALSE;
    gboolean hasHeight = FALSE;
    gboolean hasViewBox = FALSE;
    RsvgLength width{};
    RsvgLength height{};
    RsvgRectangle viewBox{};
    rsvg_handle_get_intrinsic_dimensions(handle, &hasWidth, &width, &hasHeight, &height, &hasViewBox, &viewBox);
    if (hasViewBox) {
        const auto fixedWidth = hasWidth ? pixels(width) : std::nullopt;
        const auto fixedHeight = hasHeight ? pixels(height) : std::nullopt;
        const double shape = viewBox.width / viewBox.height;
        if (fixedWidth) return {*fixedWidth, *fixedWidth / shape};
        if (fixedHeight) return {*fixedHeight * shape, *fixedHeight};
        return {viewBox.width, viewBox.height};
    }
    const RsvgRectangle usual{0, 0, 300, 150};
    RsvgRectangle drawn{};
    rsvg_handle_get_geometry_for_layer(handle, nullptr, &usual, &drawn, nullptr, nullptr);
    return {drawn.x + drawn.width, drawn.y + drawn.height};
}

bool drawPart(RsvgHandle* handle, PageSize page, const Pixels& pixels, int x, int y) {
    const int width = std::min(pixels.width - x, widestSurface);
    const int height = std::min(pixels.height - y, widestSurface);
    auto* data = pixels.data + static_cast<std::size_t>(y) * pixels.stride + static_cast<std::size_t>(x) * 4;
    const Held<cairo_surface_t> surface(
        cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, width, height, static_cast<int>(pixels.stride)));
    const Held<cairo_t> context(cairo_create(surface.get()));
    cairo_translate(context.get(), -x, -y);
    cairo_scale(context.get(), pixels.width / page.width, pixels.height / page.height);
    const RsvgRectangle viewport{0, 0, page.width, page.height};
    const bool drawn = rsvg_handle_render_document(handle, context.get(), &viewport, nullptr);
    cairo_surface_flush(surface.get());
    return drawn && cairo_status(context.get()) == CAIRO_STATUS_SUCCESS;
}

} // namespace

bool drawSvg(std::span<const std::byte> document, Canvas& canvas) {
    // From bytes and without a base address, so that no reference leads to a file or to the network.
    const Held<RsvgHandle> handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(document.data()), document.size(), nullptr));
    if (!handle) return false;
    rsvg_handle_set_dpi(handle.get(), pixelsPerInch);
    const PageSize whole = pageSize(handle.get());
    const auto pixels = canvas.begin(whole.width, whole.height);
    if (!pixels) return false;
    for (int y = 0; y < pixels->height; y += widestSurface)
        for (int x = 0; x < pixels->width; x += widestSurface)
            if (!drawPart(handle.get(), whole, *pixels, x, y)) return false;
    return true;
}

} // namespace quillary::rasterizer
