#include "library/ShelfIndex.h"

#include "library/ShelfWalk.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

namespace quillary {

namespace {

using platform::FolderWatch;

template <typename Visit>
void visitAll(const ShelfNode& node, const Visit& visit) {
    visit(node);
    for (const auto& below : node.folders) visitAll(*below, visit);
}

/// One file of a tree, by the numbers of its folder and of the file there.
struct Place {
    FileDate modified;
    std::uint32_t node;
    std::uint32_t file;
};

/// Newest first, equal dates in the order they came: a radix sort over the bytes in which the dates differ.
void sortNewestFirst(std::vector<Place>& places) {
    const auto key = [](const Place& place) {
        // Ascending as an unsigned number means descending as a date.
        return ~(static_cast<std::uint64_t>(place.modified.time_since_epoch().count()) ^ (std::uint64_t{1} << 63U));
    };
    std::uint64_t differing = 0;
    for (const Place& place : places) differing |= key(place) ^ key(places.front());
    std::vector<Place> other(places.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xFFU) == 0) continue;
        std::array<std::uint32_t, 257> starts{};
        for (const Place& place : places) ++starts[(key(place) >> shift & 0xFFU) + 1];
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        for (const Place& place : places) other[starts[key(place) >> shift & 0xFFU]++] = place;
        places.swap(other);
    }
}

/// Every file of the tree, newest first.
LibraryItems itemsOf(const ShelfNode& root, const ShelfWalk& walk) {
    std::vector<const ShelfNode*> nodes;
    std::vector<Place> places;
    visitAll(root, [&](const ShelfNode& node) {
        const auto number = static_cast<std::uint32_t>(nodes.size());
        nodes.push_back(&node);
        for (std::uint32_t i = 0; i < node.files.size(); ++i) places.push_back({node.files[i].modified, number, i});
    });
    sortNewestFirst(places);
    LibraryItems items;
    items.reserve(places.size());
    for (const Place& place : places) {
        const ShelfNode& node = *nodes[place.node];
        const ShelfNode::File& file = node.files[place.file];
        items.emplace_back(FileLocation(node.text, file.offset, file.length), file.modified, node.collection,
                           walk.format(file.format));
    }
    return items;
}

} // namespace

class ShelfIndex::State final : public ShelfNodeObserver {
public:
    State(std::filesystem::path folder, std::span<const std::string_view> extensions, bool watch, Reach reach)
        : m_folder(std::move(folder))
        , m_walk(extensions, {.recursive = reach == Reach::everything}, watch ? this : nullptr) {
        if (watch) m_watch.emplace();
    }

    bool refresh() {
        if (!m_watch || !m_root || isReplaced()) return readAll();
        takeChanges();
        if (m_everything) return readAll();
        if (m_dirty.empty() && m_restless.empty() && m_growing.empty()) return false;
        m_dirty.insert(m_restless.begin(), m_restless.end());
        m_dirty.insert(m_growing.begin(), m_growing.end());
        bool changed = false;
        while (ShelfNode* next = shallowest()) {
            m_dirty.erase(next);
            changed = m_walk.readAgain(*next) || changed;
        }
        if (changed) m_items = std::make_shared<const LibraryItems>(itemsOf(*m_root, m_walk));
        return changed;
    }

    bool growing() const { return !m_growing.empty(); }
    int descriptor() const { return m_watch ? m_watch->descriptor() : -1; }
    const std::shared_ptr<const LibraryItems>& items() const { return m_items; }

    QStringList collectionFolders(bool missingOnes = false) const {
        QStringList found;
        if (!m_root) return found;
        visitAll(*m_root, [&](const ShelfNode& node) {
            if (node.collection && (node.missing || !missingOnes)) found.append(*node.collection);
        });
        found.sort();
        found.removeDuplicates();
        return found;
    }

    void entered(ShelfNode& node) override {
        node.watch = m_watch->add(node.text->path);
        if (node.watch >= 0) m_watched.emplace(node.watch, &node);
    }

    void wasRead(ShelfNode& node) override {
        if (node.watch < 0) node.allChanged = true;
        if (node.restless || node.watch < 0)
            m_restless.insert(&node);
        else
            m_restless.erase(&node);
        if (node.holdsBack())
            m_growing.insert(&node);
        else
            m_growing.erase(&node);
    }

    void leaves(ShelfNode& node) override {
        m_dirty.erase(&node);
        m_restless.erase(&node);
        m_growing.erase(&node);
        unwatch(node);
    }

private:
    bool readAll() {
        forgetAll();
        m_root = m_walk.readTree(m_folder);
        auto items = std::make_shared<const LibraryItems>(itemsOf(*m_root, m_walk));
        const bool changed = !m_readOnce || *items != *m_items;
        m_readOnce = true;
        if (changed) m_items = std::move(items);
        return changed;
    }

