#pragma once

#include "support/TemporaryFolder.h"

#include <cstring>
#include <sched.h>
#include <string>
#include <sys/mount.h>

namespace quillary::test {

/// A file system in memory, seen by this program alone, for what a disk seldom shows: one that is full, that is
/// read-only, or that knows no attributes. Mounting needs rights; without them `problem` says why a test must be
/// skipped.
class SmallFileSystem {
public:
    /// Kinds: "tmpfs" (options such as "size=64k") or "ramfs", which has no extended attributes.
    explicit SmallFileSystem(const char* kind, const char* options = "") {
        static const std::string alone = [] {
            if (unshare(CLONE_NEWNS) != 0) return std::string(std::strerror(errno));
            if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
                return std::string(std::strerror(errno));
            return std::string();
        }();
        m_problem = alone;
        if (!m_problem.empty()) return;
        if (mount("none", path().c_str(), kind, 0, options) == 0)
            m_mounted = true;
        else
            m_problem = std::strerror(errno);
    }
    ~SmallFileSystem() {
        if (m_mounted) umount2(path().c_str(), MNT_DETACH);
    }
    SmallFileSystem(const SmallFileSystem&) = delete;
    SmallFileSystem& operator=(const SmallFileSystem&) = delete;

    const std::string& problem() const { return m_problem; }
    const std::filesystem::path& path() const { return m_folder.path(); }
    std::filesystem::path operator/(const std::filesystem::path& below) const { return path() / below; }

    bool makeReadOnly() { return mount("none", path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0; }

private:
    TemporaryFolder m_folder;
    bool m_mounted = false;
    std::string m_problem;
};

} // namespace quillary::test

/// Skips a test where the system does not let it mount anything.
#define SKIP_UNLESS_MOUNTED(fileSystem)                                                                                \
    if (!(fileSystem).problem().empty()) GTEST_SKIP() << "cannot mount a file system here: " << (fileSystem).problem()
