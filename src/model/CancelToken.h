#pragma once

#include <atomic>
#include <exception>

namespace vellmoor {

/// A flag that its owner sets to ask a running scan to end; readable from any thread.
class CancelToken {
public:
    void cancel() noexcept { cancelled_.store(true, std::memory_order_relaxed); }
    [[nodiscard]] bool isCancelled() const noexcept { return cancelled_.load(std::memory_order_relaxed); }
    /// For the walk, which polls the flag itself.
    [[nodiscard]] const std::atomic<bool>& flag() const noexcept { return cancelled_; }

private:
    std::atomic<bool> cancelled_{false};
};

/// The only error that a scan raises.
class ScanCancelled : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "scan cancelled"; }
};

} // namespace vellmoor
