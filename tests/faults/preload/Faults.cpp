// Preloaded into a program: makes chosen system calls fail, stops them for somebody else's turn, or ends the program
// there. VELLMOOR_FAULTS holds one fault a line, of words KEY=VALUE separated by blanks:
//   calls=CLASS,...    what may be hit: the table of names below
//   from=start|change  what is counted: every call of these classes, or those from the program's first change on
//   at=N               the first of these calls that is hit, from 1
//   times=K|always     how many in a row are hit (1)
//   do=ERRNO           a number: the call fails with it | short: half is written | kill, term: the signal
//                      | ask: one byte is written to the descriptor ask=FD, and one awaited there
// log=FD (a word of its own line) gets a line for every fault that happened. What the program prints is left alone.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

enum Class : std::uint32_t {
    Rename = 1U << 0,
    Unlink = 1U << 1,
    Open = 1U << 2,
    Mkdir = 1U << 3,
    Write = 1U << 4,
    Fsync = 1U << 5,
    Link = 1U << 6,
    Stat = 1U << 7,
    List = 1U << 8,
    Chmod = 1U << 9,
    Close = 1U << 10,
    Truncate = 1U << 11,
    Time = 1U << 12,
    NoReplace = 1U << 13 // a rename with flags, which is a rename as well
};

constexpr std::array<const char*, 14> classNames{"rename", "unlink",   "open", "mkdir",    "write",
                                                 "fsync",  "link",     "stat", "list",     "chmod",
                                                 "close",  "truncate", "time", "noreplace"};

enum class Deed : std::uint8_t { Fail, Short, Kill, Term, Ask };

struct Fault {
    std::uint32_t classes = 0;
    bool fromStart = false;
    long at = 0;
    long times = 1;
    Deed deed = Deed::Fail;
    int error = 0;
    int channel = -1;
    std::atomic<long> seen = 0;
};

constexpr std::size_t faultLimit = 4;
std::array<Fault, faultLimit> faults;
std::size_t faultCount = 0;
int logChannel = -1;
std::atomic<bool> changed = false;

// Everything below that speaks to the kernel does so here: the functions of libc are replaced in this library.
long call(long number, long a = 0, long b = 0, long c = 0) {
    static const auto next = reinterpret_cast<long (*)(long, ...)>(::dlsym(RTLD_NEXT, "syscall"));
    return next(number, a, b, c);
}

long address(const void* pointer) {
    return reinterpret_cast<long>(pointer);
}

void say(const char* what, std::uint32_t kind, long number) {
    if (logChannel < 0) {
        return;
    }
    std::size_t index = 0;
    while (index + 1 < classNames.size() && (kind & 1U << index) == 0) {
        ++index;
    }
    std::array<char, 80> line{};
    const int length = std::snprintf(line.data(), line.size(), "%s %s %ld\n", what, classNames.at(index), number);
    (void)call(SYS_write, logChannel, address(line.data()), length);
}

std::uint32_t classesOf(const char* list) {
    std::uint32_t classes = 0;
    for (std::size_t index = 0; index < classNames.size(); ++index) {
        const char* found = std::strstr(list, classNames.at(index));
        const char* end = std::strpbrk(list, " \n");
        if (found != nullptr && (end == nullptr || found < end)) {
            classes |= 1U << index;
        }
    }
    return classes;
}

void readDeed(const char* word, Fault& fault) {
    struct Name {
        const char* text;
        Deed deed;
    };
    for (const Name& name :
         {Name{"short", Deed::Short}, Name{"kill", Deed::Kill}, Name{"term", Deed::Term}, Name{"ask", Deed::Ask}}) {
        if (std::strncmp(word, name.text, std::strlen(name.text)) == 0) {
            fault.deed = name.deed;
            return;
        }
    }
    fault.error = std::atoi(word);
}

const char* valueOf(const char* line, const char* end, const char* key) {
    const char* found = std::strstr(line, key);
    return found != nullptr && found < end ? found + std::strlen(key) : nullptr;
}

