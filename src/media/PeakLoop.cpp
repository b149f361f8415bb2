#include "media/PeakLoop.h"

#include "imaging/png/Multiversion.h"

#include <algorithm>

namespace quillary::media {

namespace {

constexpr int fullScale = 32767;

/// The largest distance from 0; -32768 counts as 32767.
QUILLARY_MULTIVERSION int loudest(const std::int16_t* samples, std::size_t count) {
    std::int16_t highest = 0;
    std::int16_t lowest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        highest = std::max(highest, samples[i]);
        lowest = std::min(lowest, samples[i]);
    }
    return std::min(std::max<int>(highest, -lowest), fullScale);
}

} // namespace

PeakLoop::PeakLoop(std::int64_t expectedSamples, int count)
    : m_buckets(static_cast<std::size_t>(std::max(count, 1)))
    , m_samplesPerBucket(std::max<std::int64_t>(expectedSamples, std::ssize(m_buckets)) / std::ssize(m_buckets))
    , m_bucketLeft(m_samplesPerBucket) {}

void PeakLoop::add(std::span<const std::int16_t> samples) {
    while (!samples.empty()) {
        const auto stretch = std::min(static_cast<std::int64_t>(samples.size()), m_bucketLeft);
        m_loudest = std::max(m_loudest, loudest(samples.data(), static_cast<std::size_t>(stretch)));
        m_seen += stretch;
        m_bucketLeft -= stretch;
        samples = samples.subspan(static_cast<std::size_t>(stretch));
        if (m_bucketLeft == 0) closeBucket();
    }
}

void PeakLoop::closeBucket() {
    const auto index = std::min<std::int64_t>(std::ssize(m_buckets) - 1, m_seen / m_samplesPerBucket - 1);
    float& bucket = m_buckets[static_cast<std::size_t>(index)];
    bucket = std::max(bucket, static_cast<float>(m_loudest) / fullScale);
    m_loudest = 0;
    m_bucketLeft = m_samplesPerBucket;
}

std::vector<float> PeakLoop::finish() {
    if (m_seen == 0) return {};
    const auto filled = std::max<std::int64_t>(m_seen / m_samplesPerBucket, 1);
    m_buckets.resize(static_cast<std::size_t>(std::min<std::int64_t>(std::ssize(m_buckets), filled)));
    constexpr float nextToSilent = 0.01f;
    const float top = std::ranges::max(m_buckets);
    if (top > nextToSilent)
        for (float& bucket : m_buckets) bucket /= top;
    return std::move(m_buckets);
}

} // namespace quillary::media
