#pragma once

#include "platform/FileIdentity.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillary::platform {

/// The name of an extended attribute as the system wants it, made once for many files.
class AttributeName {
public:
    /// `name` without the system's prefix.
    explicit AttributeName(std::string_view name);
    const char* full() const { return m_full.c_str(); }

private:
    std::string m_full;
};

/// A folder held open, whose entries are asked by their bare names: the cheapest way to read many of them. Names are
/// bytes. Any one thread at a time.
class OpenFolder {
public:
    enum class Kind : std::uint8_t { file, folder, link, other };

    struct Entry {
        std::uint32_t offset; ///< of the name in `Entries::text`
        std::uint32_t length;
        Kind kind;
    };
    /// The visible entries of a folder in the system's order.
    struct Entries {
        std::string text; ///< the names, each closed by a NUL
        std::vector<Entry> list;
        bool temporaryFiles = false; ///< hidden files of unfinished writers were seen

        const char* name(const Entry& entry) const { return text.c_str() + entry.offset; }

        std::vector<char> scratch; ///< what the system fills; kept for the next folder
    };
    struct Status {
        Kind kind = Kind::other; ///< never a link
        std::chrono::sys_time<std::chrono::nanoseconds> modified;
        std::uint64_t size = 0; ///< bytes
    };

    /// Absent when it is no folder or may not be opened.
    static std::optional<OpenFolder> open(const std::filesystem::path& path);
    /// A folder in this one, or one that a link in it leads to.
    std::optional<OpenFolder> openFolder(const char* name) const;

    OpenFolder(OpenFolder&& other) noexcept;
    OpenFolder& operator=(OpenFolder&& other) noexcept;
    ~OpenFolder();

    const std::string& path() const { return m_path; }
    FileIdentity identity() const;
    /// Replaces what `entries` holds; hidden entries are left out. May be read once.
    void read(Entries& entries) const;
    /// Of the file that a link leads to. Absent when there is none; a file that may not be asked has no kind.
    std::optional<Status> status(const char* name) const;
    /// A short extended attribute (up to 64 bytes), written to `buffer`; empty when there is none.
    std::string_view attribute(const char* name, const AttributeName& attribute, std::span<char, 64> buffer) const;

private:
    OpenFolder(int descriptor, std::string path) : m_descriptor(descriptor), m_path(std::move(path)) {}

    int m_descriptor = -1;
    std::string m_path;
};

/// The paths of what lies in a folder, hidden entries left out, in the system's order. Empty when it cannot be read;
/// what comes before an error in the middle of it counts. Any thread.
std::vector<std::filesystem::path> visibleEntries(const std::filesystem::path& folder);

/// Hears of changes in folders.
class FolderWatch {
public:
    struct Change {
        enum class Kind : std::uint8_t {
            created,    ///< the entry `name` was made
            modified,   ///< the file `name` was written to, or its date set
            settled,    ///< the entry `name` went, moved, or was closed by a writer
            entry,      ///< anything else about the entry `name`
            attributes, ///< the folder's own attributes
            gone,       ///< the folder itself was moved or removed
            lost,       ///< some changes could not be told: read everything anew
        };
        Kind kind = Kind::entry;
        int watch = -1;
        std::string name = {};
    };

    FolderWatch();
    ~FolderWatch();
    FolderWatch(FolderWatch&& other) noexcept;
    FolderWatch& operator=(FolderWatch&& other) noexcept;

    /// Becomes readable when there is something to read; -1 when nothing can be watched.
    int descriptor() const { return m_descriptor; }
    /// The number under which changes are told, the same for one folder under two names; -1 when it cannot be watched.
    int add(const std::filesystem::path& folder);
    void remove(int watch);
    /// What happened since the last call; never waits.
    std::vector<Change> read();

private:
    int m_descriptor = -1;
};

} // namespace quillary::platform
