#pragma once

#include "library/LibraryFilter.h"
#include "library/ShelfIndex.h"
#include "library/Storage.h"

#include <QHash>
#include <mutex>
#include <optional>

namespace quillary {

class ListingCache;

/// A shelf's kept listing as workers share it: it follows the library root and lets one worker in at a time.
class ShelfListing {
public:
    /// Of a shelf of files. With a `cache` its top is remembered between starts.
    explicit ShelfListing(Storage::Folder folder, std::shared_ptr<const ListingCache> cache = {});
    /// Of any folder below the root. `extensions` as ShelfIndex takes them.
    ShelfListing(std::filesystem::path relativeFolder, std::span<const std::string_view> extensions);

    /// Everything that is asked of a listing later, made once by the worker.
    struct Contents {
        std::filesystem::path root = {};
        SearchableItems items = {};         ///< newest first
        QStringList collections = {};       ///< those that hold a file themselves, ascending
        QStringList collectionFolders = {}; ///< empty ones too, ascending
        QStringList missing = {};           ///< collection folders that cannot be read now
        QHash<QString, int> counts = {};    ///< by collection path, sub-collections included
        std::size_t count = 0;              ///< files of the shelf
        int unfiled = 0;
        QStringList formats = {}; ///< the source formats present, ascending
        int descriptor = -1;      ///< becomes readable when the shelf changes; -1 when it is not watched
        bool growing = false;     ///< files are held back that may be whole soon, with nothing told
        bool whole = true;        ///< false: remembered, the newest files with the numbers of all
    };

    virtual ~ShelfListing() = default;

    /// Absent when the library cannot be opened.
    virtual std::optional<Contents> refresh(Storage& storage);

    bool remembers() const { return m_cache != nullptr; }
    /// What a large shelf looked like when it was listed last, perhaps by an earlier start; nothing on disk is asked.
    /// Absent for a small one.
    std::optional<Contents> remembered(Storage& storage) const;

private:
    const std::filesystem::path m_folder;
    const std::span<const std::string_view> m_extensions;
    const ShelfIndex::Reach m_reach;
    const std::shared_ptr<const ListingCache> m_cache;
    std::mutex m_mutex;
    std::filesystem::path m_root;
    std::optional<ShelfIndex> m_index;
};

} // namespace quillary
