#include "Tree.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace quillary::benchmark {

namespace fs = std::filesystem;

namespace {

constexpr std::array topics{"Logos",  "Sports",   "Titles",   "Arrows",   "Icons",  "Maps",  "Charts",
                            "People", "Food",     "Travel",   "Lower",    "Thirds", "Flags", "Badges",
                            "Frames", "Textures", "Overlays", "Stickers", "Emoji",  "Hands"};
constexpr std::size_t folderCount = 2000;

/// 20 topics of 9 sets of 10 groups each, and the levels between.
std::vector<fs::path> folders(const fs::path& root) {
    std::vector<fs::path> found;
    for (const fs::path topic : topics) {
        found.push_back(root / topic);
        for (int set = 0; set < 9; ++set) {
            const fs::path setFolder = root / topic / ("Set " + std::to_string(set));
            found.push_back(setFolder);
            for (int group = 0; group < 10; ++group)
                found.push_back(setFolder /
                                ("Group " + std::to_string(group) + ' ' + topics[(set + group) % topics.size()]));
        }
    }
    found.resize(folderCount);
    return found;
}

void makeFile(const fs::path& path, std::uint64_t number) {
    constexpr std::array formats{"svg", "jpeg", "png", "tiff"};
    const std::string format = formats[number % formats.size()];
    const int file = ::open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    const timespec date{static_cast<time_t>(1'600'000'000 + number * 2'654'435'761U % 100'000'000), 0};
    const std::array<timespec, 2> times{date, date};
    const bool made = ::write(file, "x", 1) == 1 &&
                      ::fsetxattr(file, "user.com.tamsel.quillary.source", format.data(), format.size(), 0) == 0 &&
                      ::futimens(file, times.data()) == 0;
    ::close(file);
    if (made) return;
    std::perror(path.c_str());
    std::exit(1);
}

} // namespace

void makeTree(const fs::path& root, int fileCount) {
    constexpr std::array extensions{"png", "png", "png", "png", "png", "png", "png", "jpg", "jpg", "svg"};
    const auto all = folders(root);
    for (const fs::path& folder : all) fs::create_directories(folder);
    for (int i = 0; i < fileCount; ++i) {
        const auto number = static_cast<std::uint64_t>(i);
        const std::string name = std::string(topics[number * 13 % topics.size()]) + ' ' + std::to_string(100000 + i) +
                                 ' ' + topics[number / 7 % topics.size()] + '.' +
                                 extensions[(number * 7 + 3) % extensions.size()];
        makeFile(all[number * all.size() / static_cast<std::uint64_t>(fileCount)] / name, number);
    }
}

} // namespace quillary::benchmark
