// Loaded before a program, makes the system answer as file systems do that know less. PLAIN_FILE_SYSTEM names what is
// missing, joined by commas: "unnamed" files (O_TMPFILE), "exclusive" renaming, hard "links", "kernelcopy".
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>

namespace {

bool lacks(const char* what) {
    const char* missing = std::getenv("PLAIN_FILE_SYSTEM");
    return missing && std::strstr(missing, what);
}

template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int openOrRefuse(const char* name, const char* path, int flags, mode_t mode) {
    if ((flags & O_TMPFILE) == O_TMPFILE && lacks("unnamed")) {
        errno = EOPNOTSUPP;
        return -1;
    }
    static const auto real = next<int (*)(const char*, int, ...)>(name);
    return real(path, flags, mode);
}

} // namespace

extern "C" {

[[gnu::visibility("default")]] int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return openOrRefuse("open", path, flags, mode);
}

[[gnu::visibility("default")]] int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return openOrRefuse("open64", path, flags, mode);
}

[[gnu::visibility("default")]] int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                                             unsigned flags) {
    if (flags != 0 && lacks("exclusive")) {
        errno = EINVAL;
        return -1;
    }
    static const auto real = next<int (*)(int, const char*, int, const char*, unsigned)>("renameat2");
    return real(fromFolder, from, toFolder, to, flags);
}

[[gnu::visibility("default")]] int link(const char* from, const char* to) {
    if (lacks("links")) {
        errno = EPERM;
        return -1;
    }
    static const auto real = next<int (*)(const char*, const char*)>("link");
    return real(from, to);
}

[[gnu::visibility("default")]] ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset,
                                                       size_t length, unsigned flags) {
    if (lacks("kernelcopy")) {
        errno = EXDEV;
        return -1;
    }
    static const auto real = next<ssize_t (*)(int, off64_t*, int, off64_t*, size_t, unsigned)>("copy_file_range");
    return real(from, fromOffset, to, toOffset, length, flags);
}
}
