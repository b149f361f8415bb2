#pragma once

#include <filesystem>
#include <functional>
#include <memory>

class QObject;

namespace quillary::platform {

/// What the user's desktop says of places and manners. Places are asked anew at every call, on any thread. Manners are
/// the desktop's last answer, on the main thread: until it has come, which no caller waits for, they are dark and
/// moving.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// The user's folder for films; absent system answers give "Movies" in the home folder. Not created.
    virtual std::filesystem::path moviesFolder() const = 0;
    virtual std::filesystem::path homeFolder() const = 0;
    /// The user's folder for what can be made again. Not created.
    virtual std::filesystem::path cacheFolder() const = 0;

    /// Whether the user asked for less movement.
    virtual bool prefersReducedMotion() const = 0;
    enum class ColorScheme { dark, light };
    virtual ColorScheme colorScheme() const = 0;
    /// Begins to ask for the manners, if that has not begun, and calls `changed` whenever they become others, the first
    /// answer included, while `context` lives. Best called early, so that the answer is there when the window opens.
    virtual void watchManners(QObject* context, const std::function<void()>& changed) const {
        static_cast<void>(context);
        static_cast<void>(changed);
    }
};

/// The running session's desktop. Making it costs nothing; the session's bus is asked at the first question of manners.
std::unique_ptr<Desktop> systemDesktop();

} // namespace quillary::platform
