#pragma once

namespace vellmoor::test {

/// Takes away, while it lives, what lets root pass over file permissions: a folder with mode 0000 is then as
/// closed to root as to anybody. Holds for the calling thread and for threads that it starts meanwhile.
/// For an ordinary user it changes nothing. Throws std::system_error when the kernel refuses.
class ScopedUnprivileged {
public:
    ScopedUnprivileged();
    ~ScopedUnprivileged();
    ScopedUnprivileged(const ScopedUnprivileged&) = delete;
    ScopedUnprivileged& operator=(const ScopedUnprivileged&) = delete;

private:
    int secureBits_ = 0;   ///< as they were (Linux)
    unsigned dropped_ = 0; ///< the capabilities to give back, as a bit mask (Linux), or the user id (elsewhere)
};

} // namespace vellmoor::test
