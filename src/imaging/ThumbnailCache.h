#pragma once

#include <QImage>
#include <QSize>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace quillary {

/// The thumbnails that all programs of a desktop share, kept in files that survive a restart: the layout of the
/// freedesktop thumbnail standard. An entry is found by its file's URL and is good only while the file has the date and
/// the size that it was made from; entries of this program are compared to the nanosecond. Writing is best effort and
/// atomic. Stateless but for the folder; any thread, any number of processes.
class ThumbnailCache {
public:
    /// How large the longer side of an entry may be.
    enum class Size { large = 256, xLarge = 512 };

    /// What a thumbnail must match.
    struct FileState {
        std::int64_t modified = 0; ///< nanoseconds since 1970
        std::uintmax_t size = 0;
        bool operator==(const FileState&) const = default;
    };
    /// Absent for what is no regular file. A link has the state of what it leads to.
    static std::optional<FileState> stateOf(const std::filesystem::path& file);

    struct Entry {
        QImage picture;
        QSize original = {}; ///< pixels of the file's own picture; empty when unknown
    };

    /// `folder` is the desktop's "thumbnails" folder; created when it is needed.
    explicit ThumbnailCache(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    /// Files in the cache's own folder have no entries.
    bool keeps(const std::filesystem::path& file) const;

    std::optional<Entry> read(const std::filesystem::path& file, const FileState& state, Size size) const;
    /// A picture larger than `size` is not kept.
    void write(const std::filesystem::path& file, const FileState& state, Size size, const Entry& entry) const;

    /// Whether this version of the program found that no picture can be made of the file.
    bool hasFailed(const std::filesystem::path& file, const FileState& state) const;
    void writeFailure(const std::filesystem::path& file, const FileState& state) const;

private:
    std::filesystem::path folderOf(Size size) const;
    std::filesystem::path failureFolder() const;

    std::filesystem::path m_folder;
};

} // namespace quillary
