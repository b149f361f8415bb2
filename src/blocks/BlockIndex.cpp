#include "blocks/BlockIndex.h"

#include "base/Text.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"
#include "library/Storage.h"

namespace quillary {

namespace fs = std::filesystem;

BlockIndex::BlockIndex(const fs::path& root, Watch watch)
    : m_shelf(root / Storage::blocksFolder(), Storage::blockExtensions, watch == Watch::yes) {}

const BlockIndex::Read& BlockIndex::read(const LibraryItem& item, std::unordered_map<FileLocation, Read>& kept) {
    std::error_code failed;
    const auto size = fs::file_size(item.url.path(), failed);
    const auto before = m_read.find(item.url);
    if (before != m_read.end() && before->second.modified == item.modified && before->second.size == size)
        return kept.insert(m_read.extract(before)).position->second;
    Read& fresh = kept[item.url];
    fresh = {item.modified, size, {}};
    ++m_documentsRead;
    if (const auto document = FCPXMLDocument::read(item.url)) fresh.summary = ArrangementStore::summarize(*document);
    return fresh;
}

bool BlockIndex::refresh() {
    m_shelf.refresh();
    const auto items = m_shelf.items();
    std::unordered_map<FileLocation, Read> kept;
    kept.reserve(items->size());
    std::vector<Arrangement> blocks;
    blocks.reserve(items->size());
    for (const LibraryItem& item : *items) {
        const Read& found = read(item, kept);
        if (!found.summary) continue;
        const fs::path url = item.url;
        blocks.push_back({url, shownStem(url), item.modified, item.collection, *found.summary, posterStampOf(url)});
    }
    m_read = std::move(kept);
    if (blocks == *m_blocks) return false;
    m_blocks = std::make_shared<const std::vector<Arrangement>>(std::move(blocks));
    return true;
}

std::optional<QString> collectionOfBlock(const fs::path& block, const fs::path& root) {
    const fs::path below = block.parent_path().lexically_relative(root / Storage::blocksFolder());
    if (below.empty() || below == ".") return {};
    QStringList names;
    for (const fs::path& name : below) names.append(shown(name));
    return names.join(collectionSeparator.toString());
}

} // namespace quillary
