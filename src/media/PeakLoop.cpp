#include "media/PeakLoop.h"

#include "base/Multiversion.h"

#include <algorithm>
#include <bit>
#include <cmath>

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

/// Without their sign, floating-point numbers are ordered as their bits are; those that are none come last.
QUILLARY_MULTIVERSION std::int32_t loudestBits(const float* samples, std::size_t count) {
    constexpr std::int32_t withoutSign = 0x7fffffff;
    std::int32_t highest = 0;
    for (std::size_t i = 0; i < count; ++i)
        highest = std::max(highest, std::bit_cast<std::int32_t>(samples[i]) & withoutSign);
    return highest;
}

float loudest(const float* samples, std::size_t count) {
    const auto found = std::bit_cast<float>(loudestBits(samples, count));
    if (!std::isnan(found)) return found;
    float highest = 0;
    for (std::size_t i = 0; i < count; ++i) highest = std::fmax(highest, std::abs(samples[i]));
    return highest;
}

/// The distance from 0 of the 16-bit sample that a floating-point one becomes. Rounding keeps the order, so that only
/// the loudest needs to be rounded.
int rounded(float distance) {
    constexpr float unit = 32768;
    return static_cast<int>(std::min<long>(std::lrint(std::min(distance, 1.0f) * unit), fullScale));
}

} // namespace

PeakLoop::PeakLoop(std::int64_t expectedSamples, int count)
    : m_buckets(static_cast<std::size_t>(std::max(count, 1)))
    , m_expected(expectedSamples)
    , m_samplesPerBucket(std::max<std::int64_t>(expectedSamples, std::ssize(m_buckets)) / std::ssize(m_buckets))
    , m_bucketLeft(m_samplesPerBucket) {}

/// Goes from border to border; `loudestOf` looks at the samples from one number up to another.
template <typename LoudestOf>
void PeakLoop::feed(std::int64_t samples, const LoudestOf& loudestOf) {
    for (std::int64_t at = 0; at < samples;) {
        const auto stretch = std::min(samples - at, m_bucketLeft);
        m_loudest = std::max(m_loudest, loudestOf(at, at + stretch));
        at += stretch;
        m_seen += stretch;
        m_bucketLeft -= stretch;
        if (m_bucketLeft == 0) closeBucket();
    }
}

void PeakLoop::add(std::span<const std::int16_t> samples) {
    feed(std::ssize(samples), [&](std::int64_t from, std::int64_t to) {
        return loudest(samples.data() + from, static_cast<std::size_t>(to - from));
    });
}

void PeakLoop::add(std::span<const float* const> planes, std::size_t length) {
    const auto channels = std::ssize(planes);
    feed(static_cast<std::int64_t>(length) * channels, [&](std::int64_t from, std::int64_t to) {
        float highest = 0;
        for (std::int64_t channel = 0; channel < channels; ++channel) {
            // Channels take turns, and a border may lie between two of them.
            const auto first = (from - channel + channels - 1) / channels;
            const auto end = (to - channel + channels - 1) / channels;
            const float* const plane = planes[static_cast<std::size_t>(channel)];
            highest = std::max(highest, loudest(plane + first, static_cast<std::size_t>(end - first)));
        }
        return rounded(highest);
    });
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
