#include "blocks/MediaCopier.h"

#include "base/NumberedName.h"
#include "base/Try.h"
#include "blocks/MediaWholeness.h"
#include "platform/FileAttributes.h"

#include <chrono>

namespace quillary {

namespace fs = std::filesystem;
using platform::FileError;
using platform::isTaken;
using platform::PendingFile;

namespace {

using platform::regularFileSize;

NumberedName copyName(const MediaCopier::Source& source) {
    const std::string name = source.file ? source.file->filename().native() : "media";
    return NumberedName::ofFileName(FinalCutElements::prefix(source.uid) + name);
}

} // namespace

void MediaCopier::announce(const Source& source, const fs::path& folder) {
    if (m_progress.report) m_announced.emplace_back(source, folder);
}

std::uint64_t MediaCopier::announcedBytes() const {
    std::uint64_t bytes = 0;
    for (const auto& [source, folder] : m_announced)
        if (source.file && !FinalCutElements::holds(*source.file) && !isTaken(folder / copyName(source).at(1)))
            bytes += regularFileSize(*source.file).value_or(0);
    return bytes;
}

bool MediaCopier::isTheAssets(const fs::path& copy, std::uintmax_t copied, const Source& source, bool numbered) const {
    const auto sourceSize = [&] { return source.file ? regularFileSize(*source.file) : std::nullopt; };
    if (source.uid.isEmpty()) {
        const auto size = sourceSize();
        return size == copied || (!size && !numbered);
    }
    const QByteArray mark = FinalCutElements::readUID(copy);
    if (!mark.isEmpty() && mark != source.uid) return false;
    // An asset that was copied before is not looked at again, unless this document holds several files of one UID or
    // the copy is but a part.
    const auto before = m_given.find(copy.native());
    const bool ofAnotherFile = before != m_given.end() && source.file && before->second != source.file->native();
    const bool isAlone = source.identity == MediaIdentity::uid;
    if (!numbered && !ofAnotherFile && isAlone && !MediaWholeness::isCutShort(copy)) return true;
    const auto size = sourceSize();
    const bool isKnownByName = isAlone || (source.identity == MediaIdentity::name && !ofAnotherFile);
    return size == copied || (!numbered && !size && isKnownByName);
}

std::optional<fs::path> MediaCopier::found(const Source& source) {
    const bool known = source.file && FinalCutElements::holds(*source.file);
    return m_elements.find(source.uid, known ? source.file->filename().native() : "", source.identity);
}

bool MediaCopier::isMissing(const Source& source, const fs::path& folder) {
    std::error_code unknown;
    if (source.file && fs::exists(*source.file, unknown)) return false;
    if (unknown && unknown != std::errc::no_such_file_or_directory) return false;
    const fs::path copy = folder / copyName(source).at(1);
    const auto copied = regularFileSize(copy);
    return !(copied && isTheAssets(copy, *copied, source, false)) && !found(source);
}

std::expected<PendingFile, FileError> MediaCopier::filled(const Source& source, const fs::path& folder) {
    if (!source.file) return std::unexpected(FileError{ENOENT});
    TRY(platform::createFolders(folder));
    if (m_cleared.insert(folder.native()).second) platform::removeAbandonedFiles(folder);
    PendingFile copy = TRY(PendingFile::create(folder));
    if (m_done == 0) m_total = announcedBytes();
    const auto report = [&](std::uint64_t done, std::uint64_t total) {
        if (m_progress.report) m_progress.report(m_done + done, std::max(m_total, m_done + total));
    };
    TRY(copy.copyFrom(*source.file, report, m_progress.stop));
    m_done += regularFileSize(*source.file).value_or(0);
    if (!source.uid.isEmpty()) copy.setAttribute(FinalCutElements::uidAttribute, source.uid.toStdString());
    copy.setAttribute(MediaWholeness::sizeAttribute, std::to_string(regularFileSize(copy.readablePath()).value_or(0)));
    copy.setModified(std::chrono::system_clock::now());
    TRY(copy.sync());
    return copy;
}

std::expected<fs::path, FileError> MediaCopier::copyMedia(const Source& source, const fs::path& folder) {
    if (source.file && FinalCutElements::holds(*source.file) && regularFileSize(*source.file)) {
        FinalCutElements::writeUID(source.uid, *source.file);
        return *source.file;
    }
    const auto given = [&](fs::path path) {
        m_given.emplace(path.native(), source.file ? source.file->native() : std::string());
        return path;
    };
    const NumberedName names = copyName(source);
    std::optional<PendingFile> copy;
    for (unsigned n = 1;;) {
        const std::string name = names.at(n);
        fs::path candidate = folder / name;
        const auto there = regularFileSize(candidate);
        if (there || isTaken(candidate)) {
            if (there && isTheAssets(candidate, *there, source, n > 1)) {
                FinalCutElements::writeUID(source.uid, candidate);
                return given(std::move(candidate));
            }
            ++n;
            continue;
        }
        if (!copy) {
            auto made = filled(source, folder);
            if (!made) {
                const auto kept = made.error().code == ENOENT ? found(source) : std::nullopt;
                if (kept) return *kept;
                return std::unexpected(made.error());
            }
            copy = *std::move(made);
        }
        const auto placed = copy->placeAs(name);
        if (!placed && placed.error().code != EEXIST) return std::unexpected(placed.error());
        if (!placed) continue; // Somebody was quicker: perhaps with the same file.
        platform::clearQuarantine(candidate);
        return given(std::move(candidate));
    }
}

} // namespace quillary
