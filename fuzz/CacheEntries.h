#pragma once

#include "fuzz/Promise.h"
#include "imaging/ThumbnailCache.h"
#include "media/PeakCache.h"

#include <filesystem>

namespace quillary::fuzz {

/// One entry in each cache below a folder, and where its file lies.
struct CacheEntries {
    static constexpr int count = 100;
    const std::filesystem::path url = "/sounds/one.wav";
    const ThumbnailCache::FileState state{.modified = 1'700'000'000'123'456'789, .size = 4321};
    const PeakCache peakCache;
    const ThumbnailCache thumbnails;
    std::filesystem::path peaks;
    std::filesystem::path thumbnail;

    explicit CacheEntries(const std::filesystem::path& folder) : peakCache(folder), thumbnails(folder / "thumbnails") {
        std::vector<float> values(count);
        for (int i = 0; i < count; ++i) values[std::size_t(i)] = float(i) / count;
        peakCache.write(url, state, count, values);
        QImage picture(20, 10, QImage::Format_RGBA8888);
        picture.fill(qRgba(10, 200, 30, 128));
        thumbnails.write(url, state, ThumbnailCache::Size::large, {picture, {200, 100}});
        peaks = onlyFileIn(folder / "quillary/waveforms");
        thumbnail = onlyFileIn(folder / "thumbnails/large");
    }

private:
    static std::filesystem::path onlyFileIn(const std::filesystem::path& folder) {
        const std::filesystem::directory_iterator files(folder);
        require(files != std::filesystem::directory_iterator(), "an entry was written");
        return files->path();
    }
};

} // namespace quillary::fuzz
