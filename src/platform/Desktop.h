#pragma once

#include <filesystem>

namespace quillary::platform {

/// What the user's desktop says of places and manners. Stateless; every call asks anew.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// The user's folder for films; absent system answers give "Movies" in the home folder. Not created.
    virtual std::filesystem::path moviesFolder() const = 0;
    virtual std::filesystem::path homeFolder() const = 0;

    /// Whether the user asked for less movement.
    virtual bool prefersReducedMotion() const = 0;
    enum class ColorScheme { dark, light };
    virtual ColorScheme colorScheme() const = 0;
};

} // namespace quillary::platform
