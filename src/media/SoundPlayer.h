#pragma once

#include "media/Decoders.h"
#include "platform/AudioOutput.h"

#include <QObject>
#include <QTimer>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>

namespace quillary {

/// Plays one sound at a time: decodes it and keeps the output fed. Lives on a thread of its own with an event loop, so
/// that neither the decoding nor the output waits for a busy panel; its slots are called there.
class SoundPlayer : public QObject {
    Q_OBJECT

public:
    using MakeOutput = std::function<std::unique_ptr<platform::AudioOutput>()>;
    explicit SoundPlayer(MakeOutput makeOutput) : m_makeOutput(std::move(makeOutput)) {}
    ~SoundPlayer() override;

    /// The time that is heard now, in seconds; any thread.
    double position() const { return m_position; }

    void play(const std::filesystem::path& url, double seconds, quint64 request);
    /// The file that plays lies there now.
    void moved(const std::filesystem::path& url) { m_url = url; }
    void stop();
    void setVolume(double volume);

Q_SIGNALS:
    /// The request ended: the last sample was heard, or, with a text, it could not be played.
    void ended(quint64 request, const QString& problem);

private:
    std::expected<void, media::MediaError> prepare(double seconds);
    void startOutput(double seconds);
    std::size_t fill(std::span<std::int16_t> samples);
    void follow();
    void end(const QString& problem);

    MakeOutput m_makeOutput;
    std::unique_ptr<platform::AudioOutput> m_output;
    std::filesystem::path m_url;
    std::unique_ptr<media::SoundReader> m_reader;
    std::span<const std::int16_t> m_left; ///< decoded and not yet played
    QTimer* m_follow = nullptr;
    quint64 m_request = 0;
    double m_volume = 1;
    double m_begin = 0;             ///< seconds at which the output was started
    std::int64_t m_framesGiven = 0; ///< to the output since then
    bool m_over = false;            ///< the source has given its last sample
    bool m_failed = false;          ///< the file could not be read to its end
    std::atomic<double> m_position = 0;
};

} // namespace quillary
