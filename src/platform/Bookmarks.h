#pragma once

#include <QByteArray>
#include <filesystem>
#include <memory>
#include <optional>

namespace quillary::platform {

/// Remembers a folder that the user picked, across launches and, where the system has a sandbox, across its fence.
class Bookmarks {
public:
    struct Resolved {
        std::filesystem::path path;
        bool stale = false; ///< the data should be made anew from `path`
    };

    virtual ~Bookmarks() = default;

    /// Absent when the folder cannot be remembered.
    virtual std::optional<QByteArray> make(const std::filesystem::path& folder) = 0;
    /// Absent when the data names nothing any more.
    virtual std::optional<Resolved> resolve(const QByteArray& data) = 0;

    /// Whether this system fences programs in at all, so that a grant of the user's can open what is closed.
    virtual bool isFenced() const = 0;
    /// Whether the folder is there and closed now, and a grant would open it.
    virtual bool needsGrant(const std::filesystem::path& folder) const = 0;

    virtual bool startAccess(const std::filesystem::path& folder) = 0;
    virtual void stopAccess(const std::filesystem::path& folder) = 0;
};

/// The bookmarks of this system. Where there is no sandbox they are stored paths, links resolved when they are made,
/// and access is always granted. They name a folder that is gone just as well, so callers look whether it exists; one
/// is stale when its path has come to lead elsewhere through a link, as after a folder moved and left a link behind.
std::unique_ptr<Bookmarks> systemBookmarks();

} // namespace quillary::platform
