#include "panel/ShelfListing.h"

#include "panel/ListingCache.h"
#include "values/CollectionNode.h"

namespace quillary {

namespace {

void summarize(ShelfListing::Contents& contents) {
    QHash<QString, int> own;
    QSet<QString> formats;
    contents.count = contents.items.items().size();
    for (const LibraryItem& item : contents.items.items()) {
        if (item.collection)
            ++own[*item.collection];
        else
            ++contents.unfiled;
        if (item.sourceFormat) formats.insert(*item.sourceFormat);
    }
    for (auto at = own.cbegin(); at != own.cend(); ++at)
        for (const Crumb& step : crumbs(at.key())) contents.counts[step.path] += at.value();
    contents.collections = own.keys() + contents.missing;
    contents.collections.removeDuplicates();
    contents.collections.sort();
    contents.formats = {formats.begin(), formats.end()};
    contents.formats.sort();
}

} // namespace

ShelfListing::ShelfListing(Storage::Folder folder, std::shared_ptr<const ListingCache> cache)
    : m_folder(Storage::relativeFolder(folder))
    , m_extensions(Storage::extensions(folder))
    , m_reach(folder == Storage::Folder::recent ? ShelfIndex::Reach::topFolderOnly : ShelfIndex::Reach::everything)
    , m_cache(std::move(cache)) {}

ShelfListing::ShelfListing(std::filesystem::path relativeFolder, std::span<const std::string_view> extensions)
    : m_folder(std::move(relativeFolder)), m_extensions(extensions), m_reach(ShelfIndex::Reach::everything) {}

std::optional<ShelfListing::Contents> ShelfListing::refresh(Storage& storage) {
    const auto root = storage.root();
    if (!root) return {};
    const std::scoped_lock lock(m_mutex);
    if (!m_index || m_root != *root) {
        m_root = *root;
        m_index.emplace(m_root / m_folder, m_extensions, true, m_reach);
    }
    const bool changed = m_index->refresh();
    Contents contents{.root = m_root,
                      .items = SearchableItems(m_index->items()),
                      .collectionFolders = m_index->collectionFolders(),
                      .missing = m_index->missingFolders(),
                      .descriptor = m_index->descriptor(),
                      .growing = m_index->growing()};
    summarize(contents);
    if (m_cache && changed) m_cache->write(m_root / m_folder, contents);
    return contents;
}

std::optional<ShelfListing::Contents> ShelfListing::remembered(Storage& storage) const {
    const auto root = storage.root();
    auto contents = root && m_cache ? m_cache->read(*root / m_folder) : std::nullopt;
    if (contents) contents->root = *root;
    return contents;
}

} // namespace quillary
