#pragma once

namespace vellmoor::walk {

/// While it lives, no call of this thread makes macOS fetch a file or folder whose content lies in a cloud only:
/// the call fails instead. Elsewhere it does nothing.
class ThreadPolicy {
public:
    ThreadPolicy();
    ~ThreadPolicy();
    ThreadPolicy(const ThreadPolicy&) = delete;
    ThreadPolicy& operator=(const ThreadPolicy&) = delete;

private:
    [[maybe_unused]] int before_ = 0; ///< macOS only
};

} // namespace vellmoor::walk
