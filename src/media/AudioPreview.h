#pragma once

#include "base/Background.h"
#include "media/AsyncSemaphore.h"
#include "media/MediaError.h"
#include "media/PeakCache.h"
#include "media/SoundPlayer.h"

#include <QCache>
#include <QMutex>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <expected>
#include <optional>
#include <stop_token>

namespace quillary {

class AppSettings;

/// The one player of the Audio shelf and what draws its waveforms. Main thread.
class AudioPreview : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString url READ urlText NOTIFY urlChanged FINAL)
    Q_PROPERTY(QString name READ name NOTIFY urlChanged FINAL)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY isPlayingChanged FINAL)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(double duration READ duration NOTIFY urlChanged FINAL)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged FINAL)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged FINAL)

public:
    /// All of it outlives this object.
    struct Collaborators {
        AppSettings& settings;
        QThreadPool& work;
        std::filesystem::path cacheFolder;
        SoundPlayer::MakeOutput makeOutput;
    };
    explicit AudioPreview(const Collaborators& with, QObject* parent = nullptr);
    ~AudioPreview() override;

    // --- Playing --------------------------------------------------------------------------------------------------

    /// Plays from a fraction of the length, 0 to 1. `seconds` is the sound's length where the caller knows it; it is
    /// read otherwise.
    void play(const std::filesystem::path& url, double fraction, std::optional<double> seconds = {});
    /// The same while the pointer is dragged along the waveform: of places asked for in quick succession only some are
    /// heard, the last one always.
    void scrub(const std::filesystem::path& url, double fraction, std::optional<double> seconds = {});
    Q_INVOKABLE void stop();
    /// The sound that lay at `from` lies at `to` now: where it plays it goes on.
    void follow(const std::filesystem::path& from, const std::filesystem::path& to);
    /// The sound is no longer there: where it plays it stops.
    void forget(const std::filesystem::path& url);

    /// The sound that was played last.
    const std::optional<std::filesystem::path>& url() const { return m_url; }
    /// As a file: URL, empty for none.
    QString urlText() const;
    /// What the shelf calls it; empty for none.
    QString name() const;
    bool isPlaying() const { return m_isPlaying; }
    double progress() const { return m_progress; } ///< 0 to 1
    double duration() const { return m_duration; } ///< seconds
    double volume() const { return m_volume; }
    /// Stored with the user's settings, between 0 and 1.
    void setVolume(double volume);
    /// Why the last sound could not be played; empty when it could.
    const QString& problem() const { return m_problem; }

    // --- Waveforms ------------------------------------------------------------------------------------------------

    using PeakList = std::expected<std::vector<float>, media::MediaError>;
    /// Reads a sound's waveform, unless memory or disk has it, and hands it over. At most three sounds are read at
    /// once, others wait in the order of their requests. A request that is stopped gives up its place and is not
    /// answered.
    void peaks(const std::filesystem::path& url, int count, std::stop_token stop,
               std::function<void(const PeakList&)> done);

Q_SIGNALS:
    void urlChanged();
    void isPlayingChanged();
    void progressChanged();
    void volumeChanged();
    void problemChanged();

private:
    struct Remembered;
    void start(const std::filesystem::path& url, double fraction, std::optional<double> seconds);
    void begin(double fraction);
    void setPlaying(bool playing);
    void setProgress(double progress);
    void setProblem(const QString& problem);

    AppSettings& m_settings;
    double m_volume;
    std::optional<std::filesystem::path> m_url;
    bool m_isPlaying = false;
    double m_progress = 0;
    double m_duration = 0;
    QString m_problem;

    QThread m_thread;
    std::unique_ptr<SoundPlayer> m_player; ///< lives on `m_thread`
    quint64 m_request = 0;
    QTimer m_ticker;
    QTimer m_scrubPause;
    std::optional<double> m_scrubTo; ///< asked for while another place is just being heard
    Background m_length;

    std::shared_ptr<Remembered> m_peakCache;
    AsyncSemaphore m_readLimit{3};
    Background m_reads;
};

} // namespace quillary
