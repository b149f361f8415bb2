#include "platform/OpenFolder.h"

#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace quillary::platform {

namespace {

constexpr std::uint32_t entryChanges =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB;
constexpr std::uint32_t goneChanges = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT;

FolderWatch::Change changeOf(const inotify_event& event) {
    using Kind = FolderWatch::Change::Kind;
    if ((event.mask & IN_Q_OVERFLOW) != 0) return {Kind::lost, -1};
    if ((event.mask & (goneChanges | IN_IGNORED)) != 0) return {Kind::gone, event.wd};
    if (event.len == 0) return {Kind::attributes, event.wd};
    const auto kind = (event.mask & IN_CREATE) != 0   ? Kind::created
                      : (event.mask & IN_MODIFY) != 0 ? Kind::modified
                      : (event.mask & IN_ATTRIB) != 0 ? Kind::entry
                                                      : Kind::settled;
    return {kind, event.wd, event.name};
}

} // namespace

FolderWatch::FolderWatch() : m_descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

FolderWatch::~FolderWatch() {
    if (m_descriptor >= 0) ::close(m_descriptor);
}

FolderWatch::FolderWatch(FolderWatch&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FolderWatch& FolderWatch::operator=(FolderWatch&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

int FolderWatch::add(const std::filesystem::path& folder) {
    if (m_descriptor < 0) return -1;
    return ::inotify_add_watch(m_descriptor, folder.c_str(), entryChanges | goneChanges | IN_ONLYDIR | IN_EXCL_UNLINK);
}

void FolderWatch::remove(int watch) {
    if (m_descriptor >= 0 && watch >= 0) ::inotify_rm_watch(m_descriptor, watch);
}

std::vector<FolderWatch::Change> FolderWatch::read() {
    std::vector<Change> changes;
    if (m_descriptor < 0) return changes;
    alignas(inotify_event) char buffer[16384];
    while (true) {
        const ssize_t length = ::read(m_descriptor, buffer, sizeof buffer);
        if (length <= 0) return changes;
        for (ssize_t at = 0; at < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            changes.push_back(changeOf(*event));
        }
    }
}

} // namespace quillary::platform
