#pragma once

#include "library/ShelfIndex.h"
#include "values/Arrangement.h"

#include <QStringList>
#include <filesystem>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace quillary {

/// The blocks of a library as they are kept between refreshes: only documents that are new or changed are read.
///
/// Blocks are newest first, equal dates in the order of the walk; what cannot be read as FCPXML is left out. One
/// object, used by one thread at a time.
class BlockIndex {
public:
    enum class Watch { no, yes };

    /// `root` is that of the library.
    BlockIndex(const std::filesystem::path& root, Watch watch);

    /// Brings the list up to date and returns whether anything changed, posters included.
    bool refresh();

    /// As ShelfIndex::descriptor.
    int descriptor() const { return m_shelf.descriptor(); }
    /// Shared and immutable: a later refresh makes a new list.
    std::shared_ptr<const std::vector<Arrangement>> blocks() const { return m_blocks; }
    /// Every collection folder, empty ones too, ascending.
    QStringList collectionFolders() const { return m_shelf.collectionFolders(); }
    /// How many documents were read since this object was made.
    int documentsRead() const { return m_documentsRead; }

private:
    struct Read {
        FileDate modified = distantPast;
        std::uintmax_t size = 0;
        std::optional<Arrangement::Summary> summary; ///< none for what is no block
    };
    const Read& read(const LibraryItem& item, std::unordered_map<FileLocation, Read>& kept);

    ShelfIndex m_shelf;
    std::unordered_map<FileLocation, Read> m_read;
    std::shared_ptr<const std::vector<Arrangement>> m_blocks = std::make_shared<const std::vector<Arrangement>>();
    int m_documentsRead = 0;
};

/// The collection path of a block that lies in the library at `root`; none at the top of the shelf.
std::optional<QString> collectionOfBlock(const std::filesystem::path& block, const std::filesystem::path& root);

} // namespace quillary
