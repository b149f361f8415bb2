// Draws a square SVG at several sizes: icon_drawer ICON.svg NAME FOLDER SIZE... writes FOLDER/SIZExSIZE/apps/NAME.png.

#include <cairo.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <librsvg/rsvg.h>
#include <memory>
#include <string>

namespace {

bool draw(RsvgHandle* icon, int size, const std::filesystem::path& file) {
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size), cairo_surface_destroy);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> canvas(cairo_create(surface.get()), cairo_destroy);
    const RsvgRectangle whole{0, 0, static_cast<double>(size), static_cast<double>(size)};
    std::filesystem::create_directories(file.parent_path());
    return rsvg_handle_render_document(icon, canvas.get(), &whole, nullptr) &&
           cairo_surface_write_to_png(surface.get(), file.c_str()) == CAIRO_STATUS_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 5) return 2;
    const std::unique_ptr<RsvgHandle, decltype(&g_object_unref)> icon(rsvg_handle_new_from_file(argv[1], nullptr),
                                                                      g_object_unref);
    if (!icon) return std::fprintf(stderr, "%s cannot be read.\n", argv[1]), 1;
    for (int argument = 4; argument < argc; ++argument) {
        const std::string size = argv[argument];
        const auto file =
            std::filesystem::path(argv[3]) / (size + "x" + size) / "apps" / (std::string(argv[2]) + ".png");
        if (!draw(icon.get(), std::atoi(argv[argument]), file))
            return std::fprintf(stderr, "%s cannot be drawn.\n", file.c_str()), 1;
    }
    return 0;
}
