#pragma once

#include "values/LibraryItem.h"

#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>
#include <variant>
#include <vector>

namespace quillary {

/// Which collection of the Images shelf is shown.
struct CollectionFilter {
    struct Named {
        QString path;
        bool operator==(const Named&) const = default;
    };
    struct BuiltIn {
        QString set;
        bool operator==(const BuiltIn&) const = default;
    };
    struct All {
        bool operator==(const All&) const = default;
    };
    struct Unfiled {
        bool operator==(const Unfiled&) const = default;
    };
    using Value = std::variant<Named, BuiltIn, All, Unfiled>;

    Value value = All{};

    static CollectionFilter named(QString path) { return {Named{std::move(path)}}; }
    static CollectionFilter builtIn(QString set) { return {BuiltIn{std::move(set)}}; }
    static CollectionFilter all() { return {All{}}; }
    static CollectionFilter unfiled() { return {Unfiled{}}; }

    /// The path of a named collection: where new files of the shelf go. None for every other case.
    std::optional<QString> collection() const;

    bool operator==(const CollectionFilter&) const = default;
};

/// The user's favourites as they are asked for every item of a list: by location, without making a key for each.
class FavoriteFiles {
public:
    FavoriteFiles() = default;
    /// `keys` as Storage::favoriteKey makes them for the library at `root`.
    FavoriteFiles(const QSet<QString>& keys, const std::filesystem::path& root);

    bool contains(const FileLocation& file) const;

private:
    std::unordered_set<FileLocation> m_files;
    QSet<QString> m_inexact; ///< keys of names that are no text, compared as keys
    std::filesystem::path m_root;
};

/// A list with its names folded once, so that filtering 100,000 names costs a few milliseconds per key press.
class SearchableItems {
public:
    SearchableItems() = default;
    explicit SearchableItems(std::shared_ptr<const LibraryItems> items);

    const LibraryItems& items() const { return *m_items; }
    const std::shared_ptr<const LibraryItems>& shared() const { return m_items; }
    /// Row numbers, ascending, of the items whose display name contains `folded` (made by foldedForSearch) and that
    /// `keeps` accepts. An empty `folded` matches every name.
    std::vector<quint32> matching(const QString& folded,
                                  const std::function<bool(const LibraryItem&)>& keeps = {}) const;

private:
    std::shared_ptr<const LibraryItems> m_items = std::make_shared<const LibraryItems>();
    QString m_names;                ///< every folded name, one after another
    std::vector<quint32> m_offsets; ///< where each begins; one more than there are items
};

/// What the user asks of the Images shelf.
struct LibraryQuery {
    CollectionFilter collection = {};
    bool favoritesOnly = false;
    std::optional<QString> format = {};
    QString search = {}; ///< as typed: blanks around it do not count
};

/// The rows of `base`, ascending, that the query shows. `base` is the shelf's list, or the built-in icons for a
/// built-in set. Collection names are not searched; the order is kept.
std::vector<quint32> visibleRows(const SearchableItems& base, const LibraryQuery& query,
                                 const std::function<bool(const LibraryItem&)>& isFavorite);

/// Puts rows of `items` into the order of the display names, numbers inside them by value; equal names stay as they
/// are.
void sortByName(std::vector<quint32>& rows, const LibraryItems& items);

} // namespace quillary
