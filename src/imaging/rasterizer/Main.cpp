#include "imaging/rasterizer/Canvas.h"
#include "platform/HelperProcess.h"

#include <charconv>
#include <dlfcn.h>
#include <filesystem>
#include <string_view>
#include <vector>

namespace {

using namespace quillary;
using namespace quillary::rasterizer;

constexpr std::uint64_t memory = std::uint64_t(4) << 30;

std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1) return std::nullopt;
    return value;
}

bool drawPdf(std::span<const std::byte> document, Canvas& canvas) {
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& place : {folder, folder / "../lib/quillary"}) {
        void* module = dlopen((place / pdfModule).c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!module) continue;
        const auto draw = reinterpret_cast<DrawPdf>(dlsym(module, drawPdfSymbol));
        return draw && draw(document, canvas);
    }
    return false;
}

} // namespace

int main(int argumentCount, char** argumentValues) {
    constexpr int failure = 1;
    constexpr int wrongUse = 2;
    const std::vector<std::string_view> words(argumentValues, argumentValues + argumentCount);
    if (words.size() != 5) return wrongUse;
    const auto edge = number(words[3]);
    const auto seconds = number(words[4]);
    if (!edge || !seconds) return wrongUse;
    platform::confineThisProcess({std::chrono::seconds(*seconds), memory});

    const auto kind = words[2] == "fit" ? RasterRule::Kind::fit : RasterRule::Kind::enlarge;
    auto canvas = Canvas::of(pixelDescriptor, {kind, *edge});
    const auto document = platform::Mapping::of(documentDescriptor, platform::Mapping::Access::read);
    if (!canvas || !document) return failure;
    const std::span<const std::byte> bytes(document->data(), document->size());
    if (!(words[1] == "pdf" ? drawPdf(bytes, *canvas) : drawSvg(bytes, *canvas))) return failure;
    canvas->finish();
    return 0;
}
