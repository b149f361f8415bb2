#include "platform/Desktop.h"

#include "platform/linux/PortalManners.h"
#include "platform/linux/UserDirectories.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

std::optional<fs::path> folderFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    if (!value || *value != '/') return {};
    return fs::path(value);
}

class LinuxDesktop final : public Desktop {
public:
    fs::path homeFolder() const override {
        if (auto home = folderFromEnvironment("HOME")) return *home;
        const passwd* user = getpwuid(getuid());
        return user && user->pw_dir ? fs::path(user->pw_dir) : fs::path("/");
    }

    fs::path moviesFolder() const override {
        const fs::path home = homeFolder();
        const fs::path settings = folderFromEnvironment("XDG_CONFIG_HOME").value_or(home / ".config");
        std::ifstream file(settings / "user-dirs.dirs", std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        return userDirectory(text, "XDG_VIDEOS_DIR", home).value_or(home / "Movies");
    }

    fs::path cacheFolder() const override {
        return folderFromEnvironment("XDG_CACHE_HOME").value_or(homeFolder() / ".cache");
    }

    bool prefersReducedMotion() const override { return manners().current().reducedMotion; }
    ColorScheme colorScheme() const override {
        return manners().current().light ? ColorScheme::light : ColorScheme::dark;
    }
    void watchManners(QObject* context, const std::function<void()>& changed) const override {
        QObject::connect(&manners(), &PortalManners::changed, context, changed);
    }

private:
    PortalManners& manners() const {
        if (!m_manners) m_manners = std::make_unique<PortalManners>();
        return *m_manners;
    }

    mutable std::unique_ptr<PortalManners> m_manners;
};

} // namespace

std::unique_ptr<Desktop> systemDesktop() {
    return std::make_unique<LinuxDesktop>();
}

} // namespace quillary::platform
