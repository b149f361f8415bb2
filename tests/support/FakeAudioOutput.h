#pragma once

#include "platform/AudioOutput.h"

#include <atomic>
#include <vector>

namespace quillary::test {

/// An output without a device: takes samples when it is told to. What it was given can be looked at from outside.
class FakeAudioOutput : public platform::AudioOutput {
public:
    /// Outlives the output.
    struct Log {
        std::atomic<int> starts = 0;
        std::atomic<int> stops = 0;
        std::atomic<double> volume = -1;
        std::atomic<int> rate = 0;
        std::atomic<int> channels = 0;
        std::atomic<Failure> failure = Failure::none;
        std::atomic<int> firstSample = 0; ///< that it was given since the last start
    };
    explicit FakeAudioOutput(Log& log) : m_log(log) {}

    Failure start(Format format, Source source) override {
        m_log.rate = format.rate;
        m_log.channels = format.channels;
        if (m_log.failure != Failure::none) return m_log.failure;
        m_channels = format.channels;
        m_source = std::move(source);
        m_played = 0;
        ++m_log.starts;
        return Failure::none;
    }
    void stop() override {
        m_source = nullptr;
        ++m_log.stops;
    }
    void setVolume(double volume) override { m_log.volume = volume; }
    /// Every question plays a little more.
    std::int64_t playedFrames() const override {
        std::vector<std::int16_t> samples(static_cast<std::size_t>(4000 * m_channels));
        if (!m_source) return m_played;
        m_source(samples);
        if (m_played == 0) m_log.firstSample = samples[0];
        return m_played += 4000;
    }

private:
    Log& m_log;
    int m_channels = 1;
    mutable Source m_source;
    mutable std::int64_t m_played = 0;
};

} // namespace quillary::test
