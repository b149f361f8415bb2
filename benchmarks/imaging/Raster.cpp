/// SVG at a long edge of 4096 through the rasteriser's process, against the drawing library in this process into a
/// buffer. Goal: at most 1.1 of its processor time.
///
///     bench_raster [--runs N] [--warm N] [--only TEXT]

#include "imaging/Rasterizer.h"
#include "support/Rounds.h"

#include <QCoreApplication>
#include <cstdio>
#include <librsvg/rsvg.h>
#include <random>

namespace {

constexpr int longEdge = 4096;

QByteArray icon() {
    return R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" fill="none" stroke="#1e3a8a" stroke-width="2"
        stroke-linejoin="round"><path d="M12 3 3 8l9 5 9-5-9-5Z"/><path d="m3 16 9 5 9-5"/><path d="m3 12 9 5 9-5"/>
        <circle cx="12" cy="8" r="1.5" fill="#dc2626" stroke="none"/></svg>)svg";
}

QByteArray curves() {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> unit(0, 1);
    const auto number = [](double value) { return QByteArray::number(value, 'f', 1); };
    QByteArray document = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="2048" height="1536">)svg";
    constexpr int count = 5000;
    for (int i = 0; i < count; ++i) {
        const double x = unit(random) * 2048;
        const double y = unit(random) * 1536;
        QByteArray path = "M" + number(x) + ' ' + number(y);
        for (int k = 0; k < 6; ++k) {
            path += k == 0 ? "C" : " ";
            for (int point = 0; point < 3; ++point)
                path += number(x + 120 * unit(random) - 60) + ' ' + number(y + 120 * unit(random) - 60) + ' ';
        }
        document += "<path d=\"" + path + "Z\" fill=\"#" + QByteArray::number(0x100000 + random() % 0xe00000, 16) +
                    "\" fill-opacity=\"" + number(0.4 + 0.6 * unit(random)) + "\"/>";
    }
    return document + "</svg>";
}

QByteArray filters() {
    return R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="1024" height="768"><defs>
        <radialGradient id="r"><stop offset="0" stop-color="#fff"/><stop offset="1" stop-color="#264653"/></radialGradient>
        <filter id="b" x="-20%" y="-20%" width="140%" height="140%"><feGaussianBlur stdDeviation="9"/></filter>
        <filter id="s" x="-20%" y="-20%" width="150%" height="150%"><feGaussianBlur in="SourceAlpha" stdDeviation="6"/>
        <feOffset dx="8" dy="10" result="o"/><feMerge><feMergeNode in="o"/><feMergeNode in="SourceGraphic"/></feMerge></filter>
        <mask id="m"><rect width="500" height="400" fill="url(#r)"/></mask></defs><rect width="1024" height="768" fill="url(#r)"/>
        <g filter="url(#b)"><circle cx="470" cy="180" r="80" fill="#8338ec"/></g><g filter="url(#s)">
        <rect x="60" y="440" width="300" height="150" rx="28" fill="#fff"/></g>
        <g mask="url(#m)"><rect width="500" height="400" fill="#e76f51"/></g></svg>)svg";
}

void drawHere(const QByteArray& document) {
    RsvgHandle* handle = rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(document.constData()),
                                                   static_cast<gsize>(document.size()), nullptr);
    double width = 0;
    double height = 0;
    rsvg_handle_get_intrinsic_size_in_pixels(handle, &width, &height);
    const auto size = *quillary::RasterRule{quillary::RasterRule::Kind::enlarge, longEdge}(width, height);
    cairo_surface_t* surface =
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(size.width), static_cast<int>(size.height));
    cairo_t* context = cairo_create(surface);
    const RsvgRectangle viewport{0, 0, static_cast<double>(size.width), static_cast<double>(size.height)};
    rsvg_handle_render_document(handle, context, &viewport, nullptr);
    cairo_surface_flush(surface);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    g_object_unref(handle);
}

} // namespace

int main(int argumentCount, char** arguments) {
    using namespace quillary;
    using namespace quillary::benchmark;
    const QCoreApplication application(argumentCount, arguments);
    for (const auto& [name, document] :
         {std::pair{"icon", icon()}, {"5,000 curves", curves()}, {"filters", filters()}}) {
        Rounds rounds(std::string("SVG, ") + name, Rounds::options(argumentCount, arguments));
        rounds.add("librsvg in this process", [&document] { drawHere(document); });
        rounds.add("Rasterizer::draw", [&document] {
            if (!Rasterizer::draw(document, Rasterizer::Format::svg, {RasterRule::Kind::enlarge, longEdge}))
                std::printf("NOT DRAWN\n");
        });
        rounds.print();
    }
}
