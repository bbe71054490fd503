// stat() and its like, and what is mounted.
#include "DarwinAbi.h"
#include "DarwinState.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <string_view>
#include <sys/stat.h>

namespace vellmoor::test::darwin {
namespace {

constexpr int doNotWait = 2; // MNT_NOWAIT

int answer(int result, const struct stat& facts, const char* name, struct darwin_stat* out) {
    const std::lock_guard guard(lock());
    const int before = errno;
    noteCall();
    if (state()) {
        state()->statted.insert(name);
    }
    errno = before;
    if (const int error = valueOr(traits().statErrors, lastComponent(name), 0); result == 0 && error != 0) {
        errno = error;
        return -1;
    }
    if (result == 0) {
        *out = {.st_dev = facts.st_dev,
                .st_mode = facts.st_mode,
                .st_ino = facts.st_ino,
                .st_uid = facts.st_uid,
                .st_mtimespec = facts.st_mtim,
                .st_size = facts.st_size,
                .st_blocks = facts.st_blocks,
                .st_flags = valueOr(traits().flags, lastComponent(name), 0U)};
    }
    return result;
}

} // namespace
} // namespace vellmoor::test::darwin

using namespace vellmoor::test::darwin;

int darwin_stat(const char* path, struct darwin_stat* facts) {
    struct stat own{};
    const int result = ::stat(path, &own);
    return answer(result, own, path, facts);
}

int darwin_lstat(const char* path, struct darwin_stat* facts) {
    struct stat own{};
    const int result = ::lstat(path, &own);
    return answer(result, own, path, facts);
}

int darwin_fstat(int fd, struct darwin_stat* facts) {
    struct stat own{};
    const int result = ::fstat(fd, &own);
    return answer(result, own, "", facts);
}

int darwin_fstatat(int fd, const char* name, struct darwin_stat* facts, int flags) {
    struct stat own{};
    const int result = ::fstatat(fd, name, &own, flags);
    return answer(result, own, name, facts);
}

// The mount that holds the path: the longest of those above it.
int darwin_statfs(const char* path, struct darwin_statfs* facts) {
    std::array<char, PATH_MAX> resolved{};
    if (::realpath(path, resolved.data()) == nullptr) {
        return -1;
    }
    const std::string_view real = resolved.data();
    const std::lock_guard guard(lock());
    noteCall();
    std::string_view best = "/";
    for (const std::string_view place : traits().mounts) {
        const bool holds = real == place || (real.starts_with(place) && real[place.size()] == '/');
        best = holds && place.size() > best.size() ? place : best;
    }
    *facts = {};
    best.copy(facts->f_mntonname, sizeof facts->f_mntonname - 1);
    return 0;
}

// Waiting for what a dead server would say is an error here.
int darwin_getfsstat(struct darwin_statfs* list, int bytes, int mode) {
    const std::lock_guard guard(lock());
    if (mode != doNotWait) {
        errno = EINVAL;
        return -1;
    }
    const auto& mounts = traits().mounts;
    const std::size_t room = list == nullptr ? mounts.size() : static_cast<std::size_t>(bytes) / sizeof *list;
    const std::size_t count = std::min(room, mounts.size());
    for (std::size_t i = 0; list != nullptr && i < count; ++i) {
        list[i] = {};
        mounts[i].copy(list[i].f_mntonname, sizeof list[i].f_mntonname - 1);
    }
    return static_cast<int>(count);
}
