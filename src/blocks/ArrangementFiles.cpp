#include "base/Text.h"
#include "base/Translation.h"
#include "base/Try.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"
#include "imaging/PngEncoder.h"
#include "library/Storage.h"
#include "platform/FileAttributes.h"

namespace quillary {

namespace fs = std::filesystem;
using platform::isTaken;
using platform::PendingFile;

namespace {

std::expected<void, platform::FileError> writePoster(const QByteArray& png, const fs::path& poster) {
    PendingFile file = TRY(PendingFile::holding(poster.parent_path(), png));
    TRY(file.sync());
    return file.replace(poster);
}

} // namespace

ArrangementStore::Result ArrangementStore::ownBlock(const fs::path& block) {
    const fs::path root = TRY(m_storage.root());
    std::error_code failed;
    const fs::path file = fs::absolute(block, failed).lexically_normal();
    if (lowercaseExtension(file) != blockExtension || m_storage.shelfFolderOf(file) != root / Storage::blocksFolder())
        return std::unexpected(
            Failure::unreadable(translate("Blocks", "%1 is not a block.").arg(shown(file.filename()))));
    if (!isTaken(file))
        return std::unexpected(Failure::unreadable(
            QStringLiteral("%1: %2").arg(shown(file.filename()), platform::FileError{ENOENT}.description())));
    return file;
}

ArrangementStore::Result ArrangementStore::relocate(const fs::path& block, const fs::path& folder,
                                                    const std::string& stem) {
    const fs::path poster = posterPath(block);
    const bool hasPoster = isTaken(poster);
    const NumberedName names = blockNames(stem);
    // Both files keep one name, so a name counts as taken when either of them would meet another file.
    unsigned n = 1;
    while (isTaken(folder / names.at(n)) || (hasPoster && isTaken(posterPath(folder / names.at(n))))) ++n;
    const std::string free = fs::path(names.at(n)).stem().native();
    const fs::path moved = TRY(m_storage.moveTo(folder, blockNames(free), block));
    if (!hasPoster) return moved;
    auto along = m_storage.moveTo(folder, {moved.stem().native(), "png"}, poster);
    if (along) return moved;
    // A block without its poster would look as if it had lost it: back where it was.
    (void)m_storage.moveTo(block.parent_path(), blockNames(block.stem().native()), moved);
    return std::unexpected(Failure(along.error()));
}

ArrangementStore::Result ArrangementStore::move(const fs::path& block, const std::optional<QString>& collection) {
    const fs::path file = TRY(ownBlock(block));
    const fs::path root = TRY(m_storage.root());
    const fs::path folder = Storage::appending(collection.value_or(QString()), root / Storage::blocksFolder());
    std::error_code failed;
    if (folder == file.parent_path() || fs::equivalent(folder, file.parent_path(), failed)) return file;
    return relocate(file, folder, file.stem().native());
}

ArrangementStore::Result ArrangementStore::rename(const fs::path& block, const QString& name) {
    const fs::path file = TRY(ownBlock(block));
    QString wanted = name;
    if (wanted.trimmed().endsWith(u".fcpxml", Qt::CaseInsensitive)) wanted = wanted.trimmed().chopped(7);
    if (wanted.trimmed().isEmpty()) return file;
    const std::string stem = blockStem(wanted);
    if (blockNames(stem).at(1) == file.filename().native()) return file;
    return relocate(file, file.parent_path(), stem);
}

std::expected<void, ArrangementFailure> ArrangementStore::remove(const fs::path& block) {
    const fs::path file = TRY(ownBlock(block));
    TRY(m_storage.remove(file));
    if (isTaken(posterPath(file))) TRY(m_storage.remove(posterPath(file)));
    return {};
}

std::expected<void, ArrangementFailure> ArrangementStore::moveBack(const fs::path& block, const fs::path& place) {
    const fs::path file = TRY(ownBlock(block));
    const fs::path poster = posterPath(file);
    TRY(m_storage.moveBack(file, place));
    if (!isTaken(poster)) return {};
    auto along = m_storage.moveBack(poster, posterPath(place));
    if (along) return {};
    (void)m_storage.moveBack(place, file);
    return std::unexpected(Failure(along.error()));
}

std::expected<std::vector<platform::TrashedFile>, ArrangementFailure> ArrangementStore::trash(const fs::path& block) {
    const fs::path file = TRY(ownBlock(block));
    std::vector<platform::TrashedFile> trashed{TRY(m_storage.trash(file))};
    if (!isTaken(posterPath(file))) return trashed;
    auto poster = m_storage.trash(posterPath(file));
    if (!poster) {
        (void)Storage::restore(trashed.front());
        return std::unexpected(Failure(poster.error()));
    }
    trashed.push_back(*std::move(poster));
    return trashed;
}

std::expected<void, ArrangementFailure> ArrangementStore::setPoster(const QImage& image, const fs::path& block) {
    const fs::path file = TRY(ownBlock(block));
    const QByteArray png = pngData(image);
    if (png.isEmpty()) return std::unexpected(Failure::unreadable(translate("Blocks", "Couldn’t read that image")));
    const fs::path poster = posterPath(file);
    if (const auto set = writePoster(png, poster); !set)
        return std::unexpected(Failure(StorageError::couldNotWrite(poster, set.error().description())));
    platform::clearQuarantine(poster);
    return {};
}

std::expected<void, ArrangementFailure> ArrangementStore::removePoster(const fs::path& block) {
    const fs::path file = TRY(ownBlock(block));
    if (isTaken(posterPath(file))) TRY(m_storage.remove(posterPath(file)));
    return {};
}

} // namespace quillary
