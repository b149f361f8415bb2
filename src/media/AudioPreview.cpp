#include "media/AudioPreview.h"

#include "base/FileUrl.h"
#include "base/Text.h"
#include "library/AppSettings.h"
#include "media/MediaLength.h"
#include "media/Peaks.h"
#include "platform/SettingsStore.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace quillary {

namespace fs = std::filesystem;

namespace {

constexpr int tickMilliseconds = 33;
/// While somebody scrubs, a place is heard at least this long.
constexpr int scrubMilliseconds = 60;
constexpr int waveformsInMemory = 2000;

double clampedVolume(double volume) {
    return std::isnan(volume) ? 0 : std::clamp(volume, 0.0, 1.0);
}

} // namespace

/// Waveforms by file, shared with the workers that look them up.
struct AudioPreview::Remembered {
    explicit Remembered(const fs::path& cacheFolder) : onDisk(cacheFolder) {}

    struct Entry {
        PeakCache::FileState state;
        int count;
        std::vector<float> peaks;
    };
    const PeakCache onDisk;
    std::once_flag pruned;
    QMutex mutex;
    QCache<QByteArray, Entry> inMemory{waveformsInMemory};

    std::optional<std::vector<float>> find(const fs::path& url, int count) {
        const auto state = ThumbnailCache::stateOf(url);
        if (!state) return {};
        {
            const QMutexLocker lock(&mutex);
            const Entry* const known = inMemory.object(QByteArray::fromStdString(url.native()));
            if (known && known->state == *state && known->count == count) return known->peaks;
        }
        auto peaks = onDisk.read(url, *state, count);
        if (peaks) remember(url, *state, count, *peaks);
        return peaks;
    }
    void remember(const fs::path& url, const PeakCache::FileState& state, int count, const std::vector<float>& peaks) {
        const QMutexLocker lock(&mutex);
        inMemory.insert(QByteArray::fromStdString(url.native()), new Entry{state, count, peaks});
    }

    PeakList read(const fs::path& url, int count, std::stop_token stop) {
        const auto before = ThumbnailCache::stateOf(url);
        PeakList peaks = media::readPeaks(url, count, stop);
        // A file that changes while it is read has no waveform that could be kept.
        if (peaks && before && before == ThumbnailCache::stateOf(url)) {
            remember(url, *before, count, *peaks);
            onDisk.write(url, *before, count, *peaks);
            std::call_once(pruned, [this] { onDisk.prune(); });
        }
        return peaks;
    }
};

AudioPreview::AudioPreview(const Collaborators& with, QObject* parent)
    : QObject(parent)
    , m_settings(with.settings)
    , m_volume(clampedVolume(with.settings.previewVolume()))
    , m_player(std::make_unique<SoundPlayer>(with.makeOutput))
    , m_length(with.work)
    , m_peakCache(std::make_shared<Remembered>(with.cacheFolder))
    , m_reads(with.work) {
    m_player->moveToThread(&m_thread);
    connect(m_player.get(), &SoundPlayer::ended, this, [this](quint64 request, const QString& problem) {
        if (request != m_request) return;
        if (problem.isEmpty()) setProgress(1);
        setProblem(problem);
        setPlaying(false);
    });
    m_ticker.setInterval(tickMilliseconds);
    connect(&m_ticker, &QTimer::timeout, this, [this] {
        if (m_duration > 0) setProgress(std::clamp(m_player->position() / m_duration, 0.0, 1.0));
    });
    m_scrubPause.setSingleShot(true);
    m_scrubPause.setInterval(scrubMilliseconds);
    connect(&m_scrubPause, &QTimer::timeout, this, [this] {
        if (const auto fraction = std::exchange(m_scrubTo, {})) begin(*fraction);
    });
}

