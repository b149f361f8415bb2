#pragma once

#include "panel/ShelfListing.h"

#include <filesystem>
#include <optional>

namespace quillary {

/// The top of large shelves as they were listed last, kept beyond the end of the program: the newest files and every
/// number of the listing. A start shows that at once, and what has changed since when the shelf has been read.
///
/// One file for each shelf below the folder for caches. Writing is best effort and atomic; what is damaged, of another
/// version or of another library is not read. Any thread, any number of processes.
class ListingCache {
public:
    /// Smaller shelves are read as fast as they are remembered.
    static constexpr std::size_t worthwhile = 5'000;
    static constexpr std::size_t mostItems = 200; ///< several screens of tiles

    /// `cacheFolder` is the desktop's folder for caches; an empty one keeps nothing.
    explicit ListingCache(const std::filesystem::path& cacheFolder);

    /// Contents with `whole` false, for the shelf at this absolute path. Its root is left empty.
    std::optional<ShelfListing::Contents> read(const std::filesystem::path& shelf) const;
    /// Keeps the top of a whole listing. That of a small shelf is forgotten instead.
    void write(const std::filesystem::path& shelf, const ShelfListing::Contents& contents) const;

private:
    std::filesystem::path fileFor(const std::filesystem::path& shelf) const;

    std::filesystem::path m_folder;
};

} // namespace quillary
