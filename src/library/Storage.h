#pragma once

#include "library/LibraryCopy.h"
#include "library/StorageError.h"
#include "platform/FileAttributes.h"
#include "platform/PendingFile.h"
#include "platform/Trash.h"
#include "values/LibraryItem.h"
#include "values/PastedImage.h"
#include "values/ShelfCounts.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <expected>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace quillary {

namespace platform {
class Bookmarks;
class Desktop;
class SettingsStore;
} // namespace platform

/// The one owner of the library on disk: where its root lies, which folders it has, how a file is named, written,
/// copied, moved and stamped there. Every operation asks `root` first. Thread-safe: the cached root is locked,
/// everything else is on disk, where names are claimed by the file system.
class Storage {
public:
    /// A shelf as the destination of a write or the subject of a listing.
    enum class Folder { images, videos, audio, recent };

    /// A file found on no shelf's list of extensions has no shelf.
    static std::optional<Folder> shelf(const std::filesystem::path& file);
    static std::span<const std::string_view> extensions(Folder folder);
    static bool isReadableImage(const std::filesystem::path& file);
    static bool isVector(const std::filesystem::path& file);

    /// "Library/Images" and so on, below the root.
    static std::filesystem::path relativeFolder(Folder folder);
    static const std::filesystem::path& blocksFolder(); ///< "Library/Blocks"
    static constexpr std::array blockExtensions{std::string_view("fcpxml")};
    /// Every folder of the layout, below the root.
    static std::span<const std::filesystem::path> layout();

    static constexpr std::string_view sourceAttribute = "com.tamsel.quillary.source";
    static constexpr std::string_view sourceSizeAttribute = "com.tamsel.quillary.sourcesize";

    /// `rootForThisRun` stands in for the chosen folder without being stored; the folder "Quillary" is appended unless
    /// it bears that name already. A root of this kind that cannot be opened is an error, never the default location.
    Storage(platform::SettingsStore& settings, platform::Bookmarks& bookmarks, const platform::Desktop& desktop,
            std::optional<std::filesystem::path> rootForThisRun = {});

    // --- The root -----------------------------------------------------------------------------------------------

    std::filesystem::path defaultRoot() const;
    /// The root in the chosen folder, opened; none when the user chose none.
    std::expected<std::optional<std::filesystem::path>, StorageError> customRoot();
    /// The root in use: the chosen folder, else the default one. Lays out and migrates each root once.
    std::expected<std::filesystem::path, StorageError> root();
    /// Whether the root stands in for the chosen folder for this run alone.
    bool isForThisRun() const { return m_rootForThisRun.has_value(); }
    void setCustomRoot(const std::filesystem::path& folder);
    /// Whether `folder` could hold the library: makes the folder "Quillary" in it, and opens it.
    static std::expected<void, StorageError> tryRoot(const std::filesystem::path& folder);
    void clearCustomRoot();
    /// Whether a chosen folder is stored but cannot be opened now; settled by the last `root`.
    bool chosenFolderUnavailable() const;

    // --- Names --------------------------------------------------------------------------------------------------

    /// A name that may stand in a folder: forbidden and control characters become "-", at most 80 characters, "Image"
    /// when nothing is left; a leading dot becomes "-", since hidden files show on no shelf.
    static QString sanitize(const QString& name);
    /// The folder of a collection below `folder`. Pieces are trimmed; empty ones, "." and ".." are left out. A folder
    /// that bears a piece with blanks around it is that collection, unless there is one without.
    static std::filesystem::path appending(const QString& collection, const std::filesystem::path& folder);

    // --- Writing ------------------------------------------------------------------------------------------------

    /// An image that lies ready in its shelf folder without a name: encoded and written ahead, so that naming it is all
    /// that is left to do.
    class Prepared;

    std::expected<Prepared, StorageError> prepare(const PastedImage& image, Folder folder,
                                                  const std::optional<QString>& collection, std::stop_token stop = {});
    /// The same in Recent from a PNG that was kept elsewhere, attributes included.
    std::expected<Prepared, StorageError> prepareCopy(const std::filesystem::path& png, const QString& name,
                                                      std::stop_token stop = {});
    /// Places a prepared image under the first free name made from its own. In Recent the same bytes that lay there
    /// under that name already (numbered ones included) only move to the top.
    std::expected<std::filesystem::path, StorageError> place(Prepared prepared);

