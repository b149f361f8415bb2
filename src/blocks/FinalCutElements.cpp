#include "blocks/FinalCutElements.h"

#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFolder.h"

#include <QString>
#include <algorithm>
#include <array>

namespace quillary {

namespace fs = std::filesystem;

namespace {

using Folder = Storage::Folder;

/// In the order in which copies are looked for.
constexpr std::array shelves{Folder::images, Folder::videos, Folder::audio, Folder::recent};

constexpr qsizetype prefixLength = 8; ///< characters

} // namespace

FinalCutElements::FinalCutElements(const fs::path& root) {
    std::ranges::transform(shelves, m_folders.begin(),
                           [&](Folder shelf) { return root / Storage::relativeFolder(shelf) / folderName; });
}

const fs::path& FinalCutElements::folderFor(const std::optional<fs::path>& file) const {
    const Folder shelf = file ? Storage::shelf(*file).value_or(Folder::recent) : Folder::images;
    return m_folders[static_cast<std::size_t>(std::ranges::find(shelves, shelf) - shelves.begin())];
}

bool FinalCutElements::holds(const fs::path& file) {
    std::string_view folder = file.native();
    folder.remove_suffix(folder.size() - std::min(folder.rfind('/'), folder.size()));
    return folder.substr(folder.rfind('/') + 1) == folderName;
}

std::string FinalCutElements::prefix(const QByteArray& uid) {
    if (uid.isEmpty()) return {};
    // Eight characters take at most four times as many bytes.
    QString text = QString::fromUtf8(uid.first(std::min(4 * prefixLength, uid.size())));
    text.truncate(prefixLength);
    for (QChar& c : text)
        if (c == u'/' || c.category() == QChar::Other_Control) c = u'-';
    if (text.startsWith(u'.')) text[0] = u'-';
    return text.toStdString() + '-';
}

QByteArray FinalCutElements::readUID(const fs::path& file) {
    return QByteArray::fromStdString(platform::attribute(file, uidAttribute).value_or(std::string()));
}

void FinalCutElements::writeUID(const QByteArray& uid, const fs::path& file) {
    if (!uid.isEmpty() && readUID(file) != uid) platform::setAttribute(file, uidAttribute, uid.toStdString());
}

const std::vector<FinalCutElements::Entry>& FinalCutElements::entries() {
    if (m_entries) return *m_entries;
    m_entries.emplace();
    for (const fs::path& folder : m_folders) {
        // What is hidden is still being written.
        std::vector<fs::path> files = platform::visibleEntries(folder);
        std::ranges::sort(files);
        for (fs::path& file : files) {
            std::error_code vanished;
            if (!fs::is_regular_file(file, vanished)) continue;
            const std::size_t number = m_entries->size();
            QByteArray uid = readUID(file);
            if (!uid.isEmpty()) m_byUID.emplace(uid, number);
            m_byName.emplace(file.filename().native(), number);
            m_entries->push_back({std::move(file), std::move(uid)});
        }
    }
    return *m_entries;
}

std::vector<fs::path> FinalCutElements::alike(const QByteArray& uid, const std::string& name) {
    const auto& all = entries();
    std::vector<fs::path> files;
    const auto take = [&](const auto& range) {
        for (auto at = range.first; at != range.second; ++at) files.push_back(all[at->second].path);
    };
    uid.isEmpty() ? take(m_byName.equal_range(name)) : take(m_byUID.equal_range(uid));
    return files;
}

std::optional<fs::path> FinalCutElements::find(const QByteArray& uid, const std::string& likelyName,
                                               MediaIdentity identity) {
    if (identity == MediaIdentity::nothing) return {};
    const auto& all = entries();
    const auto [first, last] = m_byName.equal_range(likelyName);
    if (!uid.isEmpty()) {
        for (auto named = first; named != last; ++named)
            if (all[named->second].uid == uid) return all[named->second].path;
        const auto marked = m_byUID.lower_bound(uid);
        const bool isMarked = marked != m_byUID.end() && marked->first == uid;
        if (isMarked && identity == MediaIdentity::uid) return all[marked->second].path;
    }
    // What bears another asset's mark is never taken for this one.
    const auto free = [&](std::size_t number) { return uid.isEmpty() || all[number].uid.isEmpty(); };
    for (auto named = first; named != last; ++named)
        if (free(named->second)) return all[named->second].path;
    const std::string beginning = prefix(uid);
    if (beginning.empty() || identity == MediaIdentity::name) return {};
    for (auto named = m_byName.lower_bound(beginning); named != m_byName.end(); ++named) {
        if (!named->first.starts_with(beginning)) break;
        if (free(named->second)) return all[named->second].path;
    }
    return {};
}

} // namespace quillary
