#include "imaging/reduced/Bytes.h"
#include "imaging/reduced/ReducedPicture.h"

namespace quillary::reduced {

int exifOrientation(Bytes exif) {
    constexpr std::size_t headerSize = 8;
    constexpr std::size_t entrySize = 12;
    constexpr std::uint32_t orientationTag = 0x0112;
    if (exif.size() < headerSize || exif[0] != exif[1] || (exif[0] != 'I' && exif[0] != 'M')) return 1;
    const bool little = exif[0] == 'I';
    const auto number16 = [&](std::size_t at) {
        return little ? std::uint32_t(exif[at + 1]) << 8 | exif[at] : big16(exif, at);
    };
    const auto number32 = [&](std::size_t at) {
        return little ? number16(at + 2) << 16 | number16(at) : big32(exif, at);
    };
    const std::size_t directory = number32(4);
    if (directory > exif.size() - 2) return 1;
    const std::size_t count = number16(directory);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = directory + 2 + i * entrySize;
        if (entry + entrySize > exif.size()) return 1;
        if (number16(entry) != orientationTag) continue;
        const auto value = static_cast<int>(number16(entry + 8));
        return value >= 1 && value <= 8 ? value : 1;
    }
    return 1;
}

} // namespace quillary::reduced