    /// The descriptor stays, since somebody may wait on it; what it still tells is of folders nobody asks for.
    void forgetAll() {
        m_everything = false;
        for (const auto& [watch, node] : m_watched) m_watch->remove(watch);
        m_watched.clear();
        m_dirty.clear();
        m_restless.clear();
        m_growing.clear();
        if (m_watch) m_watch->read();
    }

    /// Another folder under the shelf's name, or none any more.
    bool isReplaced() const {
        const auto now = platform::OpenFolder::open(m_folder);
        return (now ? now->identity() : platform::FileIdentity()) != m_root->identity;
    }

    void takeChanges() {
        for (const FolderWatch::Change& change : m_watch->read()) {
            if (change.kind == FolderWatch::Change::Kind::lost) m_everything = true;
            if (change.name.starts_with('.')) continue;
            const auto [first, end] = m_watched.equal_range(change.watch);
            std::vector<ShelfNode*> nodes;
            for (auto at = first; at != end; ++at) nodes.push_back(at->second);
            for (ShelfNode* node : nodes) mark(*node, change);
        }
    }

    void mark(ShelfNode& node, const FolderWatch::Change& change) {
        using Kind = FolderWatch::Change::Kind;
        if (!change.name.empty()) node.changed.insert(change.name);
        if (change.kind == Kind::created)
            node.incoming.insert_or_assign(change.name, ShelfNode::Incoming());
        else if (change.kind == Kind::settled)
            node.incoming.erase(change.name);
        else if (const auto at = node.incoming.find(change.name);
                 change.kind == Kind::modified && at != node.incoming.end())
            at->second.written = true;
        else if (change.kind == Kind::attributes)
            node.allChanged = true;
        if (change.kind != Kind::gone) {
            m_dirty.insert(&node);
        } else if (node.parent) {
            node.parent->changed.insert(node.name);
            m_dirty.insert(node.parent);
        } else {
            m_everything = true;
        }
    }

    void unwatch(ShelfNode& node) {
        if (node.watch < 0) return;
        const auto [first, end] = m_watched.equal_range(node.watch);
        const auto own = std::find_if(first, end, [&](const auto& entry) { return entry.second == &node; });
        if (own != end) m_watched.erase(own);
        if (!m_watched.contains(node.watch)) m_watch->remove(node.watch);
        node.watch = -1;
    }

    ShelfNode* shallowest() const {
        const auto first = std::ranges::min_element(m_dirty, {}, &ShelfNode::depth);
        return first == m_dirty.end() ? nullptr : *first;
    }

    const std::filesystem::path m_folder;
    ShelfWalk m_walk;
    std::optional<FolderWatch> m_watch;
    std::unique_ptr<ShelfNode> m_root;
    std::shared_ptr<const LibraryItems> m_items = std::make_shared<const LibraryItems>();
    std::unordered_multimap<int, ShelfNode*> m_watched;
    std::unordered_set<ShelfNode*> m_dirty;    ///< changed on disk
    std::unordered_set<ShelfNode*> m_restless; ///< not watched, or with links that are not
    std::unordered_set<ShelfNode*> m_growing;  ///< with new files that are held back
    bool m_everything = false;
    bool m_readOnce = false;
};

ShelfIndex::ShelfIndex(std::filesystem::path folder, std::span<const std::string_view> extensions, bool watch,
                       Reach reach)
    : m_state(std::make_unique<State>(std::move(folder), extensions, watch, reach)) {}

ShelfIndex::~ShelfIndex() = default;
ShelfIndex::ShelfIndex(ShelfIndex&&) noexcept = default;
ShelfIndex& ShelfIndex::operator=(ShelfIndex&&) noexcept = default;

std::int64_t ShelfIndex::countFiles(const std::filesystem::path& folder, std::span<const std::string_view> extensions) {
    ShelfWalk walk(extensions, {.details = false}, nullptr);
    std::int64_t count = 0;
    visitAll(*walk.readTree(folder), [&](const ShelfNode& node) { count += std::ssize(node.files); });
    return count;
}

bool ShelfIndex::refresh() {
    return m_state->refresh();
}
bool ShelfIndex::growing() const {
    return m_state->growing();
}
int ShelfIndex::descriptor() const {
    return m_state->descriptor();
}
std::shared_ptr<const LibraryItems> ShelfIndex::items() const {
    return m_state->items();
}
QStringList ShelfIndex::collectionFolders() const {
    return m_state->collectionFolders();
}
QStringList ShelfIndex::missingFolders() const {
    return m_state->collectionFolders(true);
}

} // namespace quillary
