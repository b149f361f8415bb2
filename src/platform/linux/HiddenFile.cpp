#include "platform/linux/HiddenFile.h"

#include "platform/PendingFile.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/FreeName.h"

#include <QByteArray>
#include <cerrno>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillary::platform {

std::filesystem::path hiddenName(const std::filesystem::path& folder) {
    std::random_device random;
    const quint64 number = (quint64{random()} << 32U) | random();
    std::string name(hiddenPrefix);
    name += std::to_string(::getpid()) + '-' + QByteArray::number(number, 16).toStdString();
    return folder / name.append(hiddenSuffix);
}

bool isHiddenName(std::string_view name) {
    return name.starts_with(hiddenPrefix) && name.ends_with(hiddenSuffix);
}

void lock(int descriptor) {
    while (::flock(descriptor, LOCK_EX) != 0 && errno == EINTR) {
    }
}

void removeAbandonedFiles(const std::filesystem::path& folder) {
    for (const std::string& name : namesIn(folder)) {
        if (!isHiddenName(name)) continue;
        const std::filesystem::path path = folder / name;
        const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        // Whoever still writes it holds the lock.
        if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) continue;
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
}

} // namespace quillary::platform