void readLine(const char* line, const char* end) {
    if (const char* value = valueOf(line, end, "log=")) {
        logChannel = std::atoi(value);
        return;
    }
    const char* calls = valueOf(line, end, "calls=");
    const char* deed = valueOf(line, end, "do=");
    if (calls == nullptr || deed == nullptr || faultCount == faultLimit) {
        return;
    }
    Fault& fault = faults.at(faultCount++);
    fault.classes = classesOf(calls);
    readDeed(deed, fault);
    if (const char* value = valueOf(line, end, "at=")) {
        fault.at = std::atol(value);
    }
    if (const char* value = valueOf(line, end, "times=")) {
        fault.times = *value == 'a' ? -1 : std::atol(value);
    }
    if (const char* value = valueOf(line, end, "from=")) {
        fault.fromStart = *value == 's';
    }
    if (const char* value = valueOf(line, end, "ask=")) {
        fault.channel = std::atoi(value);
    }
}

[[gnu::constructor]] void readFaults() {
    for (const char* line = std::getenv("VELLMOOR_FAULTS"); line != nullptr && *line != '\0';) {
        const char* newline = std::strchr(line, '\n');
        const char* end = newline == nullptr ? line + std::strlen(line) : newline;
        readLine(line, end);
        line = newline == nullptr ? nullptr : newline + 1;
    }
    ::unsetenv("VELLMOOR_FAULTS"); // tools that the program starts are left alone
    ::unsetenv("LD_PRELOAD");
}

constexpr int goOn = 0;
constexpr int goHalf = -1;

void awaitTurn(int channel) {
    char byte = 'a';
    (void)call(SYS_write, channel, address(&byte), 1);
    while (call(SYS_read, channel, address(&byte), 1) < 0 && errno == EINTR) {
    }
}

int perform(const Fault& fault, std::uint32_t kind, long number) {
    const int before = errno;
    switch (fault.deed) {
    case Deed::Kill:
    case Deed::Term:
        say(fault.deed == Deed::Kill ? "kill" : "term", kind, number);
        (void)call(SYS_kill, call(SYS_getpid), fault.deed == Deed::Kill ? SIGKILL : SIGTERM);
        break;
    case Deed::Ask:
        say("ask", kind, number);
        awaitTurn(fault.channel);
        break;
    case Deed::Short:
        say("short", kind, number);
        errno = before;
        return goHalf;
    case Deed::Fail:
        say("fail", kind, number);
        errno = fault.error;
        return fault.error;
    }
    errno = before;
    return goOn;
}

// Counts one call. The error that it has to fail with, goHalf, or goOn.
int meet(std::uint32_t kind, bool changes) {
    if (faultCount == 0) {
        return goOn;
    }
    if (changes) {
        changed = true;
    }
    int answer = goOn;
    for (std::size_t index = 0; index < faultCount; ++index) {
        Fault& fault = faults.at(index);
        if ((fault.classes & kind) == 0 || (!fault.fromStart && !changed)) {
            continue;
        }
        const long number = ++fault.seen;
        const bool isHit = number >= fault.at && (fault.times < 0 || number < fault.at + fault.times);
        if (isHit) {
            answer = perform(fault, kind, number);
        }
    }
    return answer;
}

bool isOwn(int descriptor) {
    bool isChannel = descriptor == logChannel || descriptor == STDOUT_FILENO || descriptor == STDERR_FILENO;
    for (std::size_t index = 0; index < faultCount; ++index) {
        isChannel = isChannel || descriptor == faults.at(index).channel;
    }
    return isChannel;
}

bool changesBy(int flags) {
    return (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_ACCMODE) != O_RDONLY;
}

bool isModeGiven(int flags) {
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

mode_t modeOf(int flags, va_list rest) {
    return isModeGiven(flags) ? static_cast<mode_t>(va_arg(rest, unsigned)) : 0;
}

std::uint32_t renameClasses(unsigned long flags) {
    return flags == 0 ? Rename : Rename | NoReplace;
}

// The classes of a call that the program makes by its number.
std::uint32_t classesOf(long number, const std::array<long, 6>& words) {
    switch (number) {
    case SYS_renameat2:
        return renameClasses(static_cast<unsigned long>(words[4]));
    case SYS_renameat:
        return Rename;
    case SYS_unlinkat:
        return Unlink;
    case SYS_openat:
    case SYS_openat2:
        return Open;
    case SYS_getdents64:
        return List;
    case SYS_statx:
        return Stat;
    case SYS_fchmodat:
        return Chmod;
    default:
        return 0;
    }
}

} // namespace

