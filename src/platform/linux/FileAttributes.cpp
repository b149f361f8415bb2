#include "platform/FileAttributes.h"

#include "platform/linux/Attributes.h"
#include "platform/linux/RegularFile.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quillary::platform {

namespace {

constexpr std::string_view addressAttribute = "xdg.origin.url";
constexpr std::string_view pageAttribute = "xdg.referrer.url";

} // namespace

std::optional<std::string> attribute(const std::filesystem::path& file, std::string_view name) {
    const std::string full = attributeName(name);
    std::array<char, 256> small;
    ssize_t length = getxattr(file.c_str(), full.c_str(), small.data(), small.size());
    if (length >= 0) return std::string(small.data(), static_cast<std::size_t>(length));
    if (errno != ERANGE) return {};
    length = getxattr(file.c_str(), full.c_str(), nullptr, 0);
    if (length < 0) return {};
    std::string value(static_cast<std::size_t>(length), '\0');
    if (getxattr(file.c_str(), full.c_str(), value.data(), value.size()) != length) return {};
    return value;
}

bool setAttribute(const std::filesystem::path& file, std::string_view name, std::string_view value) {
    return setxattr(file.c_str(), attributeName(name).c_str(), value.data(), value.size(), 0) == 0;
}

void removeAttribute(const std::filesystem::path& file, std::string_view name) {
    removexattr(file.c_str(), attributeName(name).c_str());
}

WebOrigin webOrigin(const std::filesystem::path& file) {
    const auto address = [&](std::string_view name) {
        return webAddress(QString::fromStdString(attribute(file, name).value_or(std::string())));
    };
    return {.page = address(pageAttribute), .address = address(addressAttribute)};
}

std::vector<std::pair<std::string_view, std::string>> attributesOf(const WebOrigin& origin) {
    std::vector<std::pair<std::string_view, std::string>> attributes;
    if (!origin.address.isEmpty()) attributes.emplace_back(addressAttribute, origin.address.toStdString());
    if (!origin.page.isEmpty()) attributes.emplace_back(pageAttribute, origin.page.toStdString());
    return attributes;
}

void clearQuarantine(const std::filesystem::path& file) {
    removeAttribute(file, "com.apple.quarantine");
}

bool isTaken(const std::filesystem::path& name) {
    struct stat status {};
    return ::lstat(name.c_str(), &status) == 0;
}

std::optional<std::uintmax_t> regularFileSize(const std::filesystem::path& file) {
    const auto stamp = fileStamp(file);
    return stamp ? std::optional(stamp->size) : std::nullopt;
}

std::optional<FileStamp> fileStamp(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return FileStamp{status.st_dev, status.st_ino, static_cast<std::uintmax_t>(status.st_size), modifiedOf(status)};
}

bool mayBeWritten(const std::filesystem::path& file) {
    constexpr unsigned write = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat status {};
    return ::stat(file.c_str(), &status) == 0 && (status.st_mode & write) != 0 && ::access(file.c_str(), W_OK) == 0;
}

void stampNow(const std::filesystem::path& file) {
    const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, timespec{0, UTIME_NOW}};
    utimensat(AT_FDCWD, file.c_str(), times.data(), 0);
}

} // namespace quillary::platform
