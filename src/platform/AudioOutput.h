#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace quillary::platform {

/// The system's sound output: plays what a source gives, on the default device. Lives on one thread with an event loop,
/// where its functions are called too.
class AudioOutput {
public:
    struct Format {
        int rate = 0;     ///< sample frames a second
        int channels = 0; ///< interleaved
    };
    enum class Failure {
        none,
        noDevice, ///< nothing to play on, or no sound server
        notTaken  ///< the device refuses this format or broke off
    };
    /// Fills 16-bit samples, whole sample frames, and tells how many; fewer than asked for mean that the sound is over.
    using Source = std::function<std::size_t(std::span<std::int16_t> samples)>;

    virtual ~AudioOutput() = default;

    /// Begins to play; what was playing ends.
    virtual Failure start(Format format, Source source) = 0;
    /// Falls silent at once.
    virtual void stop() = 0;
    /// 0 to 1, a linear gain.
    virtual void setVolume(double volume) = 0;
    /// How many sample frames of the source have left for the device since `start`. Goes on growing over silence after
    /// the source is over.
    virtual std::int64_t playedFrames() const = 0;

    /// Called when the default device became another one or the present one is gone: what played is silent now and may
    /// be started again.
    std::function<void()> interrupted;
};

/// The running session's output; the libraries behind it are loaded now. Null, with a warning, when they are missing.
std::unique_ptr<AudioOutput> systemAudioOutput();

/// The module that holds it, and its one entry.
inline constexpr const char* soundModule = "quillary-sound.so";
inline constexpr const char* soundModuleSymbol = "quillaryAudioOutput";
using SoundModuleEntry = AudioOutput* (*)();

} // namespace quillary::platform