// A function of libc that answers -1 (or `failure`) and errno.
#define VELLMOOR_FAULT(kind, changes, failure, name, parameters, arguments)                                            \
    extern "C" [[gnu::visibility("default")]] auto name parameters->decltype(::name arguments) {                       \
        static const auto next = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name));                       \
        return meet(kind, changes) > goOn ? failure : next arguments;                                                  \
    }

VELLMOOR_FAULT(Rename, true, -1, rename, (const char* from, const char* to), (from, to))
VELLMOOR_FAULT(Rename, true, -1, renameat, (int a, const char* from, int b, const char* to), (a, from, b, to))
VELLMOOR_FAULT(renameClasses(flags), true, -1, renameat2,
               (int a, const char* from, int b, const char* to, unsigned flags), (a, from, b, to, flags))
VELLMOOR_FAULT(Unlink, true, -1, unlink, (const char* path), (path))
VELLMOOR_FAULT(Unlink, true, -1, unlinkat, (int folder, const char* path, int flags), (folder, path, flags))
VELLMOOR_FAULT(Unlink, true, -1, rmdir, (const char* path), (path))
VELLMOOR_FAULT(Unlink, true, -1, remove, (const char* path), (path))
VELLMOOR_FAULT(Mkdir, true, -1, mkdir, (const char* path, mode_t mode), (path, mode))
VELLMOOR_FAULT(Mkdir, true, -1, mkdirat, (int folder, const char* path, mode_t mode), (folder, path, mode))
VELLMOOR_FAULT(Link, true, -1, link, (const char* from, const char* to), (from, to))
VELLMOOR_FAULT(Link, true, -1, linkat, (int a, const char* from, int b, const char* to, int flags),
               (a, from, b, to, flags))
VELLMOOR_FAULT(Link, true, -1, symlink, (const char* target, const char* path), (target, path))
VELLMOOR_FAULT(Link, true, -1, symlinkat, (const char* target, int folder, const char* path), (target, folder, path))
VELLMOOR_FAULT(Chmod, true, -1, chmod, (const char* path, mode_t mode), (path, mode))
VELLMOOR_FAULT(Chmod, true, -1, fchmod, (int file, mode_t mode), (file, mode))
VELLMOOR_FAULT(Chmod, true, -1, fchmodat, (int folder, const char* path, mode_t mode, int flags),
               (folder, path, mode, flags))
VELLMOOR_FAULT(Fsync, true, -1, fsync, (int file), (file))
VELLMOOR_FAULT(Fsync, true, -1, fdatasync, (int file), (file))
VELLMOOR_FAULT(Fsync, true, -1, syncfs, (int file), (file))
VELLMOOR_FAULT(Truncate, true, -1, ftruncate, (int file, off_t size), (file, size))
VELLMOOR_FAULT(Time, true, -1, futimens, (int file, const timespec times[2]), (file, times))
VELLMOOR_FAULT(Time, true, -1, utimensat, (int folder, const char* path, const timespec times[2], int flags),
               (folder, path, times, flags))
VELLMOOR_FAULT(Stat, false, -1, stat, (const char* path, struct stat* status), (path, status))
VELLMOOR_FAULT(Stat, false, -1, lstat, (const char* path, struct stat* status), (path, status))
VELLMOOR_FAULT(Stat, false, -1, fstat, (int file, struct stat* status), (file, status))
VELLMOOR_FAULT(Stat, false, -1, fstatat, (int folder, const char* path, struct stat* status, int flags),
               (folder, path, status, flags))
VELLMOOR_FAULT(Stat, false, -1, stat64, (const char* path, struct stat64* status), (path, status))
VELLMOOR_FAULT(Stat, false, -1, lstat64, (const char* path, struct stat64* status), (path, status))
VELLMOOR_FAULT(Stat, false, -1, fstat64, (int file, struct stat64* status), (file, status))
VELLMOOR_FAULT(Stat, false, -1, fstatat64, (int folder, const char* path, struct stat64* status, int flags),
               (folder, path, status, flags))
VELLMOOR_FAULT(Stat, false, -1, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* status),
               (folder, path, flags, mask, status))
