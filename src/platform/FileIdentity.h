#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

namespace quillary::platform {

/// What makes a file the same one under another name.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    /// When it was made, where that is asked for and the file system tells: numbers of files that went are used again.
    std::int64_t born = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// Of the file, folder or link that bears the name now, with its birth; links are not followed. Absent when there is
/// none.
std::optional<FileIdentity> fileIdentity(const std::filesystem::path& file);

} // namespace quillary::platform

template <>
struct std::hash<quillary::platform::FileIdentity> {
    std::size_t operator()(const quillary::platform::FileIdentity& identity) const noexcept {
        return std::hash<std::uint64_t>()(identity.number ^ identity.device << 40U ^
                                          static_cast<std::uint64_t>(identity.born));
    }
};
