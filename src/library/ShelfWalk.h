#pragma once

#include "platform/OpenFolder.h"
#include "values/LibraryItem.h"

#include <QString>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillary {

/// One folder of a shelf as it was last read, with those below it.
struct ShelfNode {
    struct File {
        std::uint32_t offset = 0; ///< of the name in `text`
        std::uint32_t length = 0;
        std::uint32_t format = 0; ///< number of the source format; 0 is none
        FileDate modified = distantPast;
    };

    std::shared_ptr<const FileLocation::Folder> text;
    std::string name; ///< as the parent knows it
    std::optional<QString> collection = {};
    platform::FileIdentity identity = {};
    ShelfNode* parent = nullptr;
    int depth = 0;
    int linksAbove = 0;
    int watch = -1;
    bool missing = false;  ///< cannot be opened, or is a link to a folder that is not there now
    bool restless = false; ///< holds links whose targets are not watched: must be read every time
    std::vector<File> files;
    std::vector<std::unique_ptr<ShelfNode>> folders;

    std::set<std::string, std::less<>> changed; ///< entries that were reported since the last reading
    /// An entry that was made and not closed by a writer since. It may be growing still, or be whole long since: only
    /// its size tells.
    struct Incoming {
        using Clock = std::chrono::steady_clock;
        bool written = false;
        std::optional<std::uint64_t> size = {}; ///< when it was read last; none: it was not read yet
        Clock::time_point since = {};           ///< when that size was first seen
    };
    std::map<std::string, Incoming, std::less<>> incoming;
    bool allChanged = true;

    bool unchanged(std::string_view entry) const { return !allChanged && !changed.contains(entry); }
    /// Whether an entry is held back, so that the folder must be read again soon.
    bool holdsBack() const { return !incoming.empty(); }
};

/// Hears what becomes of the nodes of a walk, so that they can be watched.
class ShelfNodeObserver {
public:
    virtual ~ShelfNodeObserver() = default;
    /// Before the folder is read for the first time.
    virtual void entered(ShelfNode& node) = 0;
    virtual void wasRead(ShelfNode& node) = 0;
    /// Before the node goes, with everything below it.
    virtual void leaves(ShelfNode& node) = 0;
};

/// Reads folders into nodes.
class ShelfWalk {
public:
    /// A new file whose size stays the same for this long is whole, whoever still holds it open.
    static constexpr std::chrono::milliseconds stillness{800};

    struct Depth {
        bool recursive = true;
        bool details = true; ///< dates and formats; without them files are only named
    };

    ShelfWalk(std::span<const std::string_view> extensions, Depth depth, ShelfNodeObserver* observer);

    /// A folder that was never read, with everything below it.
    std::unique_ptr<ShelfNode> readTree(const std::filesystem::path& folder);
    /// One folder again: what was not reported as changed keeps its date and format, folders that are still there keep
    /// their nodes. Returns whether anything is different.
    bool readAgain(ShelfNode& node);

    /// None for number 0.
    const std::optional<QString>& format(std::uint32_t number) const { return m_formats[number]; }

private:
    void enter(ShelfNode& node, const platform::OpenFolder& folder);
    bool readEntries(ShelfNode& node, const platform::OpenFolder& folder);
    struct Folders;
    bool readFiles(ShelfNode& node, const platform::OpenFolder& folder, Folders& folders);
    bool readFolders(ShelfNode& node, const platform::OpenFolder& folder, Folders& folders);
    std::unique_ptr<ShelfNode> readFolder(ShelfNode& parent, const platform::OpenFolder& above, const char* name,
                                          bool throughLink);
    void leave(ShelfNode& node);
    bool wanted(std::string_view name) const;
    std::uint32_t formatNumber(std::string_view bytes);

    std::vector<std::uint64_t> m_extensions; ///< each packed into a number, since every file is asked
    Depth m_depth;
    const platform::AttributeName m_sourceFormat;
    ShelfNodeObserver* m_observer;
    platform::OpenFolder::Entries m_entries; ///< of the folder that is being read
    std::vector<std::optional<QString>> m_formats{std::nullopt};
    std::vector<std::string> m_formatBytes{std::string()};
    std::uint32_t m_lastFormat = 0; ///< neighbours tend to have the same
};

} // namespace quillary
