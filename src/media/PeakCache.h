#pragma once

#include "imaging/ThumbnailCache.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace quillary {

/// Waveforms that survive a restart, in files below the folder for caches. An entry is good only while its sound has
/// the date, to the nanosecond, and the size that it was made from. The folder keeps to a bound: the oldest entries go.
/// Writing is best effort and atomic. Stateless but for the folder; any thread, any number of processes.
class PeakCache {
public:
    using FileState = ThumbnailCache::FileState;

    /// Without a folder nothing is kept.
    explicit PeakCache(const std::filesystem::path& cacheFolder) : m_folder(cacheFolder / "quillary" / "waveforms") {}

    std::optional<std::vector<float>> read(const std::filesystem::path& url, const FileState& state, int count) const;
    void write(const std::filesystem::path& url, const FileState& state, int count,
               const std::vector<float>& peaks) const;

    /// Removes the oldest entries down to `most`.
    void prune(std::size_t most = 10'000) const;

private:
    std::filesystem::path m_folder;
};

} // namespace quillary
