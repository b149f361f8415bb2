#pragma once

#include "values/LibraryItem.h"

#include <QStringList>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>

namespace quillary {

/// A shelf's listing that is kept between refreshes: the first one reads every folder, later ones only the folders in
/// which the system reported a change. Folders that cannot be watched are read every time.
///
/// Files whose extension is not in the set, and hidden entries, are passed over; links to folders are followed, except one
/// that leads to a folder on its own path. Items are newest first, equal dates in the order of the walk.
///
/// One object per shelf, used by one thread at a time.
class ShelfIndex {
public:
    ShelfIndex(std::filesystem::path folder, std::span<const std::string_view> extensions, bool watch);
    ~ShelfIndex();
    ShelfIndex(ShelfIndex&&) noexcept;
    ShelfIndex& operator=(ShelfIndex&&) noexcept;

    /// Brings the listing up to date and returns whether anything changed.
    bool refresh();

    /// Shared and immutable: a later refresh makes a new list.
    std::shared_ptr<const LibraryItems> items() const;
    /// Every collection folder, empty ones too, ascending.
    QStringList collectionFolders() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quillary
