#include "blocks/BlockSummaries.h"

#include "base/Text.h"
#include "blocks/ArrangementStore.h"
#include "blocks/BlockFiles.h"

namespace quillary {

namespace fs = std::filesystem;

const BlockSummaries::Document& BlockSummaries::document(const LibraryItem& item) {
    std::error_code failed;
    const fs::path url = item.url;
    const auto size = fs::file_size(url, failed);
    Document& kept = m_documents[url.native()];
    const bool unchanged = kept.listing > 0 && kept.modified == item.modified && kept.size == size;
    if (!unchanged) {
        kept = {item.modified, size};
        ++m_documentsRead;
        if (const auto read = FCPXMLDocument::read(url)) kept.summary = ArrangementStore::summarize(*read);
    }
    kept.listing = m_listing;
    return kept;
}

std::vector<Arrangement> BlockSummaries::read(const LibraryItems& listed, std::stop_token stop) {
    ++m_listing;
    std::vector<Arrangement> blocks;
    blocks.reserve(listed.size());
    for (const LibraryItem& item : listed) {
        if (stop.stop_requested()) return {};
        const Document& found = document(item);
        if (!found.summary) continue;
        const fs::path url = item.url;
        blocks.push_back({url, shownStem(url), item.modified, item.collection, *found.summary, posterStampOf(url)});
    }
    std::erase_if(m_documents, [&](const auto& entry) { return entry.second.listing != m_listing; });
    return blocks;
}

} // namespace quillary
