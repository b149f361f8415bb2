#pragma once

#include "values/Arrangement.h"

#include <optional>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillary {

/// What the documents of a shelf's listing hold, kept between listings: only documents that are new or changed are
/// read. One object, used by one thread at a time.
class BlockSummaries {
public:
    /// The blocks of the listing, in its order, with their posters; what cannot be read as FCPXML is left out. A stop
    /// request ends it early: the result is void then, what was read is kept.
    std::vector<Arrangement> read(const LibraryItems& listed, std::stop_token stop = {});

    /// How many documents were read since this object was made.
    int documentsRead() const { return m_documentsRead; }

private:
    struct Document {
        FileDate modified = distantPast;
        std::uintmax_t size = 0;
        std::optional<Arrangement::Summary> summary = {}; ///< none for what is no block
        unsigned listing = 0;                             ///< the last one that had it
    };
    const Document& document(const LibraryItem& item);

    /// By path: a location would keep the names of the whole folder, as they were when it was listed.
    std::unordered_map<std::string, Document> m_documents;
    unsigned m_listing = 0;
    int m_documentsRead = 0;
};

} // namespace quillary
