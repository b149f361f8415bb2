#pragma once

#include "base/NumberedName.h"
#include "platform/FileError.h"

#include <dirent.h>
#include <expected>
#include <filesystem>
#include <string>
#include <unordered_set>

namespace quillary::platform {

/// Gives a file or folder another name on the same file system, failing with EEXIST when that name is taken.
///
/// One step where the file system can refuse to overwrite; else a second link and the removal of the first (a kill in
/// between leaves both names of one whole file). The last resort, for file systems that know neither, claims the name
/// with an empty file or folder and renames over it: a kill in between leaves that empty claim.
std::expected<void, FileError> renameExclusively(const std::filesystem::path& from, const std::filesystem::path& to);

/// Waits until the names in a folder are on the disk, as far as its file system can tell.
void syncFolder(const std::filesystem::path& folder);

/// The names in a folder; empty when it cannot be read.
inline std::unordered_set<std::string> namesIn(const std::filesystem::path& folder) {
    std::unordered_set<std::string> names;
    DIR* stream = opendir(folder.c_str());
    if (!stream) return names;
    while (const dirent* entry = readdir(stream)) names.emplace(entry->d_name);
    closedir(stream);
    return names;
}

/// Offers the names of the sequence to `claim` until it takes one: every other answer than EEXIST ends the search.
/// Long runs of taken names are found in one reading of the folder; only `claim` decides that a name is free.
template <typename Claim>
std::expected<std::filesystem::path, FileError> claimFreeName(const std::filesystem::path& folder,
                                                              const NumberedName& names, Claim claim) {
    constexpr unsigned tryBlindly = 6;
    constexpr unsigned giveUp = 10'000'000;
    std::unordered_set<std::string> taken;
    for (unsigned n = 1; n < giveUp; ++n) {
        const std::string name = names.at(n);
        if (n == tryBlindly) taken = namesIn(folder);
        if (taken.contains(name)) continue;
        std::filesystem::path path = folder / name;
        const std::expected<void, FileError> claimed = claim(path);
        if (claimed) return path;
        if (claimed.error().code != EEXIST) return std::unexpected(claimed.error());
    }
    return std::unexpected(FileError{EEXIST});
}

} // namespace quillary::platform