AudioPreview::~AudioPreview() {
    if (m_thread.isRunning()) {
        // On its own thread, where its output lives.
        QMetaObject::invokeMethod(
            m_player.get(), [this] { m_player.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
}

QString AudioPreview::urlText() const {
    return m_url ? QString::fromLatin1(fileUrl(*m_url)) : QString();
}

QString AudioPreview::name() const {
    return m_url ? shownStem(*m_url) : QString();
}

void AudioPreview::play(const fs::path& url, double fraction, std::optional<double> seconds) {
    m_scrubTo.reset();
    start(url, fraction, seconds);
}

void AudioPreview::scrub(const fs::path& url, double fraction, std::optional<double> seconds) {
    if (m_scrubPause.isActive() && m_url == url) {
        m_scrubTo = fraction;
        setProgress(std::clamp(fraction, 0.0, 1.0));
        return;
    }
    m_scrubPause.start();
    start(url, fraction, seconds);
}

void AudioPreview::start(const fs::path& url, double fraction, std::optional<double> seconds) {
    fraction = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
    setProblem({});
    const bool sameSound = m_url == url;
    if (!sameSound || seconds) {
        m_url = url;
        m_duration = seconds.value_or(0);
        Q_EMIT urlChanged();
    }
    setProgress(fraction);
    if (m_duration > 0) {
        begin(fraction);
        return;
    }
    ++m_request;
    setPlaying(true);
    m_length.run([url](std::stop_token stop) { return media::audioLength(url, stop); },
                 [this, fraction](const std::expected<double, media::MediaError>& length) {
                     if (!length) {
                         setProblem(media::description(length.error()));
                         setPlaying(false);
                         return;
                     }
                     m_duration = *length;
                     Q_EMIT urlChanged();
                     begin(fraction);
                 });
}

void AudioPreview::begin(double fraction) {
    m_length.cancel();
    if (!m_thread.isRunning()) {
        m_thread.setObjectName(QStringLiteral("sound"));
        m_thread.start(QThread::TimeCriticalPriority);
    }
    const quint64 request = ++m_request;
    setProgress(fraction);
    setPlaying(true);
    QMetaObject::invokeMethod(
        m_player.get(),
        [player = m_player.get(), url = *m_url, seconds = fraction * m_duration, volume = m_volume, request] {
            player->setVolume(volume);
            player->play(url, seconds, request);
        },
        Qt::QueuedConnection);
}

void AudioPreview::stop() {
    ++m_request;
    m_length.cancel();
    m_scrubTo.reset();
    if (m_thread.isRunning()) QMetaObject::invokeMethod(m_player.get(), &SoundPlayer::stop, Qt::QueuedConnection);
    setPlaying(false);
}

void AudioPreview::follow(const fs::path& from, const fs::path& to) {
    if (m_url != from) return;
    m_url = to;
    if (m_thread.isRunning())
        QMetaObject::invokeMethod(
            m_player.get(), [player = m_player.get(), to] { player->moved(to); }, Qt::QueuedConnection);
    Q_EMIT urlChanged();
    // Its length was being asked of a file that is not there any more.
    if (m_length.busy()) start(to, m_progress, {});
}

void AudioPreview::forget(const fs::path& url) {
    if (m_url != url) return;
    stop();
    m_url.reset();
    m_duration = 0;
    setProgress(0);
    Q_EMIT urlChanged();
}

void AudioPreview::setVolume(double volume) {
    m_volume = clampedVolume(volume);
    m_settings.store().setValue(SettingsKey::previewVolume, m_volume);
    if (m_thread.isRunning())
        QMetaObject::invokeMethod(
            m_player.get(), [player = m_player.get(), to = m_volume] { player->setVolume(to); }, Qt::QueuedConnection);
    Q_EMIT volumeChanged();
}

void AudioPreview::setPlaying(bool playing) {
    if (playing)
        m_ticker.start();
    else
        m_ticker.stop();
    if (std::exchange(m_isPlaying, playing) != playing) Q_EMIT isPlayingChanged();
}

void AudioPreview::setProgress(double progress) {
    if (std::exchange(m_progress, progress) != progress) Q_EMIT progressChanged();
}

void AudioPreview::setProblem(const QString& problem) {
    if (std::exchange(m_problem, problem) != problem) Q_EMIT problemChanged();
}

void AudioPreview::peaks(const fs::path& url, int count, std::stop_token stop,
                         std::function<void(const PeakList&)> done) {
    const auto read = [this, url, count, stop, done] {
        if (stop.stop_requested()) return false;
        m_reads.every(
            [cache = m_peakCache, url, count, stop](std::stop_token) { return cache->read(url, count, stop); },
            [this, stop, done](const PeakList& peaks) {
                m_readLimit.signal();
                if (!stop.stop_requested()) done(peaks);
            });
        return true;
    };
    m_reads.every([cache = m_peakCache, url, count](std::stop_token) { return cache->find(url, count); },
                  [this, stop, done, read](const std::optional<std::vector<float>>& known) {
                      if (stop.stop_requested()) return;
                      if (known)
                          done(*known);
                      else
                          m_readLimit.wait(read);
                  });
}

} // namespace quillary
