#include "base/Text.h"
#include "base/Translation.h"
#include "library/LibraryCopy.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"
#include "platform/OpenFolder.h"
#include "platform/PendingFile.h"

#include <cerrno>
#include <set>

namespace quillary {

namespace fs = std::filesystem;

namespace {

/// What is to be copied, as paths below both roots.
class CopyList {
public:
    CopyList(const fs::path& from, const fs::path& to) : m_from(from) {
        std::error_code failed;
        m_excluded = fs::canonical(to, failed);
    }

    /// A folder with everything in it. Links are not followed; hidden entries, and the new root should it lie in there,
    /// are left out.
    void addFolder(const fs::path& folder) {
        folders.push_back(folder);
        for (const fs::path& entry : platform::visibleEntries(m_from / folder)) {
            const fs::path name = entry.filename();
            std::error_code gone;
            const auto status = fs::symlink_status(entry, gone);
            if (!fs::is_directory(status)) {
                if (fs::is_regular_file(status) || fs::is_symlink(status)) addFile(folder / name);
            } else if (fs::canonical(entry, gone) != m_excluded) {
                addFolder(folder / name);
            }
        }
    }

    void addFile(const fs::path& file) {
        if (m_known.insert(file).second) files.push_back(file);
    }

    std::vector<fs::path> folders; ///< outer ones before those in them
    std::vector<fs::path> files;

private:
    fs::path m_from;
    fs::path m_excluded;
    std::set<fs::path> m_known;
};

/// A way out of `whole` that is told from the link's place would lead elsewhere from the new one: it is told from the
/// top.
std::expected<void, platform::FileError> copyLink(const fs::path& link, const fs::path& to, const fs::path& whole) {
    std::error_code failed;
    fs::path target = fs::read_symlink(link, failed);
    if (!failed && target.is_relative()) {
        const fs::path told = (link.parent_path() / target).lexically_normal();
        if (told.lexically_relative(whole).native().starts_with("..")) target = told;
    }
    if (!failed) fs::create_symlink(target, to, failed);
    if (failed) return std::unexpected(platform::FileError{failed.value()});
    return {};
}

std::expected<void, platform::FileError> copyBytes(const fs::path& file, const fs::path& to,
                                                   const std::stop_token& stop) {
    auto pending = platform::PendingFile::create(to.parent_path());
    if (!pending) return std::unexpected(pending.error());
    if (const auto copied = pending->copyWhole(file, {}, stop); !copied) return copied;
    return pending->placeAs(to.filename());
}

} // namespace

QString CopyResult::summary() const {
    QString text = translate("Storage", "Copied %n file(s)", nullptr, copied);
    if (skipped > 0) text += translate("Storage", ", skipped %n already there", nullptr, skipped);
    if (failed > 0) text += translate("Storage", ", %n could not be copied", nullptr, failed);
    return text;
}

QString CopyResult::summaryWithReason() const {
    if (failures.empty()) return summary();
    const auto& [file, reason] = failures.front();
    return QStringLiteral("%1: %2: %3").arg(summary(), shown(file.filename()), reason);
}

std::expected<Storage::Copied, QString> Storage::copyFile(const fs::path& file, const fs::path& folder,
                                                          const fs::path& whole, std::stop_token stop) {
    const fs::path to = folder / file.filename();
    if (platform::isTaken(to)) return Copied::skipped;
    std::error_code failed;
    const bool link = fs::is_symlink(fs::symlink_status(file, failed));
    const auto copied = link ? copyLink(file, to, whole) : copyBytes(file, to, stop);
    if (!copied && copied.error().code == EEXIST) return Copied::skipped;
    if (!copied) return std::unexpected(copied.error().description());
    if (!link) platform::clearQuarantine(to);
    return Copied::copied;
}

CopyResult Storage::copyContents(const fs::path& from, const fs::path& to, const CopySelection& selection,
                                 const MediaOfBlocks& mediaOfBlocks, BatchProgress& progress, std::stop_token stop) {
    CopyList list(from, to);
    if (selection.images) list.addFolder(relativeFolder(Folder::images));
    if (selection.videos) list.addFolder(relativeFolder(Folder::videos));
    if (selection.audio) list.addFolder(relativeFolder(Folder::audio));
    if (selection.recent) list.addFolder(relativeFolder(Folder::recent));
    if (selection.blocks) {
        list.addFolder(blocksFolder());
        if (mediaOfBlocks)
            for (const fs::path& file : mediaOfBlocks(from)) list.addFile(file);
    }
    for (const fs::path& folder : list.folders) (void)platform::createFolders(to / folder);

    CopyResult result;
    progress.total = static_cast<int>(list.files.size());
    for (const fs::path& file : list.files) {
        if (stop.stop_requested()) break;
        const fs::path folder = to / file.parent_path();
        (void)platform::createFolders(folder);
        const auto copied = copyFile(from / file, folder, from, stop);
        if (!copied) {
            ++result.failed;
            result.failures.emplace_back(file, copied.error());
        } else {
            ++(*copied == Copied::copied ? result.copied : result.skipped);
        }
        ++progress.done;
    }
    return result;
}

} // namespace quillary