    /// Writes the image as PNG, in the two steps above.
    std::expected<std::filesystem::path, StorageError> write(const PastedImage& image, Folder folder,
                                                             const std::optional<QString>& collection);

    struct Stored {
        std::filesystem::path url;
        bool wasAlreadyThere = false;
    };
    /// Copies a file of the shelf's own format under its own name. A file of that name (numbered ones included) and
    /// size is taken to be the same one: it only moves to the top of the list.
    std::expected<Stored, StorageError> storeVerbatim(const std::filesystem::path& file, Folder folder,
                                                      const std::optional<QString>& collection,
                                                      const platform::PendingFile::Progress& progress = {},
                                                      std::stop_token stop = {});

    /// Whether the collection already holds `file`: under its own name and with its size, or as the picture made from
    /// it: a PNG of its sanitised name whose size, or the source size stamped on it, is the file's size (numbered names
    /// included). A PNG that is stamped as made from a file of another size counts only if it is this very file.
    bool alreadySaved(const std::filesystem::path& file, Folder folder, const std::optional<QString>& collection);

    static void setSourceFormat(const std::filesystem::path& file, const QString& format);
    static void setSourceSize(const std::filesystem::path& file, qint64 size);
    static std::optional<QString> sourceFormat(const std::filesystem::path& file);
    static std::optional<qint64> sourceSize(const std::filesystem::path& file);

    // --- Looking after files --------------------------------------------------------------------------------------

    // Everything here is for files on the shelves of the library alone; others are refused, untouched.

    /// Removes the file for good. A link goes, not what it leads to.
    std::expected<void, StorageError> remove(const std::filesystem::path& file);
    /// Moves a shelf's file to another collection of the same shelf; none is the shelf folder itself. Recent has no
    /// collections. Its star follows. A file that lies there already stays as it is.
    std::expected<std::filesystem::path, StorageError> move(const std::filesystem::path& file,
                                                            const std::optional<QString>& collection);
    /// Gives the file a new name in its folder, keeping its extension (also when `name` ends with it). Its star
    /// follows. The name it bears already changes nothing.
    std::expected<std::filesystem::path, StorageError> rename(const std::filesystem::path& file, const QString& name);
    /// Moves a shelf's file to the first free name of the sequence in `folder`, which is made when it is missing. Its
    /// star follows.
    std::expected<std::filesystem::path, StorageError>
    moveTo(const std::filesystem::path& folder, const NumberedName& names, const std::filesystem::path& file);
    /// Puts a library file back where it was, under this very name: an error when that is taken by now, and nothing is
    /// changed then. Its star follows.
    std::expected<void, StorageError> moveBack(const std::filesystem::path& file, const std::filesystem::path& place);
    /// Moves the file into the desktop's trash, from where it can be put back; an error, with the file untouched, where
    /// there is none.
    std::expected<platform::TrashedFile, StorageError> trash(const std::filesystem::path& file);
    /// Takes a file that `trash` moved out of the trash again.
    static std::expected<void, StorageError> restore(const platform::TrashedFile& trashed);
    bool createCollection(const QString& collection, Folder folder);

    /// The shelf folder that a library file lies under; none outside the library.
    std::optional<std::filesystem::path> shelfFolderOf(const std::filesystem::path& file);

    // --- Listing --------------------------------------------------------------------------------------------------

    /// The shelf's files, newest first. Never fails: what cannot be read is empty.
    LibraryItems items(Folder folder);
    LibraryItems recentItems();
    /// Every collection folder of a shelf, empty ones too, ascending.
    QStringList collectionFolders(Folder folder);
    /// The collections that at least one item carries, ascending.
    static QStringList collections(const LibraryItems& items);
    ShelfCounts shelfCounts();

    /// Deletes the oldest pictures of Recent down to `limit`; below 1 nothing. Only what the program itself puts there
    /// counts and goes: PNG files, neither links nor folders nor files of other kinds; and never `justWritten`, whatever
    /// its date. Returns how many were deleted.
    int pruneRecent(int limit, const std::filesystem::path& justWritten = {});

    // --- Access to what aliases lead to -----------------------------------------------------------------------------

    /// Opens every folder that the user granted, so that the shelves can be walked into it. Those that cannot be found
    /// now are passed over; those that are open already stay so.
    void openExtraScopes();
    /// Remembers a folder that the user picked, once, and opens it. What cannot be remembered is ignored.
    void grantAccess(const std::filesystem::path& folder);
    /// The folder that an alias or link leads to; none when it leads to no folder that can be read.
    std::optional<std::filesystem::path> resolvedDirectory(const std::filesystem::path& alias) const;

