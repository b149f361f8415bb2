#pragma once

#include "panel/FileSuccession.h"
#include "panel/ShelfSelection.h"
#include "platform/FileIdentity.h"
#include "platform/KeptFile.h"
#include "platform/Trash.h"

#include <QString>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quillary {

struct ShelfOutcome;

/// Something done to a shelf's files that can be taken back.
struct ShelfChange {
    QString name; ///< as in "Undid …", such as "moving 3 files"
    /// Takes it back; run by a worker. The outcome's change does it again.
    std::function<ShelfOutcome()> revert;
    int keptFiles = 0;           ///< how many files it holds open
    std::uint64_t keptBytes = 0; ///< the room on the disk that they take
};

/// What a verb on a shelf's files brings home.
struct ShelfOutcome {
    std::vector<ShelfSelection::Relocation> relocations = {};
    QString note = {};
    QString problem = {};                   ///< why not all of it was done
    std::optional<QString> created = {};    ///< a collection
    bool starsChanged = false;              ///< the stored favourites
    std::vector<std::filesystem::path> left = {}; ///< files that are on the shelf no more
    /// Files that were to be removed and stay for now: they could not be brought back.
    std::vector<std::filesystem::path> tooMuch = {};
    std::optional<ShelfChange> change = {}; ///< none when there is nothing to take back
    bool oneWay = false;                    ///< something was done that cannot be taken back
};

/// The verbs on one file of a shelf, run by workers. Errors are texts for the user.
struct FileVerbs {
    using Path = std::filesystem::path;
    using Moved = std::expected<Path, QString>;
    using Done = std::expected<void, QString>;
    using Trashed = std::expected<std::vector<platform::TrashedFile>, QString>;

    std::function<Moved(const Path&, const QString& name)> rename;
    std::function<Moved(const Path&, const std::optional<QString>& collection)> move;
    /// To a place where it was before; never over another file.
    std::function<Done(const Path&, const Path& place)> moveBack;
    std::function<Done(const Path&)> remove;
    /// The file, and what goes along with it when it is removed.
    std::function<std::vector<Path>(const Path&)> withBelongings = [](const Path& file) { return std::vector{file}; };
    std::function<Trashed(const Path&)> trash; ///< the file first, then what belongs to it
    std::function<Done(const platform::TrashedFile&)> restore;
    std::function<void(const std::vector<Path>&, bool favorite)> setFavorites;
    std::function<bool(const QString& collection)> createCollection;
    /// What the panel itself put in the place of other files, by every verb and every way back.
    std::shared_ptr<FileSuccession> succession = std::make_shared<FileSuccession>();
};

/// What can be done with a shelf's files, each with its way back. Run by workers; a change keeps its own copy of the
/// verbs, whose storage outlives it. A way back touches the very files that were changed: another one that bears their
/// name by now stays as it is.
namespace ShelfChanges {

using Files = std::vector<std::filesystem::path>;

ShelfOutcome rename(const FileVerbs& verbs, const std::filesystem::path& file, const QString& name);
/// None is Unfiled.
ShelfOutcome move(const FileVerbs& verbs, const Files& files, const std::optional<QString>& collection);
/// The files stay reachable, and come back, for as long as the change is held. More of them than can be kept are not
/// removed but told as `tooMuch`.
ShelfOutcome remove(const FileVerbs& verbs, const Files& files);
/// There is no way back.
ShelfOutcome removeForGood(const FileVerbs& verbs, const Files& files);
ShelfOutcome trash(const FileVerbs& verbs, const Files& files);
/// Of stars that were given or taken already.
ShelfChange stars(const FileVerbs& verbs, Files files, bool given);

/// A file that was rewritten in place, and what it was before.
struct Rewritten {
    std::filesystem::path file;
    std::shared_ptr<const platform::KeptFile> before;
    platform::KeptFile::Stamp after; ///< of the new file; with another one it is somebody else's
};
ShelfChange rewriting(const FileVerbs& verbs, const QString& name, std::vector<Rewritten> files);

/// Most that a shelf's steps keep open.
inline constexpr int mostKeptFiles = 200;
inline constexpr std::uint64_t mostKeptBytes = std::uint64_t(2) << 30U;

/// Why another file than the one that was changed stays as it is; nothing when it is the very one.
std::expected<void, QString> isStill(const FileVerbs& verbs, const std::filesystem::path& file,
                                     const platform::FileIdentity& identity);
/// "“Logo”", or "3 files".
QString named(const Files& files);
/// What several files have to tell: the first reason, and how many more there are.
QString told(const QStringList& reasons);

} // namespace ShelfChanges

} // namespace quillary
