#include "imaging/codecs/Codecs.h"

#include "imaging/RasterSize.h"
#include "imaging/codecs/PixelRows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <utility>
#include <vips/vips.h>

namespace quillary::codecs {

namespace {

/// Owns one reference to an object of the library.
template <typename T>
class Reference {
public:
    Reference() = default;
    explicit Reference(T* object) : m_object(object) {}
    Reference(Reference&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Reference& operator=(Reference&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Reference() {
        if (m_object) g_object_unref(m_object);
    }
    explicit operator bool() const { return m_object != nullptr; }
    T* get() const { return m_object; }
    /// One more reference to the same object.
    Reference shared() const { return Reference(m_object ? static_cast<T*>(g_object_ref(m_object)) : nullptr); }

private:
    T* m_object = nullptr;
};
using Image = Reference<VipsImage>;
using Input = Reference<VipsSource>;

/// The result of one step of the pipeline, empty where the step failed.
template <typename Step>
Image step(Step run) {
    VipsImage* out = nullptr;
    if (run(&out) != 0) {
        vips_error_clear();
        return {};
    }
    return Image(out);
}

std::span<const std::byte> colourProfile(const Image& image) {
    const void* data = nullptr;
    std::size_t size = 0;
    if (!vips_image_get_typeof(image.get(), VIPS_META_ICC_NAME)) return {};
    if (vips_image_get_blob(image.get(), VIPS_META_ICC_NAME, &data, &size) != 0) return {};
    return {static_cast<const std::byte*>(data), size};
}

bool isCmyk(const Image& image) {
    return vips_image_get_interpretation(image.get()) == VIPS_INTERPRETATION_CMYK;
}

/// Whether the profile's table of contents names the tag.
bool hasTag(std::span<const std::byte> profile, std::string_view tag) {
    constexpr std::size_t header = 128;
    constexpr std::size_t entrySize = 12;
    if (profile.size() < header + 4) return false;
    const auto digit = [&](std::size_t at) { return std::to_integer<std::size_t>(profile[header + at]); };
    const std::size_t claimed = digit(0) << 24 | digit(1) << 16 | digit(2) << 8 | digit(3);
    const std::size_t count = std::min(claimed, (profile.size() - header - 4) / entrySize);
    for (std::size_t i = 0; i < count; ++i)
        if (std::memcmp(profile.data() + header + 4 + i * entrySize, tag.data(), tag.size()) == 0) return true;
    return false;
}

/// The intent to ask a profile for: the relative one, unless the profile is a table for another. The library passes over
/// a profile that lacks the intent.
VipsIntent intentOf(std::span<const std::byte> profile) {
    if (hasTag(profile, "A2B1") || hasTag(profile, "rXYZ")) return VIPS_INTENT_RELATIVE;
    if (hasTag(profile, "A2B0")) return VIPS_INTENT_PERCEPTUAL;
    return hasTag(profile, "A2B2") ? VIPS_INTENT_SATURATION : VIPS_INTENT_RELATIVE;
}

/// Through the embedded profile, or through the stock one for ink without a profile.
Image throughProfile(const Image& image) {
    return step([&](VipsImage** out) {
        return vips_icc_transform(image.get(), out, "srgb", "embedded", TRUE, "input_profile",
                                  isCmyk(image) ? "cmyk" : "srgb", "intent", intentOf(colourProfile(image)),
                                  "black_point_compensation", TRUE, nullptr);
    });
}

Image inSrgb(const Image& image) {
    const bool grey = vips_image_get_bands(image.get()) < 3;
    return step([&](VipsImage** out) {
        return vips_colourspace(image.get(), out, grey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB, nullptr);
    });
}

/// Eight bits a sample, grey or RGB, with or without alpha.
Image ready(const Image& image, bool asStored) {
    Image result;
    if (!asStored && (isCmyk(image) || !colourProfile(image).empty())) result = throughProfile(image);
    if (!result) result = inSrgb(image);
    if (result && vips_image_get_format(result.get()) != VIPS_FORMAT_UCHAR)
        result = step([&](VipsImage** out) { return vips_cast_uchar(result.get(), out, nullptr); });
    return result;
}

class VipsPicture : public Picture {
public:
    /// `original` is what the picture was made from.
    VipsPicture(Image image, const Image& original)
        : m_image(std::move(image))
        , m_header{vips_image_get_width(m_image.get()),
                   vips_image_get_height(m_image.get()),
                   vips_image_get_width(original.get()),
                   vips_image_get_height(original.get()),
                   vips_image_hasalpha(m_image.get()) != 0,
                   vips_image_get_orientation(m_image.get()),
                   colourProfile(m_image)} {
        if (vips_image_get_orientation_swap(original.get())) std::swap(m_header.originalWidth, m_header.originalHeight);
    }

    const Header& header() const override { return m_header; }

    bool decode(std::uint8_t* pixels, std::size_t stride, bool asStored, std::stop_token stop) override {
        const Image out = ready(m_image, asStored);
        if (!out) return false;
        const int bands = vips_image_get_bands(out.get());
        if (bands < 1 || bands > 4) return false;
        Sink sink{pixels, stride, bands, std::move(stop)};
        const bool done = vips_sink_disc(out.get(), &VipsPicture::take, &sink) == 0;
        vips_error_clear();
        return done && !sink.stop.stop_requested();
    }

private:
    struct Sink {
        std::uint8_t* pixels;
        std::size_t stride;
        int bands;
        std::stop_token stop;
    };

    static int take(VipsRegion* region, VipsRect* area, void* data) {
        const Sink& sink = *static_cast<Sink*>(data);
        if (sink.stop.stop_requested()) return -1;
        for (int y = area->top; y < area->top + area->height; ++y)
            spreadRow(VIPS_REGION_ADDR(region, 0, y), sink.bands,
                      sink.pixels + static_cast<std::size_t>(y) * sink.stride, static_cast<std::size_t>(area->width));
        return 0;
    }

    Image m_image;
    Header m_header;
};

/// Whether the first bytes are those of a format that the library is used for. Asked before the library is: to find a
/// loader it hands the bytes to every one it has, blocked ones too, and one of them never comes back from some files.
bool hasKnownSignature(std::span<const std::uint8_t> start) {
    using namespace std::string_view_literals;
    const std::string_view bytes(reinterpret_cast<const char*>(start.data()), start.size());
    constexpr std::array first{"\xff\xd8\xff"sv, "\x89PNG\r\n\x1a\n"sv, "GIF8"sv,    "II*\0"sv,
                               "MM\0*"sv,        "II+\0"sv,             "MM\0+"sv};
    if (std::ranges::any_of(first, [&](std::string_view signature) { return bytes.starts_with(signature); })) return true;
    if (bytes.starts_with("RIFF"sv)) return bytes.substr(std::min<std::size_t>(8, bytes.size())).starts_with("WEBP"sv);
    return bytes.substr(std::min<std::size_t>(4, bytes.size())).starts_with("ftyp"sv);
}

/// Formats whose other readers would show the rest of a damaged picture: here its failure is final.
bool failureIsFinal(const char* loader) {
    constexpr std::array strict{"Png", "Jpeg", "Webp", "Heif", "Gif"};
    for (const std::string_view name : strict)
        if (std::string_view(loader).find(name) != std::string_view::npos) return true;
    return false;
}

/// Names are opened as sources: the library's own way with names would take a bracket in one for options.
Input input(const Source& source) {
    if (const auto* path = std::get_if<std::string>(&source)) return Input(vips_source_new_from_file(path->c_str()));
    const auto bytes = std::get<std::span<const std::byte>>(source);
    return Input(vips_source_new_from_memory(bytes.data(), bytes.size()));
}

using Opened = std::variant<std::unique_ptr<Picture>, Failure>;

Image whole(VipsSource* from, VipsFailOn failOn) {
    return step([&](VipsImage** out) {
        *out = vips_image_new_from_source(from, "", "access", VIPS_ACCESS_SEQUENTIAL, "fail_on", failOn, nullptr);
        return *out ? 0 : -1;
    });
}

/// The library itself shrinks only half as far while it decodes.
Image reducedJpeg(VipsSource* from, const Image& original, int longestSide) {
    const int side = std::max(vips_image_get_width(original.get()), vips_image_get_height(original.get()));
    int shrink = 8;
    while (shrink > 1 && side / shrink < longestSide) shrink /= 2;
    const Image decoded = step([&](VipsImage** image) {
        return vips_jpegload_source(from, image, "shrink", shrink, "access", VIPS_ACCESS_SEQUENTIAL, nullptr);
    });
    if (!decoded) return {};
    return step([&](VipsImage** out) {
        return vips_thumbnail_image(decoded.get(), out, longestSide, "height", longestSide, "size", VIPS_SIZE_DOWN,
                                    nullptr);
    });
}

Image reducedPicture(VipsSource* from, int longestSide) {
    return step([&](VipsImage** out) {
        return vips_thumbnail_source(from, out, longestSide, "height", longestSide, "size", VIPS_SIZE_DOWN, nullptr);
    });
}

class VipsBitmaps : public Bitmaps {
public:
    Opened open(const Source& source) override {
        const Input from = input(source);
        const char* loader = loaderOf(from);
        if (!loader) return Failure::unsupported;
        Image image = whole(from.get(), VIPS_FAIL_ON_TRUNCATED);
        return image ? opened(image.shared(), image) : failed(loader);
    }

    Opened openThumbnail(const std::string& path, int longestSide) override {
        const Input from = input(path);
        const char* loader = loaderOf(from);
        if (!loader) return Failure::unsupported;
        const Image original = whole(from.get(), VIPS_FAIL_ON_NONE);
        if (!original) return failed(loader);
        // A few bytes can claim more than there is memory, and some loaders take it at their word.
        if (!isDrawable(vips_image_get_width(original.get()), vips_image_get_height(original.get())))
            return Failure::broken;
        const bool jpeg = std::string_view(loader).find("Jpeg") != std::string_view::npos;
        Image image = jpeg ? reducedJpeg(from.get(), original, longestSide) : reducedPicture(from.get(), longestSide);
        return image ? opened(std::move(image), original) : failed(loader);
    }

private:
    static const char* loaderOf(const Input& from) {
        constexpr std::size_t enough = 12;
        unsigned char* start = nullptr;
        const gint64 size = from ? vips_source_sniff_at_most(from.get(), &start, enough) : 0;
        const bool known = size > 0 && hasKnownSignature({start, static_cast<std::size_t>(size)});
        const char* loader = known ? vips_foreign_find_load_source(from.get()) : nullptr;
        vips_error_clear();
        return loader;
    }
    static Opened opened(Image image, const Image& original) {
        return std::make_unique<VipsPicture>(std::move(image), original);
    }
    static Failure failed(const char* loader) {
        return failureIsFinal(loader) ? Failure::broken : Failure::unsupported;
    }
};

} // namespace

} // namespace quillary::codecs

extern "C" [[gnu::visibility("default")]] quillary::codecs::Bitmaps* quillaryBitmaps() {
    static const bool ready = [] {
        if (vips_init("quillary") != 0) return false;
        // What is wrong with a file is told by its failure.
        g_log_set_handler(
            "VIPS", static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE),
            [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
        vips_block_untrusted_set(TRUE);
        vips_cache_set_max(0);
        return true;
    }();
    static quillary::codecs::VipsBitmaps bitmaps;
    return ready ? &bitmaps : nullptr;
}
