#pragma once

#include "values/LibraryItem.h"

#include <QStringList>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>

namespace quillary {

/// A shelf's listing that is kept between refreshes: the first one reads every folder, later ones only what the system
/// reported as changed. Folders that cannot be watched, and those with a link that leads nowhere, are read every time.
///
/// Files whose extension is not in the set, and hidden entries, are passed over; links to files and folders are
/// followed, except one that leads to a folder on its own path, and at most four folder links deep. Items are newest
/// first, equal dates in the order of the walk. What cannot be read is empty.
///
/// A new file that another program is still writing is held back, where the system tells of it, until it is closed or
/// stops growing; one that was listed before stays. The second comes with time alone: see `growing`.
///
/// One object per shelf, used by one thread at a time.
class ShelfIndex {
public:
    enum class Reach { everything, topFolderOnly };

    /// `extensions` in lower case, without dots; the texts must outlive the index.
    ShelfIndex(std::filesystem::path folder, std::span<const std::string_view> extensions, bool watch,
               Reach reach = Reach::everything);
    ~ShelfIndex();
    ShelfIndex(ShelfIndex&&) noexcept;
    ShelfIndex& operator=(ShelfIndex&&) noexcept;

    /// Brings the listing up to date and returns whether anything changed.
    bool refresh();

    /// Becomes readable when something changed on disk, and stays so until the next refresh; -1 when nothing is
    /// watched. May be asked, and waited on, from another thread than the one that refreshes.
    int descriptor() const;

    /// Whether the last refresh held files back. Nothing may be told of them any more: refresh again after a while.
    bool growing() const;
    static constexpr std::chrono::milliseconds growingTime{400};

    /// Shared and immutable: a later refresh makes a new list.
    std::shared_ptr<const LibraryItems> items() const;
    /// Every collection folder, empty ones too, ascending.
    QStringList collectionFolders() const;
    /// Those of them that cannot be read now.
    QStringList missingFolders() const;

    /// How many files a listing would have: the same walk without asking any file.
    static std::int64_t countFiles(const std::filesystem::path& folder, std::span<const std::string_view> extensions);

private:
    class State;
    std::unique_ptr<State> m_state;
};

} // namespace quillary
