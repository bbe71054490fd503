// Darwin's calls under names of their own, so that they can live in one program with Linux's. The headers in
// ../calls give them their true names, for the sources under test only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <sys/types.h>

struct darwin_stat {
    dev_t st_dev;
    mode_t st_mode;
    ino_t st_ino;
    uid_t st_uid;
    timespec st_mtimespec;
    off_t st_size;
    std::int64_t st_blocks;
    std::uint32_t st_flags;
};

struct darwin_statfs {
    std::uint32_t f_flags;
    char f_mntonname[1024];
};

int darwin_stat(const char* path, struct darwin_stat* facts);
int darwin_lstat(const char* path, struct darwin_stat* facts);
int darwin_fstat(int fd, struct darwin_stat* facts);
int darwin_fstatat(int fd, const char* name, struct darwin_stat* facts, int flags);
int darwin_statfs(const char* path, struct darwin_statfs* facts);
int darwin_getfsstat(struct darwin_statfs* list, int bytes, int mode);
int darwin_getattrlistbulk(int fd, void* wanted, void* buffer, std::size_t size, std::uint64_t options);
int darwin_getiopolicy_np(int type, int scope);
int darwin_setiopolicy_np(int type, int scope, int policy);
int darwin_getattrlist(const char* path, void* wanted, void* buffer, std::size_t size, unsigned options);
unsigned darwin_qos_class_self();
int darwin_pthread_set_qos_class_self_np(unsigned qosClass, int relativePriority);

using darwin_log_t = const struct darwin_log*;
darwin_log_t darwin_log_create(const char* subsystem, const char* category);
void darwin_log_error(darwin_log_t log, const char* format, ...);
