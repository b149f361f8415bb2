#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <span>
#include <stop_token>
#include <string>

namespace quillary::platform {

/// Runs a short-lived program of our own on input that is not to be trusted. Whatever happens to it, the caller gets an
/// ordinary answer. Any thread; blocks until the program has ended.
struct HelperProcess {
    std::filesystem::path program;
    std::span<const std::string> arguments;
    /// Handed on as descriptors 3, 4, … in this order. Nothing else of this process stays open in the helper, its
    /// standard streams lead nowhere.
    std::span<const int> descriptors;
    /// After this time the helper is killed.
    std::chrono::milliseconds wallTime;

    enum class End { exited, crashed, timedOut, stopped, notStarted };
    struct Outcome {
        End end;
        int status; ///< exit status when exited, signal when crashed, errno when not started
    };

    /// A stop request kills the helper at once.
    Outcome run(std::stop_token stop = {}) const;
};

struct HelperLimits {
    std::chrono::seconds processorTime;
    /// Bytes of private memory that it may write to, and of any file; what is only reserved does not count, since some
    /// libraries reserve more than there is. The first is not applied in sanitized builds, which need terabytes.
    std::uint64_t memory;
};

/// To be called first in the helper: sets the limits, lets it die with its parent, leave no core dump, write no file
/// that grows past `HelperLimits::memory`, and never gain a right.
void confineThisProcess(const HelperLimits& limits);

} // namespace quillary::platform
