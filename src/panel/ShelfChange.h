#pragma once

#include "panel/ShelfSelection.h"
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
    int keptFiles = 0; ///< how many files it holds open
};

/// What a verb on a shelf's files brings home.
struct ShelfOutcome {
    std::vector<ShelfSelection::Relocation> relocations = {};
    QString note = {};
    QString problem = {};                   ///< why not all of it was done
    std::optional<QString> created = {};    ///< a collection
    bool starsChanged = false;              ///< the stored favourites
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
    std::function<Trashed(const Path&)> trash; ///< the file first, then what belongs to it
    std::function<Done(const platform::TrashedFile&)> restore;
    std::function<void(const std::vector<Path>&, bool favorite)> setFavorites;
    std::function<bool(const QString& collection)> createCollection;
};

/// What can be done with a shelf's files, each with its way back. Run by workers; a change keeps its own copy of the
/// verbs, whose storage outlives it.
namespace ShelfChanges {

using Files = std::vector<std::filesystem::path>;

ShelfOutcome rename(const FileVerbs& verbs, const std::filesystem::path& file, const QString& name);
/// None is Unfiled.
ShelfOutcome move(const FileVerbs& verbs, const Files& files, const std::optional<QString>& collection);
/// For good: there is no way back.
ShelfOutcome remove(const FileVerbs& verbs, const Files& files);
ShelfOutcome trash(const FileVerbs& verbs, const Files& files);
/// Of stars that were given or taken already.
ShelfChange stars(const FileVerbs& verbs, Files files, bool given);

/// A file that was rewritten in place, and what it was before.
struct Rewritten {
    std::filesystem::path file;
    std::shared_ptr<const platform::KeptFile> before;
    platform::KeptFile::Stamp after; ///< of the new file; with another one it is somebody else's
};
ShelfChange rewriting(const QString& name, std::vector<Rewritten> files);

/// "“Logo”", or "3 files".
QString named(const Files& files);
/// What several files have to tell: the first reason, and how many more there are.
QString told(const QStringList& reasons);

} // namespace ShelfChanges

} // namespace quillary
