// Reads the file of remembered lengths, whatever stands in it, and keeps what was read.
#include "fuzz/Promise.h"
#include "media/AudioDurationCache.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <cmath>

using namespace quillary;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TemporaryFolder folder;
    // Files that are not there have the time 0, so that the seeds know their keys.
    using Path = std::filesystem::path;
    static const std::array<FileLocation, 3> sounds{Path("/a.wav"), Path("/b \xc3\xbc.mp3"), Path("/c")};
    const AudioDurationCache cache(folder.path());
    test::writeFile(folder.path() / ".audio-durations.json",
                    std::string_view(reinterpret_cast<const char*>(data), size));
    const auto known = cache.load(sounds);
    for (const auto& [url, seconds] : known)
        fuzz::require(std::isfinite(seconds) && seconds >= 0, "lengths are numbers");
    if (known.empty()) return 0;
    fuzz::require(cache.save(known), "what is known can be kept");
    fuzz::require(cache.load(sounds) == known, "and is read again");
    return 0;
}
