#pragma once

#include "values/FileLocation.h"

#include <QByteArray>
#include <chrono>
#include <filesystem>
#include <span>
#include <stop_token>
#include <unordered_map>

namespace quillary {

/// Lengths of sounds that survive a restart: the file ".audio-durations.json" in the Audio shelf's folder, one object
/// of numbers. A key is a file's path, the character U+0001 and its modification time in whole seconds since 1970, so
/// that an edited file has no entry. Any thread; two processes may write, the last one wins.
class AudioDurationCache {
public:
    using Durations = std::unordered_map<FileLocation, double>; ///< seconds

    explicit AudioDurationCache(const std::filesystem::path& shelfFolder)
        : m_file(shelfFolder / ".audio-durations.json") {}

    /// The known lengths of these files. None when the cache file is missing or damaged.
    Durations load(std::span<const FileLocation> urls) const;
    /// Replaces what the cache knows. False when the file cannot be written; it then stays as it was.
    bool save(const Durations& durations) const;

    /// Reads lengths from the files themselves. A file without one has no entry; a stop request ends it early.
    static Durations read(std::span<const FileLocation> urls, std::stop_token stop = {});

    /// The time stands as 0 for a file that has none.
    static QByteArray key(const std::filesystem::path& url);

private:
    std::filesystem::path m_file;
};

} // namespace quillary
