#pragma once

#include <QByteArray>
#include <filesystem>
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

    virtual bool startAccess(const std::filesystem::path& folder) = 0;
    virtual void stopAccess(const std::filesystem::path& folder) = 0;
};

} // namespace quillary::platform
