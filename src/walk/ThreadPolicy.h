#pragma once

namespace vellmoor::walk {

/// While it lives, no call of this thread makes macOS fetch a file or folder whose content lies in a cloud only:
/// the call fails instead. Elsewhere it does nothing. errno stays as it is.
class ThreadPolicy {
public:
    ThreadPolicy();
    ~ThreadPolicy();
    ThreadPolicy(const ThreadPolicy&) = delete;
    ThreadPolicy& operator=(const ThreadPolicy&) = delete;

private:
    [[maybe_unused]] int before_ = 0; ///< macOS only
};

/// How urgent the system takes a thread to be: on macOS its quality-of-service class, which a new thread does not get
/// from the one that starts it. Elsewhere nothing.
class ThreadUrgency {
public:
    static ThreadUrgency ofThisThread();
    /// Makes the calling thread as urgent as that one was.
    void adopt() const;

private:
    [[maybe_unused]] unsigned level_ = 0; ///< macOS only
};

} // namespace vellmoor::walk
