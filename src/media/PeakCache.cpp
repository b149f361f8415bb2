#include "media/PeakCache.h"

#include "base/FileUrl.h"
#include "platform/OpenFolder.h"
#include "platform/PendingFile.h"

#include <QCryptographicHash>
#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// What an entry begins with; the values follow as this machine keeps them.
struct Head {
    std::array<char, 8> magic{'Q', 'P', 'e', 'a', 'k', 's', '0', '1'};
    std::int64_t modified = 0;
    std::uint64_t size = 0;
    std::int32_t asked = 0;
    std::int32_t held = 0;
    bool operator==(const Head&) const = default;
};

std::string nameFor(const fs::path& url) {
    return QCryptographicHash::hash(fileUrl(url), QCryptographicHash::Md5).toHex().toStdString();
}

Head headFor(const PeakCache::FileState& state, int count, std::size_t held) {
    Head head;
    head.modified = state.modified;
    head.size = state.size;
    head.asked = count;
    head.held = static_cast<std::int32_t>(held);
    return head;
}

} // namespace

std::optional<std::vector<float>> PeakCache::read(const fs::path& url, const FileState& state, int count) const {
    std::ifstream in(m_folder / nameFor(url), std::ios::binary);
    Head head;
    if (!in.read(reinterpret_cast<char*>(&head), sizeof head)) return {};
    if (head.held < 0 || head.held > count) return {};
    std::vector<float> peaks(static_cast<std::size_t>(head.held));
    if (head != headFor(state, count, peaks.size())) return {};
    const auto bytes = static_cast<std::streamsize>(peaks.size() * sizeof(float));
    if (!in.read(reinterpret_cast<char*>(peaks.data()), bytes)) return {};
    return peaks;
}

void PeakCache::write(const fs::path& url, const FileState& state, int count, const std::vector<float>& peaks) const {
    if (!m_folder.is_absolute() || !platform::createFolders(m_folder)) return;
    const Head head = headFor(state, count, peaks.size());
    auto pending = platform::PendingFile::create(m_folder);
    if (pending && pending->write(std::as_bytes(std::span(&head, 1))) &&
        pending->write(std::as_bytes(std::span(peaks))))
        static_cast<void>(pending->replace(m_folder / nameFor(url)));
}

void PeakCache::prune(std::size_t most) const {
    std::error_code failed;
    std::vector<std::pair<fs::file_time_type, fs::path>> entries;
    for (const fs::path& entry : platform::visibleEntries(m_folder))
        entries.emplace_back(fs::last_write_time(entry, failed), entry);
    if (entries.size() <= most) return;
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(entries.size() - most);
    std::ranges::nth_element(entries, end);
    for (auto entry = entries.begin(); entry != end; ++entry) fs::remove(entry->second, failed);
}

} // namespace quillary
