#include "panel/ShelfListing.h"

namespace quillary {

std::optional<ShelfListing::Contents> ShelfListing::refresh(Storage& storage) {
    const auto root = storage.root();
    if (!root) return {};
    const std::scoped_lock lock(m_mutex);
    if (!m_index || m_root != *root) {
        m_root = *root;
        const auto reach =
            m_folder == Storage::Folder::recent ? ShelfIndex::Reach::topFolderOnly : ShelfIndex::Reach::everything;
        m_index.emplace(m_root / Storage::relativeFolder(m_folder), Storage::extensions(m_folder), true, reach);
    }
    m_index->refresh();
    return Contents{m_root, m_index->items(), m_index->collectionFolders(), m_index->descriptor()};
}

} // namespace quillary
