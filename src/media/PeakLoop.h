#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace quillary::media {

/// Boils a stream of 16-bit samples, channels taken in turn, down to the loudest of each stretch of it.
class PeakLoop {
public:
    /// `expectedSamples` of all channels together decide how long a stretch is; more or fewer may come.
    PeakLoop(std::int64_t expectedSamples, int count);

    void add(std::span<const std::int16_t> samples);
    /// The same for floating-point samples, `length` of each channel in a plane of its own: they count as what they are
    /// when rounded to 16 bits. Interleaved samples are one plane.
    void add(std::span<const float* const> planes, std::size_t length);

    /// Samples that came, of how many that were expected.
    std::int64_t seen() const { return m_seen; }
    std::int64_t expected() const { return m_expected; }

    /// One value from 0 to 1 for every stretch that was filled, at least one when there was any sample; the loudest is
    /// 1 unless all are next to silent. Ends the loop.
    std::vector<float> finish();

private:
    template <typename LoudestOf>
    void feed(std::int64_t samples, const LoudestOf& loudestOf);
    void closeBucket();

    std::vector<float> m_buckets;
    std::int64_t m_expected;
    std::int64_t m_samplesPerBucket;
    std::int64_t m_seen = 0;
    std::int64_t m_bucketLeft; ///< samples until the next border
    int m_loudest = 0;         ///< since the last border
};

} // namespace quillary::media
