#include "platform/Desktop.h"
#include "platform/linux/PortalManners.h"
#include "platform/linux/UserDirectories.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace quillary::platform;

TEST(UserDirectories, ReadTheFilmsFolderAsAShellWould) {
    struct Case {
        const char* text;
        const char* folder;
    };
    const Case cases[] = {
        {"# comment\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_VIDEOS_DIR=\"$HOME/Vid\xC3\xA9os\"\n", "/home/u/Vid\xC3\xA9os"},
        {"XDG_VIDEOS_DIR=\"/media/films\"", "/media/films"},
        {"  XDG_VIDEOS_DIR = \"/media/films/\"  \r\n", "/media/films"},
        {"XDG_VIDEOS_DIR=\"$HOME/a \\\"b\\\" \\$c\"", "/home/u/a \"b\" $c"},
        {"XDG_VIDEOS_DIR=\"/first\"\nXDG_VIDEOS_DIR=\"/last\"", "/last"},
    };
    for (const auto& [text, folder] : cases)
        EXPECT_EQ(userDirectory(text, "XDG_VIDEOS_DIR", "/home/u").value_or("none"), folder) << text;
    for (const char* none : {"XDG_VIDEOS_DIR=\"$HOME/\"", "XDG_VIDEOS_DIR=\"$HOME\"", "XDG_VIDEOS_DIR=\"Videos\"",
                             "XDG_VIDEOS_DIR=\"$HOMELESS/x\"", "XDG_VIDEOS_DIR=\"/unfinished", "XDG_VIDEOS_DIR=/bare",
                             "#XDG_VIDEOS_DIR=\"/commented\"", ""})
        EXPECT_EQ(userDirectory(none, "XDG_VIDEOS_DIR", "/home/u"), std::nullopt) << none;
}

TEST(Desktop, FindsTheFilmsFolder) {
    const quillary::test::TemporaryFolder home;
    qputenv("HOME", home.path().c_str());
    qunsetenv("XDG_CONFIG_HOME");
    const auto desktop = systemDesktop();
    EXPECT_EQ(desktop->homeFolder(), home.path());
    EXPECT_EQ(desktop->moviesFolder(), home / "Movies");
    quillary::test::writeFile(home / ".config/user-dirs.dirs", "XDG_VIDEOS_DIR=\"$HOME/Filme\"\n");
    EXPECT_EQ(desktop->moviesFolder(), home / "Filme");
    quillary::test::writeFile(home / "elsewhere/user-dirs.dirs", "XDG_VIDEOS_DIR=\"/films\"\n");
    qputenv("XDG_CONFIG_HOME", (home / "elsewhere").c_str());
    EXPECT_EQ(desktop->moviesFolder(), "/films");
}

TEST(Desktop, UnderstandsThePortalsSettings) {
    const QString gnome = QStringLiteral("org.gnome.desktop.interface");
    const QString animations = QStringLiteral("enable-animations");
    EXPECT_EQ(mannersOf({{gnome, {{animations, false}}}}), (PortalManners::Manners{false, true}));
    EXPECT_EQ(mannersOf({{gnome, {{animations, true}}}}), PortalManners::Manners());
    EXPECT_EQ(mannersOf({{QStringLiteral("org.freedesktop.appearance"),
                          {{QStringLiteral("color-scheme"), QStringLiteral("odd")}}}}),
              PortalManners::Manners());
}
