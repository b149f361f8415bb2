#include "platform/linux/UserDirectories.h"

#include <string>

namespace quillary::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(blanks);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// The text between double quotes, as a shell reads it.
std::optional<std::string> quoted(std::string_view text) {
    if (!text.starts_with('"')) return {};
    std::string value;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') return value;
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        value += text[i];
    }
    return {};
}

std::optional<fs::path> folder(std::string value, const fs::path& home) {
    constexpr std::string_view belowHome = "$HOME/";
    if (value.starts_with(belowHome)) value = (home / value.substr(belowHome.size())).native();
    fs::path path = fs::path(value).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    if (!path.is_absolute() || path == home) return {};
    return path;
}

} // namespace

std::optional<fs::path> userDirectory(std::string_view userDirs, std::string_view name, const fs::path& home) {
    std::optional<fs::path> found;
    while (!userDirs.empty()) {
        const auto end = userDirs.find('\n');
        const std::string_view line = trimmed(userDirs.substr(0, end));
        userDirs.remove_prefix(end == userDirs.npos ? userDirs.size() : end + 1);
        const auto equals = line.find('=');
        if (equals == line.npos || trimmed(line.substr(0, equals)) != name) continue;
        const auto value = quoted(trimmed(line.substr(equals + 1)));
        found = value ? folder(*value, home) : std::nullopt;
    }
    return found;
}

} // namespace quillary::platform
