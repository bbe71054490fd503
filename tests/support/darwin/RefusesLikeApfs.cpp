// Loaded before a test program (LD_PRELOAD), makes the file system refuse what APFS refuses: names that are no UTF-8,
// files made by mknod(), times beyond 64 bits of nanoseconds. So it is seen here whether a test asks before it wants
// one.
#include "Utf8.h"

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

template <typename Function>
Function* next(Function* /*same*/, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool isRefused(const char* path) {
    if (vellmoor::test::isUtf8(path)) {
        return false;
    }
    errno = EILSEQ;
    return true;
}

mode_t modeOf(int flags, va_list arguments) {
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return (flags & O_CREAT) != 0 && isRefused(path) ? -1 : next(::open, "open")(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return (flags & O_CREAT) != 0 && isRefused(path) ? -1 : next(::openat, "openat")(folder, path, flags, mode);
}

int mkdir(const char* path, mode_t mode) noexcept {
    return isRefused(path) ? -1 : next(::mkdir, "mkdir")(path, mode);
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    return isRefused(path) ? -1 : next(::mkdirat, "mkdirat")(folder, path, mode);
}

int mknodat(int folder, const char* path, mode_t mode, dev_t device) noexcept {
    if (S_ISREG(mode)) {
        errno = EPERM;
        return -1;
    }
    return isRefused(path) ? -1 : next(::mknodat, "mknodat")(folder, path, mode, device);
}

int utimensat(int folder, const char* path, const timespec times[2], int flags) noexcept {
    constexpr std::int64_t latest = 9'223'372'036;
    if (times[1].tv_nsec != UTIME_OMIT && (times[1].tv_sec > latest || times[1].tv_sec < -latest)) {
        errno = EINVAL;
        return -1;
    }
    return next(::utimensat, "utimensat")(folder, path, times, flags);
}
}
