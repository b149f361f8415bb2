#pragma once

#include "fuzz/Promise.h"
#include "imaging/ThumbnailCache.h"
#include "media/PeakCache.h"
#include "panel/ListingCache.h"

#include <filesystem>

namespace quillary::fuzz {

using namespace Qt::StringLiterals;

/// One entry in each cache below a folder, and where its file lies.
struct CacheEntries {
    static constexpr int count = 100;
    const std::filesystem::path url = "/sounds/one.wav";
    const std::filesystem::path shelf = "/shelf";
    const ThumbnailCache::FileState state{.modified = 1'700'000'000'123'456'789, .size = 4321};
    const PeakCache peakCache;
    const ThumbnailCache thumbnails;
    const ListingCache listings;
    std::filesystem::path peaks;
    std::filesystem::path thumbnail;
    std::filesystem::path listing;

    explicit CacheEntries(const std::filesystem::path& folder)
        : peakCache(folder), thumbnails(folder / "thumbnails"), listings(folder) {
        std::vector<float> values(count);
        for (int i = 0; i < count; ++i) values[std::size_t(i)] = float(i) / count;
        peakCache.write(url, state, count, values);
        QImage picture(20, 10, QImage::Format_RGBA8888);
        picture.fill(qRgba(10, 200, 30, 128));
        thumbnails.write(url, state, ThumbnailCache::Size::large, {picture, {200, 100}});
        auto items = std::make_shared<LibraryItems>();
        for (std::size_t i = 0; i < ListingCache::worthwhile; ++i)
            items->push_back({shelf / "A" / (std::to_string(i) + ".png"), FileDate(std::chrono::seconds(i)), u"A"_s});
        listings.write(shelf, {.items = SearchableItems(std::move(items)), .collections = {u"A"_s}, .count = 5'000});
        peaks = onlyFileIn(folder / "quillary/waveforms");
        thumbnail = onlyFileIn(folder / "thumbnails/large");
        listing = onlyFileIn(folder / "quillary/shelves");
    }

private:
    static std::filesystem::path onlyFileIn(const std::filesystem::path& folder) {
        const std::filesystem::directory_iterator files(folder);
        require(files != std::filesystem::directory_iterator(), "an entry was written");
        return files->path();
    }
};

} // namespace quillary::fuzz
