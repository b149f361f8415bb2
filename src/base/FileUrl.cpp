#include "base/FileUrl.h"

#include <string>
#include <string_view>

namespace quillary {

namespace {

constexpr std::string_view scheme = "file://";
constexpr std::string_view kept = "-._~!$&'()*+,:=@/";

bool staysBare(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || kept.contains(c);
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

QByteArray fileUrl(const std::filesystem::path& path) {
    constexpr char digits[] = "0123456789ABCDEF";
    QByteArray url(scheme.data(), static_cast<qsizetype>(scheme.size()));
    for (const char c : path.native()) {
        if (staysBare(c)) {
            url += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        url += '%';
        url += digits[byte >> 4U];
        url += digits[byte & 15U];
    }
    return url;
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

} // namespace quillary
