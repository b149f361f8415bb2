#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockExport.h"
#include "blocks/BlockFiles.h"
#include "blocks/FinalCutElements.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "platform/PendingFolder.h"

#include <QLocale>
#include <map>
#include <set>

namespace quillary::BlockExport {

namespace fs = std::filesystem;
using platform::FileError;
using platform::PendingFile;

namespace {

constexpr const char* mediaFolder = "Media";

std::expected<void, FileError> copy(const fs::path& source, const fs::path& target,
                                    const PendingFile::Progress& progress, const std::stop_token& stop) {
    PendingFile file = TRY(PendingFile::create(target.parent_path()));
    TRY(file.copyWhole(source, progress, stop));
    return file.placeAs(target.filename().native());
}

std::expected<void, FileError> write(const QByteArray& bytes, const fs::path& target) {
    PendingFile file = TRY(PendingFile::holding(target.parent_path(), bytes));
    TRY(file.sync());
    return file.placeAs(target.filename().native());
}

/// Without what the library puts in front of the names of its copies.
std::string originalName(const fs::path& file, const QByteArray& uid) {
    const std::string name = file.filename().native();
    const std::string prefix = FinalCutElements::prefix(uid);
    const bool isCopy = FinalCutElements::holds(file) && name.starts_with(prefix) && name.size() > prefix.size();
    return isCopy ? name.substr(prefix.size()) : name;
}

/// A file system that does not tell its space is taken to have enough.
std::expected<void, ArrangementFailure> checkSpace(const fs::path& folder, std::uintmax_t bytes) {
    std::error_code failed;
    const fs::space_info space = fs::space(folder, failed);
    if (failed || space.available >= bytes) return {};
    const QLocale locale;
    return std::unexpected(
        ArrangementFailure::unreadable(translate("Blocks", "There is not enough space: %1 are needed, %2 are free.")
                                           .arg(locale.formattedDataSize(static_cast<qint64>(bytes)),
                                                locale.formattedDataSize(static_cast<qint64>(space.available)))));
}

/// The files of a document, each with a name of its own.
class Packing {
public:
    /// Absent for what is no file.
    std::optional<std::string> add(const FCPXMLDocument::MediaReference& reference) {
        const auto file = reference.file();
        const auto size = file ? platform::regularFileSize(*file) : std::nullopt;
        if (!size) {
            missing.append(reference.shownName());
            return {};
        }
        const auto [place, isNew] = m_names.try_emplace(*file);
        if (!isNew) return place->second;
        const NumberedName names = NumberedName::ofFileName(originalName(*file, reference.uid));
        unsigned n = 1;
        while (!m_taken.insert(names.at(n)).second) ++n;
        bytes += *size;
        return place->second = names.at(n);
    }
    const std::map<fs::path, std::string>& names() const { return m_names; }

    std::uintmax_t bytes = 0;
    QStringList missing;

private:
    std::map<fs::path, std::string> m_names;
    std::set<std::string> m_taken;
};

} // namespace

std::expected<Portable, ArrangementFailure> makePortable(ArrangementStore& store, const fs::path& block,
                                                         const fs::path& parent, const QString& name,
                                                         const MediaProgress& progress) {
    std::error_code failed;
    const fs::path place = fs::absolute(parent, failed).lexically_normal();
    const auto failure = [&](const FileError& error) {
        return std::unexpected(
            ArrangementFailure(StorageError::couldNotWrite(place / pathOf(name), error.description())));
    };
    FCPXMLDocument document = TRY(store.document(block));
    Packing packing;
    auto references = document.media();
    for (auto& reference : references) {
        const auto packed = packing.add(reference);
        if (packed) reference.setFile(place / mediaFolder / *packed, place);
    }
    packing.missing.removeDuplicates();
    if (!packing.missing.isEmpty())
        return std::unexpected(
            ArrangementFailure::noMedia(shownStem(block), ArrangementFailure::missing(packing.missing)));
    TRY(checkSpace(place, packing.bytes));

    platform::removeAbandonedFiles(place);
    auto folder = platform::PendingFolder::create(place);
    if (!folder) return failure(folder.error());
    if (const auto made = platform::createFolders(folder->path() / mediaFolder); !made) return failure(made.error());
    std::uintmax_t done = 0;
    for (const auto& [source, packed] : packing.names()) {
        const auto report = [&](std::uint64_t bytes, std::uint64_t) {
            if (progress.report) progress.report(done + bytes, packing.bytes);
        };
        const auto copied = copy(source, folder->path() / mediaFolder / packed, report, progress.stop);
        if (!copied && copied.error().code == ECANCELED) return failure(copied.error());
        if (!copied)
            return std::unexpected(ArrangementFailure::noMedia(
                shownStem(block),
                QStringLiteral("%1: %2").arg(shown(source.filename()), copied.error().description())));
        done += platform::regularFileSize(source).value_or(0);
    }
    const std::string stem = blockStem(shownStem(block));
    const fs::path written = folder->path() / blockNames(stem).at(1);
    if (const auto made = write(TRY(document.serialize()), written); !made) return failure(made.error());
    if (posterStampOf(block))
        if (const auto made = copy(posterPath(block), posterPath(written), {}, progress.stop); !made)
            return failure(made.error());
    if (progress.stop.stop_requested()) return failure(FileError{ECANCELED});
    const auto placed = folder->place({blockStem(name), {}});
    if (!placed) return failure(placed.error());
    Portable portable{.folder = *placed, .document = *placed / written.filename(), .media = {}};
    for (const auto& [source, packed] : packing.names()) portable.media.push_back(*placed / mediaFolder / packed);
    return portable;
}

} // namespace quillary::BlockExport
