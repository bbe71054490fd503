#include "Descriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace vellmoor::test {

DescriptorLimit::DescriptorLimit(rlim_t most) {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    rlimit lower = before_;
    lower.rlim_cur = most;
    ::setrlimit(RLIMIT_NOFILE, &lower);
}

DescriptorLimit::~DescriptorLimit() {
    ::setrlimit(RLIMIT_NOFILE, &before_);
}

AlmostNoDescriptors::AlmostNoDescriptors(unsigned free) : limit_(64) {
    for (int fd = ::dup(0); fd >= 0; fd = ::dup(0)) {
        taken_.push_back(fd);
    }
    for (; free > 0 && !taken_.empty(); --free) {
        ::close(taken_.back());
        taken_.pop_back();
    }
}

AlmostNoDescriptors::~AlmostNoDescriptors() {
    for (const int fd : taken_) {
        ::close(fd);
    }
}

unsigned openDescriptors() {
    unsigned count = 0;
    for (int fd = 0; fd < 4096; ++fd) {
        count += ::fcntl(fd, F_GETFD) >= 0 ? 1U : 0U;
    }
    return count;
}

} // namespace vellmoor::test
