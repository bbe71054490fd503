#include "SystemCalls.h"

#include <atomic>
#include <cstddef>
#include <dirent.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vellmoor::walk::test {
namespace {

std::atomic<bool> watching{false};
std::atomic<bool> typesHidden{false};
std::mutex mutex;
std::multiset<std::string> asked;

} // namespace

SystemCalls::SystemCalls() {
    asked.clear();
    watching = true;
}

SystemCalls::~SystemCalls() {
    watching = typesHidden = false;
}

void SystemCalls::hideTypes() {
    typesHidden = true;
}

std::multiset<std::string> SystemCalls::names() {
    const std::lock_guard lock(mutex);
    return asked;
}

} // namespace vellmoor::walk::test

using namespace vellmoor::walk::test;

extern "C" ssize_t getdents64(int fd, void* buffer, size_t size) noexcept {
    const ssize_t filled = syscall(SYS_getdents64, fd, buffer, size);
    if (typesHidden) {
        for (ssize_t at = 0; at < filled;) {
            auto* const entry = reinterpret_cast<dirent64*>(static_cast<char*>(buffer) + at);
            entry->d_type = DT_UNKNOWN;
            at += entry->d_reclen;
        }
    }
    return filled;
}

extern "C" int fstatat(int fd, const char* name, struct stat* facts, int flags) noexcept {
    if (watching) {
        const std::lock_guard lock(mutex);
        asked.insert(name);
    }
    return static_cast<int>(syscall(SYS_newfstatat, fd, name, facts, flags));
}