VELLMOOR_FAULT(Stat, false, -1, faccessat, (int folder, const char* path, int mode, int flags),
               (folder, path, mode, flags))
VELLMOOR_FAULT(List, false, nullptr, readdir, (DIR * folder), (folder))
VELLMOOR_FAULT(List, false, nullptr, readdir64, (DIR * folder), (folder))
VELLMOOR_FAULT(List, false, -1, getdents64, (int folder, void* buffer, std::size_t size), (folder, buffer, size))
VELLMOOR_FAULT(Open, false, nullptr, opendir, (const char* path), (path))
VELLMOOR_FAULT(Open, *mode != 'r', nullptr, fopen, (const char* path, const char* mode), (path, mode))
VELLMOOR_FAULT(Open, *mode != 'r', nullptr, fopen64, (const char* path, const char* mode), (path, mode))

// open and its like: the mode is there only with O_CREAT.
#define VELLMOOR_FAULT_OPEN(name, parameters, arguments)                                                               \
    extern "C" [[gnu::visibility("default")]] int name parameters {                                                    \
        static const auto next = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name));                       \
        va_list rest;                                                                                                  \
        va_start(rest, flags);                                                                                         \
        const mode_t mode = modeOf(flags, rest);                                                                       \
        va_end(rest);                                                                                                  \
        return meet(Open, changesBy(flags)) > goOn ? -1 : next arguments;                                              \
    }

VELLMOOR_FAULT_OPEN(open, (const char* path, int flags, ...), (path, flags, mode))
VELLMOOR_FAULT_OPEN(open64, (const char* path, int flags, ...), (path, flags, mode))
VELLMOOR_FAULT_OPEN(openat, (int folder, const char* path, int flags, ...), (folder, path, flags, mode))
VELLMOOR_FAULT_OPEN(openat64, (int folder, const char* path, int flags, ...), (folder, path, flags, mode))

// Writing knows a third way: half of it.
#define VELLMOOR_FAULT_WRITE(name, parameters, size, arguments)                                                        \
    extern "C" [[gnu::visibility("default")]] ssize_t name parameters {                                                \
        static const auto next = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name));                       \
        if (isOwn(file)) {                                                                                             \
            return next arguments;                                                                                     \
        }                                                                                                              \
        const int answer = meet(Write, true);                                                                          \
        if (answer > goOn) {                                                                                           \
            return -1;                                                                                                 \
        }                                                                                                              \
        if (answer == goHalf && (size) > 1) {                                                                          \
            (size) /= 2;                                                                                               \
        }                                                                                                              \
        return next arguments;                                                                                         \
    }

VELLMOOR_FAULT_WRITE(write, (int file, const void* data, std::size_t size), size, (file, data, size))
VELLMOOR_FAULT_WRITE(pwrite, (int file, const void* data, std::size_t size, off_t at), size, (file, data, size, at))
VELLMOOR_FAULT_WRITE(pwrite64, (int file, const void* data, std::size_t size, off64_t at), size, (file, data, size, at))
VELLMOOR_FAULT_WRITE(writev, (int file, const iovec* parts, int count), count, (file, parts, count))

// A failed close has closed all the same.
extern "C" [[gnu::visibility("default")]] int close(int file) {
    if (isOwn(file)) {
        static const auto next = reinterpret_cast<int (*)(int)>(::dlsym(RTLD_NEXT, "close"));
        return next(file);
    }
    const int error = meet(Close, false);
    const long result = call(SYS_close, file);
    if (error > goOn) {
        errno = error;
        return -1;
    }
    return static_cast<int>(result);
}

extern "C" [[gnu::visibility("default")]] long syscall(long number, ...) {
    static const auto next = reinterpret_cast<long (*)(long, ...)>(::dlsym(RTLD_NEXT, "syscall"));
    std::array<long, 6> words{};
    va_list rest;
    va_start(rest, number);
    for (long& word : words) {
        word = va_arg(rest, long);
    }
    va_end(rest);
    const std::uint32_t kind = classesOf(number, words);
    if (kind != 0 && meet(kind, (kind & (Rename | Unlink | Chmod)) != 0) > goOn) {
        return -1;
    }
    return next(number, words[0], words[1], words[2], words[3], words[4], words[5]);
}
