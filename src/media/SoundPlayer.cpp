#include "media/SoundPlayer.h"

#include "base/Translation.h"
#include "base/Try.h"

#include <algorithm>

namespace quillary {

namespace {

using media::MediaError;
using Failure = platform::AudioOutput::Failure;

constexpr int followMilliseconds = 15;
/// What a sound server may still hold back of what it was given.
constexpr double heardLater = 0.2;

QString textFor(Failure failure) {
    return failure == Failure::noDevice ? translate("Media", "There is no sound output.")
                                        : translate("Media", "The sound output doesn’t take this sound.");
}

} // namespace

SoundPlayer::~SoundPlayer() {
    stop();
}

void SoundPlayer::play(const std::filesystem::path& url, double seconds, quint64 request) {
    stop();
    m_request = request;
    m_position = seconds;
    m_url = url;
    if (const auto prepared = prepare(seconds); !prepared) return end(media::description(prepared.error()));
    startOutput(seconds);
}

/// Opens the sound anew, so that a file that was changed meanwhile is heard as it is.
std::expected<void, MediaError> SoundPlayer::prepare(double seconds) {
    media::MediaModule* const module = TRY(media::decoders());
    m_reader = TRY(module->openSound(m_url));
    m_left = {};
    m_over = m_failed = false;
    if (seconds <= 0 || m_reader->seek(seconds)) return {};
    // What cannot seek is decoded up to the place.
    m_reader = TRY(module->openSound(m_url));
    auto skip = static_cast<std::int64_t>(seconds * m_reader->rate()) * m_reader->channels();
    while (skip > 0) {
        m_left = TRY(m_reader->read());
        if (m_left.empty()) break;
        const auto skipped = std::min<std::int64_t>(skip, std::ssize(m_left));
        m_left = m_left.subspan(static_cast<std::size_t>(skipped));
        skip -= skipped;
    }
    return {};
}

void SoundPlayer::startOutput(double seconds) {
    if (!m_output) m_output = m_makeOutput();
    if (!m_output) return end(textFor(Failure::noDevice));
    m_output->setVolume(m_volume);
    m_output->interrupted = [this] {
        // The default output is another one now: go on there where it broke off.
        const double heard = m_position;
        if (!m_reader) return;
        if (const auto prepared = prepare(heard); !prepared) return end(media::description(prepared.error()));
        startOutput(heard);
    };
    m_begin = seconds;
    m_framesGiven = 0;
    const auto failure = m_output->start({m_reader->rate(), m_reader->channels()},
                                         [this](std::span<std::int16_t> samples) { return fill(samples); });
    if (failure != Failure::none) return end(textFor(failure));
    if (!m_follow) {
        m_follow = new QTimer(this);
        m_follow->setTimerType(Qt::PreciseTimer);
        connect(m_follow, &QTimer::timeout, this, &SoundPlayer::follow);
    }
    m_follow->start(followMilliseconds);
}

std::size_t SoundPlayer::fill(std::span<std::int16_t> samples) {
    std::size_t filled = 0;
    while (filled < samples.size() && !m_over) {
        if (m_left.empty()) {
            const auto read = m_reader->read();
            m_failed = !read;
            m_left = read.value_or(std::span<const std::int16_t>());
            m_over = m_left.empty();
            continue;
        }
        const std::size_t count = std::min(m_left.size(), samples.size() - filled);
        std::ranges::copy(m_left.first(count), samples.begin() + static_cast<std::ptrdiff_t>(filled));
        m_left = m_left.subspan(count);
        filled += count;
    }
    m_framesGiven += static_cast<std::int64_t>(filled) / m_reader->channels();
    return filled;
}

void SoundPlayer::follow() {
    const std::int64_t played = m_output->playedFrames();
    const double rate = m_reader->rate();
    m_position = m_begin + static_cast<double>(std::min(played, m_framesGiven)) / rate;
    if (m_over && static_cast<double>(played - m_framesGiven) >= heardLater * rate)
        end(m_failed ? media::description(MediaError::unreadable) : QString());
}

void SoundPlayer::stop() {
    if (m_follow) m_follow->stop();
    if (m_output) m_output->stop();
    m_reader.reset();
    m_left = {};
}

void SoundPlayer::end(const QString& problem) {
    stop();
    Q_EMIT ended(m_request, problem);
}

void SoundPlayer::setVolume(double volume) {
    m_volume = volume;
    if (m_output) m_output->setVolume(volume);
}

} // namespace quillary