    struct BlockedAliases {
        std::filesystem::path alias; ///< the first that was met
        std::filesystem::path target;
        int count = 0;
    };
    /// The aliases on the shelves whose folder could be opened if the user granted it. Dangling ones are not among
    /// them, nor what no grant can help: on a system without a fence there are none.
    BlockedAliases blockedAliases(std::stop_token stop = {});

    // --- Moving the library ---------------------------------------------------------------------------------------

    /// Copies the shelves that were selected, and with the blocks the media that they refer to, from one root into
    /// another: bytes, attributes and dates; links as links, hidden entries not. What has a name that is taken there is
    /// left alone, what cannot be copied passed over. A stop request ends it within a file.
    static CopyResult copyContents(const std::filesystem::path& from, const std::filesystem::path& to,
                                   const CopySelection& selection, const MediaOfBlocks& mediaOfBlocks,
                                   BatchProgress& progress, std::stop_token stop = {});
    enum class Copied { copied, skipped };
    /// One file or link, or why it could not be copied. Relative links keep their words where they lead to something in
    /// `whole`, which is copied too.
    static std::expected<Copied, QString> copyFile(const std::filesystem::path& file,
                                                   const std::filesystem::path& folder,
                                                   const std::filesystem::path& whole, std::stop_token stop = {});
    /// The counts of any root.
    static ShelfCounts shelfCounts(const std::filesystem::path& root);

    // --- Favourites -------------------------------------------------------------------------------------------------

    /// A file's favourite key: its path below the root, or its full path outside. The second form asks no disk; it is
    /// cheap for files that were listed below that root.
    QString favoriteKey(const std::filesystem::path& file);
    static QString favoriteKey(const FileLocation& file, const std::filesystem::path& root);
    QSet<QString> favorites() const;
    /// Returns the new state.
    bool toggleFavorite(const std::filesystem::path& file);
    void setFavorites(std::span<const std::filesystem::path> files, bool favorite);

private:
    using Opened = std::expected<std::optional<std::filesystem::path>, StorageError>;

    /// Absolute, without dots and without a closing slash.
    static std::filesystem::path standardized(const std::filesystem::path& folder);

    // With the lock held.
    Opened openCustomRoot();
    Opened openRootForThisRun();
    void closeCustomRoot();
    void layOutOnce(const std::filesystem::path& root);

    static std::expected<void, StorageError> makeFolder(const std::filesystem::path& folder);

    /// Where a library file really lies below the root; an error for anything else.
    std::expected<std::filesystem::path, StorageError> ownFile(const std::filesystem::path& file);
    std::expected<std::filesystem::path, StorageError> folderFor(Folder folder,
                                                                 const std::optional<QString>& collection);
    std::expected<std::filesystem::path, StorageError>
    moveWithStar(const std::filesystem::path& file, const std::filesystem::path& folder, const NumberedName& names);
    void moveStar(const std::filesystem::path& from, const std::filesystem::path& to);

    platform::SettingsStore& m_settings;
    platform::Bookmarks& m_bookmarks;
    const platform::Desktop& m_desktop;
    const std::optional<std::filesystem::path> m_rootForThisRun; ///< "Quillary" included

    mutable std::mutex m_mutex;
    std::optional<std::filesystem::path> m_openedFolder; ///< the chosen folder as picked, access started
    bool m_chosenFolderUnavailable = false;
    std::set<std::filesystem::path> m_migrated;
    std::set<std::filesystem::path> m_extraScopes; ///< granted folders, access started
};

class Storage::Prepared {
public:
    /// Where this process can read the PNG while it has no name.
    std::filesystem::path readablePath() const { return m_file.readablePath(); }
    Prepared(Prepared&&) noexcept = default;
    Prepared& operator=(Prepared&&) noexcept = default;

private:
    friend class Storage;
    Prepared(platform::PendingFile file, std::filesystem::path folder, NumberedName names)
        : m_file(std::move(file)), m_folder(std::move(folder)), m_names(std::move(names)) {}
    void lookForTwin();

    /// A file of the same bytes under one of the names, as it was when it was found.
    struct Twin {
        std::filesystem::path file;
        platform::FileStamp stamp;
    };

    platform::PendingFile m_file;
    std::filesystem::path m_folder;
    NumberedName m_names;
    std::optional<Twin> m_twin;
};

} // namespace quillary
