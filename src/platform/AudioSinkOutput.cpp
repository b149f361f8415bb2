#include "platform/AudioOutput.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>
#include <algorithm>

namespace quillary::platform {

namespace {

constexpr qsizetype sampleBytes = sizeof(std::int16_t);
constexpr qint64 bufferMilliseconds = 120;

/// Hands the source's samples to the sink, and silence after them: a sink that runs dry would cut off what it still
/// holds.
class Feed final : public QIODevice {
public:
    Feed(AudioOutput::Source source, int channels) : m_source(std::move(source)), m_channels(channels) {
        open(QIODevice::ReadOnly);
    }

    qint64 readData(char* data, qint64 most) override {
        const qint64 samples = most / sampleBytes / m_channels * m_channels;
        const std::span<std::int16_t> wanted(reinterpret_cast<std::int16_t*>(data), static_cast<std::size_t>(samples));
        const std::size_t got = m_over ? 0 : m_source(wanted);
        m_over = got < wanted.size();
        std::ranges::fill(wanted.subspan(got), std::int16_t(0));
        return samples * sampleBytes;
    }
    qint64 writeData(const char*, qint64) override { return -1; }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return 1 << 20; }

private:
    AudioOutput::Source m_source;
    int m_channels;
    bool m_over = false;
};

class AudioSinkOutput final : public QObject, public AudioOutput {
public:
    AudioSinkOutput() {
        connect(&m_devices, &QMediaDevices::audioOutputsChanged, this, [this] {
            if (m_sink && QMediaDevices::defaultAudioOutput().id() != m_device) breakOff();
        });
    }
    ~AudioSinkOutput() override { stop(); }

    Failure start(Format format, Source source) override {
        stop();
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        if (device.isNull()) return Failure::noDevice;
        QAudioFormat wanted;
        wanted.setSampleRate(format.rate);
        wanted.setChannelCount(format.channels);
        wanted.setSampleFormat(QAudioFormat::Int16);
        if (!device.isFormatSupported(wanted)) return Failure::notTaken;
        m_device = device.id();
        m_frameBytes = wanted.bytesPerFrame();
        m_rate = format.rate;
        m_feed = std::make_unique<Feed>(std::move(source), format.channels);
        m_sink = std::make_unique<QAudioSink>(device, wanted);
        m_sink->setBufferSize(wanted.bytesForDuration(bufferMilliseconds * 1000));
        m_sink->setVolume(m_volume);
        m_sink->start(m_feed.get());
        if (m_sink->error() != QAudio::NoError) {
            stop();
            return Failure::notTaken;
        }
        connect(m_sink.get(), &QAudioSink::stateChanged, this, [this](QAudio::State state) {
            if (state == QAudio::StoppedState && m_sink && m_sink->error() != QAudio::NoError) breakOff();
        });
        return Failure::none;
    }

    void stop() override {
        if (!m_sink) return;
        m_sink->disconnect(this);
        // What is still in the buffer is not to be heard.
        m_sink->reset();
        m_sink.reset();
        m_feed.reset();
    }

    void setVolume(double volume) override {
        m_volume = volume;
        if (m_sink) m_sink->setVolume(volume);
    }

    std::int64_t playedFrames() const override {
        if (!m_sink) return 0;
        const std::int64_t handedOver = m_sink->processedUSecs() * m_rate / 1'000'000;
        const std::int64_t waiting = std::max<qsizetype>(m_sink->bufferSize() - m_sink->bytesFree(), 0) / m_frameBytes;
        return std::max<std::int64_t>(handedOver - waiting, 0);
    }

private:
    /// Later: the sink that tells of it must not go while it does.
    void breakOff() {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!m_sink) return;
                stop();
                if (interrupted) interrupted();
            },
            Qt::QueuedConnection);
    }

    QMediaDevices m_devices;
    QByteArray m_device;
    std::unique_ptr<Feed> m_feed;
    std::unique_ptr<QAudioSink> m_sink;
    double m_volume = 1;
    int m_frameBytes = 1;
    int m_rate = 1;
};

} // namespace

} // namespace quillary::platform

extern "C" __attribute__((visibility("default"))) quillary::platform::AudioOutput* quillaryAudioOutput() {
    return new quillary::platform::AudioSinkOutput;
}
