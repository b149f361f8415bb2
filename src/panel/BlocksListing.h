#pragma once

#include "blocks/BlockSummaries.h"
#include "panel/ShelfListing.h"

#include <map>

namespace quillary {

class AppSettings;

/// The Blocks shelf's kept listing with what its documents hold. Before a library that moved is listed, its blocks are
/// pointed at their media again.
class BlocksListing : public ShelfListing {
public:
    /// The settings outlive the listing.
    explicit BlocksListing(AppSettings& settings);

    std::optional<Contents> refresh(Storage& storage) override;

    /// What the last refresh found, newest first; shared and immutable. What is no block is left out.
    struct Blocks {
        std::vector<Arrangement> list;
        SearchableItems items; ///< the same rows
    };
    std::shared_ptr<const Blocks> blocks() const;

private:
    void followTheLibrary(Storage& storage);

    AppSettings& m_settings;
    std::mutex m_refreshing;
    BlockSummaries m_summaries;
    mutable std::mutex m_mutex;
    std::shared_ptr<const Blocks> m_blocks = std::make_shared<const Blocks>();
};

} // namespace quillary
