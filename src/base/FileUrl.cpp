#include "base/FileUrl.h"

#include <string>
#include <string_view>

namespace quillary {

namespace {

constexpr const char* scheme = "file://";
constexpr const char* kept = "!$&'()*+,:=@/"; ///< beside letters, digits and -._~

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

QByteArray encoded(std::string_view path) {
    return QByteArray(path.data(), static_cast<qsizetype>(path.size())).toPercentEncoding(kept);
}

std::optional<std::string> decoded(std::string_view rest) {
    std::string path;
    path.reserve(rest.size());
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] != '%') {
            path += rest[i];
            continue;
        }
        if (i + 2 >= rest.size()) return {};
        const int high = hexDigit(rest[i + 1]);
        const int low = hexDigit(rest[i + 2]);
        if (high < 0 || low < 0) return {};
        const char byte = static_cast<char>(high * 16 + low);
        if (byte == '\0' || byte == '/') return {};
        path += byte;
        i += 2;
    }
    if (path.find('\0') != std::string::npos) return {};
    return path;
}

bool hasScheme(std::string_view reference) {
    const auto end = reference.find_first_of(":/?#");
    return end != std::string_view::npos && reference[end] == ':';
}

} // namespace

QByteArray fileUrl(const std::filesystem::path& path) {
    return scheme + encoded(path.native());
}

std::optional<std::filesystem::path> pathOfFileUrl(QByteArrayView url) {
    std::string_view rest(url.data(), static_cast<std::size_t>(url.size()));
    if (!rest.starts_with("file:")) return {};
    rest.remove_prefix(5);
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const auto host = rest.substr(0, rest.find('/'));
        if (!host.empty() && host != "localhost") return {};
        rest.remove_prefix(host.size());
    }
    if (!rest.starts_with('/')) return {};
    return decoded(rest);
}

QByteArray relativeReference(const std::filesystem::path& file, const std::filesystem::path& folder) {
    const auto below = file.lexically_normal().lexically_relative(folder.lexically_normal());
    const QByteArray reference = encoded(below.native());
    // What looks like a scheme is none behind a dot and a slash.
    return hasScheme(reference.toStdString()) ? "./" + reference : reference;
}

std::optional<std::filesystem::path> pathOfReference(QByteArrayView reference, const std::filesystem::path& folder) {
    const std::string_view text(reference.data(), static_cast<std::size_t>(reference.size()));
    if (hasScheme(text)) return pathOfFileUrl(reference);
    if (text.empty() || text.starts_with('/') || text.find_first_of("?#") != std::string_view::npos) return {};
    const auto path = decoded(text);
    return path ? std::optional((folder / *path).lexically_normal()) : std::nullopt;
}

} // namespace quillary
