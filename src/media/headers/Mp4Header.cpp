#include "media/headers/Mp4Header.h"

#include <algorithm>

namespace quillary::media {

namespace {

constexpr std::uint64_t tableEntriesAtMost = 1'000'000;

/// The boxes of a range, one after the other.
class Boxes {
public:
    Boxes(const HeaderFile& file, std::uint64_t first, std::uint64_t limit)
        : m_file(file), m_next(first), m_end(limit) {}

    /// False at the end and at a box that does not fit.
    bool next() {
        if (m_next + 8 > m_end) return false;
        const std::uint64_t at = m_next;
        std::uint64_t size = m_file.be32(at);
        std::uint64_t head = 8;
        if (size == 1) {
            size = m_file.be64(at + 8);
            head = 16;
        } else if (size == 0) {
            size = m_end - at;
        }
        m_at = at;
        body = at + head;
        m_overhangs = size < head || size > m_end - at;
        if (m_overhangs) return false;
        end = m_next = at + size;
        return true;
    }
    bool is(std::string_view type) const { return m_file.holds(m_at + 4, type); }
    /// The walk ended at a box that is longer than what it lies in.
    bool overhangs() const { return m_overhangs; }

    std::uint64_t body = 0;
    std::uint64_t end = 0;

private:
    const HeaderFile& m_file;
    std::uint64_t m_next;
    std::uint64_t m_end;
    std::uint64_t m_at = 0;
    bool m_overhangs = false;
};

struct TrackReader {
    const HeaderFile& file;
    std::uint32_t movieScale;

    Mp4Header::Kind kind = Mp4Header::Kind::other;
    std::uint32_t scale = 0;
    std::uint64_t samplesTime = 0; ///< in `scale`
    std::uint64_t timedSamples = 0;
    std::uint64_t samples = 0;
    std::uint64_t editTime = 0; ///< in `movieScale`
    bool fits = true;

    void read(std::uint64_t begin, std::uint64_t end) {
        for (Boxes box(file, begin, end); box.next();) {
            for (const std::string_view parent : {"edts", "mdia", "minf", "stbl"})
                if (box.is(parent)) read(box.body, box.end);
            if (box.is("elst")) readEdits(box.body, box.end);
            if (box.is("mdhd")) scale = file.be32(box.body + (file.u8(box.body) == 1 ? 20 : 12));
            if (box.is("hdlr") && kind == Mp4Header::Kind::other) {
                if (file.holds(box.body + 8, "soun")) kind = Mp4Header::Kind::sound;
                if (file.holds(box.body + 8, "vide")) kind = Mp4Header::Kind::video;
            }
            if (box.is("stts")) readTimes(box.body, box.end);
            if (box.is("stsz")) samples = file.be32(box.body + 8);
            if (box.is("stz2")) samples = file.be32(box.body + 8);
        }
    }

    void readEdits(std::uint64_t body, std::uint64_t end) {
        const bool wide = file.u8(body) == 1;
        const std::uint64_t entry = wide ? 20 : 12;
        const std::uint64_t count = std::min<std::uint64_t>(file.be32(body + 4), (end - body) / entry);
        for (std::uint64_t i = 0; i < std::min(count, tableEntriesAtMost); ++i) {
            const std::uint64_t at = body + 8 + i * entry;
            editTime += wide ? file.be64(at) : file.be32(at);
        }
    }

    void readTimes(std::uint64_t body, std::uint64_t end) {
        const std::uint64_t count = file.be32(body + 4);
        if (count > (end - body) / 8 || count > tableEntriesAtMost) {
            fits = false;
            return;
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            const std::uint64_t number = file.be32(body + 8 + i * 8);
            timedSamples += number;
            samplesTime += number * file.be32(body + 12 + i * 8);
        }
    }

    /// Absent when the track's tables contradict each other.
    std::optional<double> seconds() const {
        if (!fits || scale == 0 || timedSamples == 0 || timedSamples != samples) return {};
        const double held = static_cast<double>(samplesTime) / scale;
        if (editTime == 0 || movieScale == 0) return held;
        // An edit may begin with a pause, or play a part more than once; a longer one than that is no honest one.
        const double edited = static_cast<double>(editTime) / movieScale;
        if (edited > 2 * held + 60) return {};
        return edited;
    }
};

/// Less than this a second no codec writes.
constexpr double bytesASecondAtLeast = 20;

} // namespace

std::optional<double> Mp4Header::seconds(Kind kind) const {
    std::optional<double> longest;
    for (const Track& track : tracks)
        if (track.kind == kind) longest = std::max(longest.value_or(0), track.seconds);
    return longest;
}

bool looksLikeMp4(const HeaderFile& file) {
    for (const std::string_view type : {"ftyp", "moov", "mdat", "wide", "free", "skip", "pnot"})
        if (file.holds(4, type)) return true;
    return false;
}

std::optional<Mp4Header> mp4Header(const HeaderFile& file) {
    if (!looksLikeMp4(file)) return {};
    Mp4Header header;
    bool found = false;
    Boxes top(file, 0, file.size());
    while (top.next()) {
        if (top.is("moof")) return {};
        if (!top.is("moov") || found) continue;
        found = true;
        std::uint32_t movieScale = 0;
        for (Boxes box(file, top.body, top.end); box.next();) {
            if (box.is("mvex") || box.is("cmov")) return {};
            if (box.is("mvhd")) movieScale = file.be32(box.body + (file.u8(box.body) == 1 ? 20 : 12));
        }
        for (Boxes box(file, top.body, top.end); box.next();) {
            if (!box.is("trak")) continue;
            TrackReader track{file, movieScale};
            track.read(box.body, box.end);
            if (track.kind == Mp4Header::Kind::other) continue;
            const auto seconds = track.seconds();
            if (!seconds || *seconds * bytesASecondAtLeast > static_cast<double>(file.size())) return {};
            header.tracks.push_back({track.kind, *seconds});
        }
    }
    if (!found || top.overhangs()) return {};
    return header;
}

} // namespace quillary::media
