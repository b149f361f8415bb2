#include "blocks/MediaCopier.h"

#include "base/NumberedName.h"
#include "base/Try.h"
#include "platform/FileAttributes.h"

#include <chrono>

namespace quillary {

namespace fs = std::filesystem;
using platform::FileError;
using platform::PendingFile;

namespace {

std::optional<std::uintmax_t> sizeOf(const fs::path& file) {
    std::error_code failed;
    if (!fs::is_regular_file(file, failed)) return {};
    const auto size = fs::file_size(file, failed);
    return failed ? std::nullopt : std::optional(size);
}

bool isTaken(const fs::path& path) {
    std::error_code failed;
    return fs::exists(fs::symlink_status(path, failed));
}

NumberedName copyName(const MediaCopier::Source& source) {
    const std::string name = source.file ? source.file->filename().native() : "media";
    return NumberedName::ofFileName(FinalCutElements::prefix(source.uid) + name);
}

} // namespace

void MediaCopier::announce(const Source& source, const fs::path& folder) {
    if (!source.file || FinalCutElements::holds(*source.file) || isTaken(folder / copyName(source).at(1))) return;
    m_total += sizeOf(*source.file).value_or(0);
}

bool MediaCopier::isTheAssets(const fs::path& copy, const Source& source, bool numbered) const {
    const auto copied = sizeOf(copy);
    if (!copied) return false;
    const auto size = source.file ? sizeOf(*source.file) : std::nullopt;
    const bool sameSize = size == copied;
    if (source.uid.isEmpty()) return sameSize || (!size && !numbered);
    const QByteArray mark = FinalCutElements::readUID(copy);
    if (!mark.isEmpty() && mark != source.uid) return false;
    // An asset that was copied before is not looked at again, unless this document holds two files of one UID.
    const auto before = m_given.find(copy);
    const bool ofAnotherFile = before != m_given.end() && before->second != source.file.value_or(fs::path());
    return sameSize || (!numbered && !(ofAnotherFile && size));
}

std::expected<PendingFile, FileError> MediaCopier::filled(const Source& source, const fs::path& folder) {
    if (!source.file) return std::unexpected(FileError{ENOENT});
    TRY(platform::createFolders(folder));
    PendingFile copy = TRY(PendingFile::create(folder));
    const auto report = [&](std::uint64_t done, std::uint64_t total) {
        if (m_progress.report) m_progress.report(m_done + done, std::max(m_total, m_done + total));
    };
    TRY(copy.copyFrom(*source.file, report, m_progress.stop));
    m_done += sizeOf(*source.file).value_or(0);
    if (!source.uid.isEmpty()) copy.setAttribute(FinalCutElements::uidAttribute, source.uid.toStdString());
    copy.setModified(std::chrono::system_clock::now());
    TRY(copy.sync());
    return copy;
}

fs::path MediaCopier::given(fs::path copy, const Source& source) {
    m_given.emplace(copy, source.file.value_or(fs::path()));
    return copy;
}

std::expected<fs::path, FileError> MediaCopier::copyMedia(const Source& source, const fs::path& folder) {
    if (source.file && FinalCutElements::holds(*source.file) && sizeOf(*source.file)) {
        FinalCutElements::writeUID(source.uid, *source.file);
        return *source.file;
    }
    const NumberedName names = copyName(source);
    std::optional<PendingFile> copy;
    for (unsigned n = 1;;) {
        const std::string name = names.at(n);
        fs::path candidate = folder / name;
        if (isTaken(candidate)) {
            if (isTheAssets(candidate, source, n > 1)) {
                FinalCutElements::writeUID(source.uid, candidate);
                return given(std::move(candidate), source);
            }
            ++n;
            continue;
        }
        if (!copy) {
            auto made = filled(source, folder);
            if (!made) {
                const bool known = source.file && FinalCutElements::holds(*source.file);
                const auto found = m_elements.find(source.uid, known ? source.file->filename().native() : "");
                if (made.error().code == ENOENT && found) return *found;
                return std::unexpected(made.error());
            }
            copy = *std::move(made);
        }
        const auto placed = copy->placeAs(name);
        if (!placed && placed.error().code != EEXIST) return std::unexpected(placed.error());
        if (!placed) continue; // Somebody was quicker: perhaps with the same file.
        platform::clearQuarantine(candidate);
        return given(std::move(candidate), source);
    }
}

} // namespace quillary
