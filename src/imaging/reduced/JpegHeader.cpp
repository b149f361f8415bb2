#include "imaging/reduced/JpegHeader.h"

#include "imaging/reduced/ReducedPicture.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace quillary::reduced {

namespace {

using namespace std::string_view_literals;

enum Marker : std::uint8_t {
    baseline = 0xc0,
    extended = 0xc1,
    huffmanTables = 0xc4,
    startOfImage = 0xd8,
    endOfImage = 0xd9,
    startOfScan = 0xda,
    quantizationTables = 0xdb,
    restartEvery = 0xdd,
    exifData = 0xe1,
    profileData = 0xe2,
    adobeData = 0xee
};

bool startsWith(Bytes bytes, std::string_view text) {
    return bytes.size() >= text.size() && std::equal(text.begin(), text.end(), bytes.begin());
}

class HeaderReader {
public:
    explicit HeaderReader(Bytes file) : m_file(file) {}

    bool read() {
        if (m_file.size() < 4 || m_file[0] != 0xff || m_file[1] != startOfImage) return false;
        m_at = 2;
        while (m_file.size() - m_at >= 4) {
            if (m_file[m_at] != 0xff) return false;
            if (m_file[m_at + 1] == 0xff) {
                ++m_at;
                continue;
            }
            const std::uint8_t marker = m_file[m_at + 1];
            const std::size_t length = big16(m_file, m_at + 2);
            if (length < 2 || length > m_file.size() - m_at - 2) return false;
            const Bytes segment = m_file.subspan(m_at + 4, length - 2);
            m_at += 2 + length;
            if (marker == startOfScan) return takeScan(segment);
            if (!take(marker, segment)) return false;
        }
        return false;
    }

    JpegHeader header;

private:
    bool take(std::uint8_t marker, Bytes segment) {
        switch (marker) {
        case baseline:
        case extended:
            return takeFrame(segment);
        case huffmanTables:
            return takeHuffmanTables(segment);
        case quantizationTables:
            return takeQuantization(segment);
        case restartEvery:
            if (segment.size() != 2) return false;
            header.restartInterval = big16(segment, 0);
            return true;
        case exifData:
            if (startsWith(segment, "Exif\0\0"sv)) header.orientation = exifOrientation(segment.subspan(6));
            return true;
        case profileData:
            return takeProfile(segment);
        case adobeData:
            // Behind the name, two version bytes and four of flags; 1 is YCbCr.
            return !startsWith(segment, "Adobe"sv) || (segment.size() >= 12 && segment[11] == 1);
        default:
            // Application data, comments; every other frame or table is another kind of JPEG.
            return marker >= 0xe0;
        }
    }

    bool takeFrame(Bytes segment) {
        constexpr std::size_t fixed = 6;
        constexpr std::size_t each = 3;
        if (!header.components.empty() || segment.size() < fixed || segment[0] != 8) return false;
        const std::size_t count = segment[5];
        if ((count != 1 && count != 3) || segment.size() != fixed + count * each) return false;
        header.height = static_cast<int>(big16(segment, 1));
        header.width = static_cast<int>(big16(segment, 3));
        if (header.width < 1 || header.height < 1) return false;
        for (std::size_t i = 0; i < count; ++i) {
            const Bytes told = segment.subspan(fixed + i * each, each);
            JpegHeader::Component component{.across = told[1] >> 4, .down = told[1] & 15, .name = told[0]};
            component.quantization = told[2];
            if (component.across < 1 || component.across > 2 || component.down < 1 || component.down > 2) return false;
            if (component.quantization >= header.constantSteps.size()) return false;
            header.components.push_back(component);
        }
        return count == 1 || !isRgb();
    }

    /// Some writers name their components instead of telling the colour space.
    bool isRgb() const {
        const auto& c = header.components;
        return c[0].name == 'R' && c[1].name == 'G' && c[2].name == 'B';
    }

    bool takeHuffmanTables(Bytes segment) {
        constexpr std::size_t counts = 16;
        while (!segment.empty()) {
            if (segment.size() < 1 + counts) return false;
            const std::size_t kind = segment[0] >> 4;
            const std::size_t number = segment[0] & 15U;
            std::size_t symbols = 0;
            for (std::size_t i = 1; i <= counts; ++i) symbols += segment[i];
            if (kind > 1 || number > 3 || segment.size() < 1 + counts + symbols) return false;
            auto table = SkipTable::make(segment.subspan(1, counts), segment.subspan(1 + counts, symbols));
            if (!table) return false;
            (kind == 0 ? header.constants : header.others)[number] = table;
            segment = segment.subspan(1 + counts + symbols);
        }
        return true;
    }

    bool takeQuantization(Bytes segment) {
        while (!segment.empty()) {
            const bool wide = segment[0] >> 4 != 0;
            const std::size_t number = segment[0] & 15U;
            const std::size_t size = 1 + (wide ? 128 : 64);
            if (number > 3 || segment.size() < size) return false;
            header.constantSteps[number] = static_cast<int>(wide ? big16(segment, 1) : segment[1]);
            segment = segment.subspan(size);
        }
        return true;
    }

    bool takeProfile(Bytes segment) {
        constexpr auto mark = "ICC_PROFILE\0"sv;
        if (!startsWith(segment, mark) || segment.size() < mark.size() + 2) return true;
        const Bytes piece = segment.subspan(mark.size() + 2);
        m_profile[segment[mark.size()]] =
            QByteArray(reinterpret_cast<const char*>(piece.data()), static_cast<qsizetype>(piece.size()));
        return true;
    }

    bool takeScan(Bytes segment) {
        const std::size_t count = header.components.size();
        if (count == 0 || segment.size() != 4 + 2 * count || segment[0] != count) return false;
        for (std::size_t i = 0; i < count; ++i) {
            auto& component = header.components[i];
            if (segment[1 + 2 * i] != component.name) return false;
            component.constants = segment[2 + 2 * i] >> 4;
            component.others = segment[2 + 2 * i] & 15U;
            if (component.constants > 3 || component.others > 3) return false;
            if (!header.constants[component.constants] || !header.others[component.others]) return false;
        }
        // All coefficients at full precision.
        const Bytes range = segment.subspan(1 + 2 * count);
        if (range[0] != 0 || range[1] != 63 || range[2] != 0) return false;
        for (const auto& [number, piece] : m_profile) header.profile += piece;
        header.scan = m_file.subspan(m_at);
        return true;
    }

    Bytes m_file;
    std::size_t m_at = 0;
    std::map<std::uint8_t, QByteArray> m_profile;
};

} // namespace

std::optional<JpegHeader> JpegHeader::read(Bytes file) {
    HeaderReader reader(file);
    return reader.read() ? std::optional(std::move(reader.header)) : std::nullopt;
}

} // namespace quillary::reduced
