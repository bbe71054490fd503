#include "ScopedUnprivileged.h"

#include <cerrno>
#include <exception>
#include <system_error>
#include <unistd.h>

#ifdef __linux__
#include <linux/capability.h>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

namespace vellmoor::test {

#ifdef __linux__

namespace {

// All three numbers are below 32, so that they stand in the first of the kernel's two words.
constexpr unsigned passesPermissions = 1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH | 1U << CAP_FOWNER;

struct Capabilities {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0}; // 0: the calling thread
    __user_cap_data_struct words[2]{};

    void read() { check(syscall(SYS_capget, &header, words)); }
    void write() { check(syscall(SYS_capset, &header, words)); }

private:
    static void check(long result) {
        if (result != 0) {
            throw std::system_error(errno, std::generic_category(), "capabilities");
        }
    }
};

// access(2) answers for the real user and gives root its capabilities back, unless this bit is set.
void setSecureBits(int bits) {
    if (::prctl(PR_SET_SECUREBITS, bits) != 0) {
        throw std::system_error(errno, std::generic_category(), "secure bits");
    }
}

} // namespace

ScopedUnprivileged::ScopedUnprivileged() {
    Capabilities now;
    now.read();
    dropped_ = now.words[0].effective & passesPermissions;
    secureBits_ = ::prctl(PR_GET_SECUREBITS);
    if (dropped_ == 0) {
        return;
    }
    now.words[0].effective &= ~passesPermissions;
    now.write();
    setSecureBits(secureBits_ | SECBIT_NO_SETUID_FIXUP);
}

// A failure to restore would falsify every later test: ending the program (noexcept) is right.
ScopedUnprivileged::~ScopedUnprivileged() {
    if (dropped_ == 0) {
        return;
    }
    Capabilities now;
    now.read();
    now.words[0].effective |= dropped_;
    now.write();
    setSecureBits(secureBits_);
}

#else

// Without capabilities, root becomes "nobody" for as long; this holds for the whole process.
ScopedUnprivileged::ScopedUnprivileged() {
    constexpr uid_t nobody = 65534;
    if (geteuid() != 0) {
        return;
    }
    if (seteuid(nobody) != 0) {
        throw std::system_error(errno, std::generic_category(), "seteuid");
    }
    dropped_ = 1;
}

ScopedUnprivileged::~ScopedUnprivileged() {
    if (dropped_ != 0 && seteuid(0) != 0) {
        std::terminate(); // a failure to restore would falsify every later test
    }
}

#endif

} // namespace vellmoor::test
