#pragma once

#include "library/ShelfIndex.h"
#include "library/Storage.h"

#include <mutex>
#include <optional>

namespace quillary {

/// A shelf's kept listing as workers share it: it follows the library root and lets one worker in at a time.
class ShelfListing {
public:
    explicit ShelfListing(Storage::Folder folder) : m_folder(folder) {}

    struct Contents {
        std::filesystem::path root;
        std::shared_ptr<const LibraryItems> items;
        QStringList collectionFolders;
        int descriptor = -1; ///< becomes readable when the shelf changes; -1 when it is not watched
    };

    /// Absent when the library cannot be opened.
    std::optional<Contents> refresh(Storage& storage);

private:
    const Storage::Folder m_folder;
    std::mutex m_mutex;
    std::filesystem::path m_root;
    std::optional<ShelfIndex> m_index;
};

} // namespace quillary
