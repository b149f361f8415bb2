#include "imaging/reduced/PngHeader.h"

#include "imaging/reduced/ReducedPicture.h"

#include <algorithm>
#include <cstring>
#include <libdeflate.h>
#include <memory>
#include <string_view>

namespace quillary::reduced {

namespace {

constexpr std::size_t largestProfile = 1 << 20;

class HeaderReader {
public:
    explicit HeaderReader(Bytes file) : m_file(file) {}

    bool read() {
        constexpr std::array<std::uint8_t, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
        if (m_file.size() < signature.size() || !std::equal(signature.begin(), signature.end(), m_file.begin()))
            return false;
        constexpr std::size_t frame = 12;
        for (std::size_t at = signature.size(); m_file.size() - at >= frame;) {
            const std::size_t length = big32(m_file, at);
            if (length > m_file.size() - at - frame) return false;
            const std::string_view type(reinterpret_cast<const char*>(m_file.data()) + at + 4, 4);
            const Bytes typeAndContent = m_file.subspan(at + 4, 4 + length);
            if (libdeflate_crc32(0, typeAndContent.data(), typeAndContent.size()) != big32(m_file, at + 8 + length))
                return false;
            at += frame + length;
            if (type == "IEND") return header.width > 0 && !header.data.empty();
            if (!take(type, typeAndContent.subspan(4))) return false;
        }
        return false;
    }

    PngHeader header;

private:
    bool take(std::string_view type, Bytes content) {
        if (type == "IHDR") return takeSize(content);
        if (header.width == 0) return false;
        if (type == "IDAT")
            header.data.insert(header.data.end(), content.begin(), content.end());
        else if (type == "PLTE")
            return takePalette(content);
        else if (type == "tRNS")
            return takeTransparency(content);
        else if (type == "iCCP")
            return takeProfile(content);
        else if (type == "eXIf")
            header.orientation = exifOrientation(content);
        else if (type == "acTL")
            return false;
        else
            return (type[0] & 0x20) != 0; // what is not critical may be passed over
        return true;
    }

    bool takeSize(Bytes content) {
        if (header.width != 0 || content.size() != 13) return false;
        header.width = big32(content, 0);
        header.height = big32(content, 4);
        header.colour = static_cast<PngHeader::Colour>(content[9]);
        constexpr std::uint32_t largest = 1U << 24;
        const bool usual = content[8] == 8 && content[10] == 0 && content[11] == 0 && content[12] == 0;
        return usual && header.bytesPerPixel() != 0 && header.width > 0 && header.height > 0 &&
               header.width <= largest && header.height <= largest;
    }

    bool takePalette(Bytes content) {
        if (content.size() % 3 != 0 || content.size() > 3 * header.palette.size()) return false;
        for (std::size_t i = 0; i < content.size() / 3; ++i) {
            const std::array<std::uint8_t, 4> colour{content[3 * i], content[3 * i + 1], content[3 * i + 2], 255};
            std::memcpy(&header.palette[i], colour.data(), colour.size());
        }
        return true;
    }

    bool takeTransparency(Bytes content) {
        // A single transparent colour of grey or RGB is too rare to be read here.
        if (header.colour != PngHeader::Colour::palette || content.size() > header.palette.size()) return false;
        header.transparentPalette = true;
        for (std::size_t i = 0; i < content.size(); ++i)
            reinterpret_cast<std::uint8_t*>(&header.palette[i])[3] = content[i];
        return true;
    }

    bool takeProfile(Bytes content) {
        const auto nameEnd = std::ranges::find(content, 0);
        if (content.end() - nameEnd < 2) return false;
        const auto profile =
            inflated(content.subspan(static_cast<std::size_t>(nameEnd - content.begin()) + 2), largestProfile, true);
        if (profile.empty()) return false;
        header.profile =
            QByteArray(reinterpret_cast<const char*>(profile.data()), static_cast<qsizetype>(profile.size()));
        return true;
    }

    Bytes m_file;
};

} // namespace

std::vector<std::uint8_t> inflated(Bytes stream, std::size_t size, bool upTo) {
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    std::vector<std::uint8_t> bytes(size);
    std::size_t actual = size;
    if (!decompressor || libdeflate_zlib_decompress(decompressor.get(), stream.data(), stream.size(), bytes.data(),
                                                    size, upTo ? &actual : nullptr) != LIBDEFLATE_SUCCESS)
        return {};
    bytes.resize(actual);
    return bytes;
}

std::size_t PngHeader::bytesPerPixel() const {
    switch (colour) {
    case Colour::grey:
    case Colour::palette:
        return 1;
    case Colour::greyAlpha:
        return 2;
    case Colour::rgb:
        return 3;
    case Colour::rgba:
        return 4;
    }
    return 0;
}

bool PngHeader::hasAlpha() const {
    return colour == Colour::greyAlpha || colour == Colour::rgba || transparentPalette;
}

std::optional<PngHeader> PngHeader::read(Bytes file) {
    HeaderReader reader(file);
    return reader.read() ? std::optional(std::move(reader.header)) : std::nullopt;
}

} // namespace quillary::reduced
