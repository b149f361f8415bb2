#include "platform/OpenFolder.h"

#include "platform/linux/Attributes.h"
#include "platform/linux/HiddenFile.h"
#include "platform/linux/RegularFile.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace {

constexpr std::size_t readAtOnce = 65536;

/// The kernel's own record of a folder's entry.
struct RawEntry {
    std::uint64_t number;
    std::int64_t next;
    std::uint16_t length;
    std::uint8_t type;
    char name[];
};

/// Newer kernels read an attribute by folder and name; older ones need the whole path.
struct AttributeArguments {
    std::uint64_t value;
    std::uint32_t size;
    std::uint32_t flags;
};
constexpr long getAttributeAt = 464;

ssize_t attributeAt(int folder, const char* name, const char* attribute, char* buffer, std::size_t size) {
    const AttributeArguments arguments{reinterpret_cast<std::uint64_t>(buffer), static_cast<std::uint32_t>(size), 0};
    return ::syscall(getAttributeAt, folder, name, 0, attribute, &arguments, sizeof arguments);
}

bool knowsAttributeAt() {
    static const bool known = [] {
        char value = 0;
        return attributeAt(AT_FDCWD, "/", "user.none", &value, 1) >= 0 || (errno != ENOSYS && errno != EPERM);
    }();
    return known;
}

OpenFolder::Kind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return OpenFolder::Kind::file;
    if (S_ISLNK(mode)) return OpenFolder::Kind::link;
    return S_ISDIR(mode) ? OpenFolder::Kind::folder : OpenFolder::Kind::other;
}

/// For file systems that do not tell the kind with the name.
OpenFolder::Kind askedKind(int folder, const char* name) {
    struct stat status {};
    if (::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) return OpenFolder::Kind::other;
    return kindOf(status.st_mode);
}

} // namespace

AttributeName::AttributeName(std::string_view name) : m_full(attributeName(name)) {}

OpenFolder::OpenFolder(OpenFolder&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)), m_path(std::move(other.m_path)) {}

OpenFolder& OpenFolder::operator=(OpenFolder&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    std::swap(m_path, other.m_path);
    return *this;
}

OpenFolder::~OpenFolder() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

std::optional<OpenFolder> OpenFolder::open(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return {};
    return OpenFolder(descriptor, path.native());
}

std::optional<OpenFolder> OpenFolder::openFolder(const char* name) const {
    const int descriptor = ::openat(m_descriptor, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return {};
    std::string path;
    path.reserve(m_path.size() + 1 + std::strlen(name));
    path.append(m_path).append(1, '/').append(name);
    return OpenFolder(descriptor, std::move(path));
}

FileIdentity OpenFolder::identity() const {
    struct stat status {};
    if (::fstat(m_descriptor, &status) != 0) return {};
    return {.device = status.st_dev, .number = status.st_ino};
}

void OpenFolder::read(Entries& entries) const {
    entries.text.clear();
    entries.list.clear();
    entries.temporaryFiles = false;
    entries.scratch.resize(readAtOnce);
    const char* buffer = entries.scratch.data();
    while (true) {
        const long length = ::syscall(SYS_getdents64, m_descriptor, entries.scratch.data(), readAtOnce);
        if (length <= 0) return;
        for (long at = 0; at < length;) {
            const auto* raw = reinterpret_cast<const RawEntry*>(buffer + at);
            at += raw->length;
            if (raw->name[0] == '.') {
                entries.temporaryFiles = entries.temporaryFiles || isHiddenName(raw->name);
                continue;
            }
            const Kind kind = raw->type == DT_UNKNOWN ? askedKind(m_descriptor, raw->name) : kindOf(DTTOIF(raw->type));
            const std::size_t size = std::strlen(raw->name);
            entries.list.push_back(
                {static_cast<std::uint32_t>(entries.text.size()), static_cast<std::uint32_t>(size), kind});
            entries.text.append(raw->name, size + 1);
        }
    }
}

std::optional<OpenFolder::Status> OpenFolder::status(const char* name) const {
    struct stat status {};
    if (::fstatat(m_descriptor, name, &status, 0) != 0) {
        if (errno == EACCES || errno == EOVERFLOW) return Status{Kind::other, decltype(Status::modified)::min(), 0};
        return {};
    }
    return Status{kindOf(status.st_mode), modifiedOf(status), static_cast<std::uint64_t>(status.st_size)};
}

std::string_view OpenFolder::attribute(const char* name, const AttributeName& attribute,
                                       std::span<char, 64> buffer) const {
    ssize_t length = 0;
    if (knowsAttributeAt())
        length = attributeAt(m_descriptor, name, attribute.full(), buffer.data(), buffer.size());
    else
        length = ::getxattr((m_path + '/' + name).c_str(), attribute.full(), buffer.data(), buffer.size());
    return length > 0 ? std::string_view(buffer.data(), static_cast<std::size_t>(length)) : std::string_view();
}

std::vector<std::filesystem::path> visibleEntries(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    std::vector<fs::path> entries;
    std::error_code failed;
    for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed))
        if (!at->path().filename().native().starts_with('.')) entries.push_back(at->path());
    return entries;
}

} // namespace quillary::platform
