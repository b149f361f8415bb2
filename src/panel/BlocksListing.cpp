#include "panel/BlocksListing.h"

#include "base/Text.h"
#include "blocks/ArrangementStore.h"
#include "library/AppSettings.h"
#include "platform/SettingsStore.h"

namespace quillary {

BlocksListing::BlocksListing(AppSettings& settings)
    : ShelfListing(Storage::blocksFolder(), Storage::blockExtensions), m_settings(settings) {}

void BlocksListing::followTheLibrary(Storage& storage) {
    const auto root = storage.root();
    if (!root || storage.isForThisRun()) return;
    auto& store = m_settings.store();
    const QString now = shown(*root);
    const QString before = store.value(SettingsKey::blocksLastRootPath).toString();
    if (before == now) return;
    ArrangementStore(storage).relinkAll(pathOf(before));
    // Last, so that a kill in between leaves the work to the next refresh.
    store.setValue(SettingsKey::blocksLastRootPath, now);
}

std::optional<ShelfListing::Contents> BlocksListing::refresh(Storage& storage) {
    const std::scoped_lock refreshing(m_refreshing);
    followTheLibrary(storage);
    auto contents = ShelfListing::refresh(storage);
    if (!contents) return {};
    auto found = std::make_shared<Blocks>();
    found->list = m_summaries.read(contents->items.items());
    auto items = std::make_shared<LibraryItems>();
    items->reserve(found->list.size());
    for (const Arrangement& block : found->list) items->push_back({block.url, block.modified, block.collection});
    found->items = SearchableItems(std::move(items));
    const std::scoped_lock lock(m_mutex);
    m_blocks = std::move(found);
    return contents;
}

std::shared_ptr<const BlocksListing::Blocks> BlocksListing::blocks() const {
    const std::scoped_lock lock(m_mutex);
    return m_blocks;
}

} // namespace quillary
