#pragma once

#include "platform/Desktop.h"

namespace quillary::test {

/// A desktop whose places and manners a test sets.
class FakeDesktop : public platform::Desktop {
public:
    FakeDesktop() = default;
    explicit FakeDesktop(std::filesystem::path homeFolder) : home(std::move(homeFolder)) {}

    std::filesystem::path moviesFolder() const override { return movies.empty() ? home / "Movies" : movies; }
    std::filesystem::path homeFolder() const override { return home; }
    std::filesystem::path cacheFolder() const override { return home / ".cache"; }
    bool prefersReducedMotion() const override { return reducedMotion; }
    ColorScheme colorScheme() const override { return scheme; }

    std::filesystem::path home;
    std::filesystem::path movies; ///< "Movies" in the home folder when empty
    bool reducedMotion = false;
    ColorScheme scheme = ColorScheme::dark;
};

} // namespace quillary::test
