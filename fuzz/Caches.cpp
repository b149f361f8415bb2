// Puts bytes where the caches of waveforms, thumbnails and listings keep an entry, and asks for it.
#include "fuzz/CacheEntries.h"
#include "imaging/ThumbnailCache.h"
#include "media/PeakCache.h"
#include "support/TemporaryFolder.h"

#include <QCoreApplication>

using namespace quillary;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    static const fuzz::CacheEntries entries(folder.path());
    test::writeFile(entries.peaks, std::string_view(reinterpret_cast<const char*>(data), size));
    if (const auto peaks = entries.peakCache.read(entries.url, entries.state, entries.count))
        fuzz::require(peaks->size() <= std::size_t(entries.count), "a waveform has as many values as were asked for");
    test::writeFile(entries.thumbnail, std::string_view(reinterpret_cast<const char*>(data), size));
    const auto small = ThumbnailCache::Size::large;
    if (const auto entry = entries.thumbnails.read(entries.url, entries.state, small))
        fuzz::require(!entry->picture.isNull() && entry->picture.width() <= int(small), "a thumbnail is small");
    test::writeFile(entries.listing, std::string_view(reinterpret_cast<const char*>(data), size));
    if (const auto listing = entries.listings.read(entries.shelf))
        fuzz::require(!listing->whole && listing->items.items().size() <= size, "a listing holds what its file does");
    return 0;
}
