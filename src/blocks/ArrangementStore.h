#pragma once

#include "blocks/ArrangementFailure.h"
#include "blocks/FCPXMLDocument.h"
#include "blocks/MediaCopier.h"
#include "platform/Trash.h"
#include "values/Arrangement.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <expected>
#include <filesystem>
#include <optional>
#include <vector>

namespace quillary {

class Storage;

/// Keeps blocks: compound clips as FCPXML documents in "Library/Blocks", each with copies of all its media in the
/// library, and with a poster beside it. Stateless: all it knows is on disk, where names are claimed by the file
/// system. Any thread; nothing here waits for an event loop. A block is named by its file.
///
/// Operations on blocks are for files in "Library/Blocks" alone; others are refused, untouched.
class ArrangementStore {
public:
    using Failure = ArrangementFailure;
    using Result = std::expected<std::filesystem::path, Failure>;

    explicit ArrangementStore(Storage& storage) : m_storage(storage) {}

    // --- Keeping ------------------------------------------------------------------------------------------------

    /// Stores a document with all its media, under the name given, else its own, else "Block". The very same document
    /// under the same name is refused as `alreadySaved`, numbered names included; another one gets a number. A failure
    /// writes no block; media that were copied by then stay and are found the next time.
    std::expected<Arrangement, Failure> save(QByteArrayView xml, const std::optional<QString>& name,
                                             const std::optional<QString>& collection,
                                             const MediaProgress& progress = {});
    std::expected<Arrangement, Failure> save(FCPXMLDocument document, const std::optional<QString>& name,
                                             const std::optional<QString>& collection,
                                             const MediaProgress& progress = {});

    /// The stored blocks, newest first; what cannot be read is left out. Reads every document: a shelf that stays open
    /// keeps its BlockSummaries instead.
    std::vector<Arrangement> blocks();
    /// The files of all blocks, newest first, unread.
    std::vector<std::filesystem::path> files();
    /// Every collection folder, empty ones too, ascending.
    QStringList collections();
    /// False when the folder cannot be made.
    bool createCollection(const QString& path);

    // --- Looking after blocks -------------------------------------------------------------------------------------

    // The poster and the star go along. The result is where the block is now.

    /// The first free name in the collection; none is the top of the shelf. Where it lies already it stays.
    Result move(const std::filesystem::path& block, const std::optional<QString>& collection);
    /// The first free name in its folder. A blank name, and the one that it bears, change nothing.
    Result rename(const std::filesystem::path& block, const QString& name);
    /// Deletes the block and its poster for good. Its media stay: other blocks may use them.
    std::expected<void, Failure> remove(const std::filesystem::path& block);
    /// Puts a block back where it was, as `Storage::moveBack` does.
    std::expected<void, Failure> moveBack(const std::filesystem::path& block, const std::filesystem::path& place);
    /// Moves the block and its poster, all or nothing, into the desktop's trash. Its media stay.
    std::expected<std::vector<platform::TrashedFile>, Failure> trash(const std::filesystem::path& block);

    std::expected<void, Failure> setPoster(const QImage& image, const std::filesystem::path& block);
    /// A block without a poster stays as it is.
    std::expected<void, Failure> removePoster(const std::filesystem::path& block);

    // --- Giving back ----------------------------------------------------------------------------------------------

    /// The document to put on a drag: media that moved within the library are found again, and assets and compound
    /// media carry neither "uid" nor "modDate", so that the editor imports them anew. Absent when the file cannot be
    /// read.
    std::optional<QByteArray> xml(const std::filesystem::path& block);

    /// A block's document, or that of any other file, with media that moved found again. Nothing is written.
    std::expected<FCPXMLDocument, Failure> document(const std::filesystem::path& block);

    /// The media file of a single clip, copied onto the shelf of its kind (into the collection when given). Absent when
    /// the clip is more than that one file: several assets or storyline elements, connected clips, titles, filters, a
    /// transform.
    std::optional<std::filesystem::path> singleMediaFile(QByteArrayView xml, const std::optional<QString>& collection,
                                                         const MediaProgress& progress = {});

    /// What `singleMediaFile` would copy: the file that the document names. Absent as there.
    static std::optional<std::filesystem::path> mediaOfSingleClip(QByteArrayView xml);

    // --- Moving the library ---------------------------------------------------------------------------------------

    /// Points the stored blocks at the media of the library as it lies now: references into "Final Cut Elements" of
    /// `oldRoot` go to the same place below the root in use where that file exists, and files that are missing are
    /// looked for. Blocks that need no change are not written; dates are kept. Returns how many were written.
    int relinkAll(const std::filesystem::path& oldRoot);

    /// The files that the blocks below a library root refer to and that lie in "Final Cut Elements" there, each once,
    /// below the root.
    static std::vector<std::filesystem::path> mediaOfBlocks(const std::filesystem::path& root);

    /// The same for media of one block that are missing: where they are found by their marks, the block is pointed at
    /// them. Returns how many references changed.
    std::expected<int, Failure> useFoundMedia(const std::filesystem::path& block);

    // --- Documents ------------------------------------------------------------------------------------------------

    static Arrangement::Summary summarize(const FCPXMLDocument& document);
    /// A time as FCPXML writes it, such as "3003/30000s" or "5s"; 0 for everything else.
    static double seconds(QByteArrayView text);

private:
    std::expected<void, Failure> makeSelfContained(FCPXMLDocument& document, const QString& name,
                                                   const std::filesystem::path& root, const MediaProgress& progress);
    Result place(const QByteArray& xml, const QString& name, const std::filesystem::path& folder);
    /// The block's real place; a failure for what is no block of this library.
    Result ownBlock(const std::filesystem::path& block);
    Result relocate(const std::filesystem::path& block, const std::filesystem::path& folder, const std::string& stem);

    Storage& m_storage;
};

} // namespace quillary
