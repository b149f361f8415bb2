#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stop_token>
#include <string>
#include <variant>

/// What the module of bitmap codecs offers. The module links the large libraries, so it is loaded on first use; this
/// header therefore shows plain types only.
namespace quillary::codecs {

/// A file by its path, or bytes that outlive the picture opened on them.
using Source = std::variant<std::string, std::span<const std::byte>>;

enum class Failure {
    unsupported, ///< no codec of the module knows this format
    broken       ///< one does, but the picture is damaged, cut short or beyond its limits
};

struct Header {
    std::int64_t width = 0; ///< as stored, before `orientation`
    std::int64_t height = 0;
    std::int64_t originalWidth = 0; ///< upright, of the picture that a small one was made from
    std::int64_t originalHeight = 0;
    bool hasAlpha = false;
    int orientation = 1;                      ///< as EXIF counts: 1 is upright
    std::span<const std::byte> colourProfile; ///< ICC; lives as long as the picture
};

/// A picture whose header is read and whose pixels are not.
class Picture {
public:
    virtual ~Picture() = default;
    virtual const Header& header() const = 0;

    /// Decodes into rows of `stride` bytes, four bytes a pixel: red, green, blue and straight alpha, 255 where there is
    /// none. sRGB: another colour space is converted; `asStored` passes RGB samples as they are. Once only. False when
    /// the picture turns out to be broken or a stop was requested; the pixels are then undefined.
    virtual bool decode(std::uint8_t* pixels, std::size_t stride, bool asStored, std::stop_token stop) = 0;
};

/// Any thread.
class Bitmaps {
public:
    virtual ~Bitmaps() = default;
    virtual std::variant<std::unique_ptr<Picture>, Failure> open(const Source& source) = 0;
    /// A small upright picture, at most `longestSide` pixels wide and high, never larger than the original, decoded at
    /// a reduced size where the format allows.
    virtual std::variant<std::unique_ptr<Picture>, Failure> openThumbnail(const std::string& path, int longestSide) = 0;
};

/// The module and its one entry.
inline constexpr const char* bitmapModule = "quillary-codecs.so";
inline constexpr const char* bitmapsSymbol = "quillaryBitmaps";
/// Null when the libraries could not be set up.
using BitmapsEntry = Bitmaps* (*)();

} // namespace quillary::codecs
