#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

class QObject;

namespace vellmoor {

/// Runs blocking jobs on threads of their own and brings what they post back to the receiver's thread, in order.
/// Shared by the receiver and its jobs: a job that outlives the receiver keeps this alive, and its post is dropped.
class Workers : public std::enable_shared_from_this<Workers> {
public:
    using Job = std::function<void()>;

    explicit Workers(QObject& receiver) : receiver_(&receiver) {}

    /// Runs `job` on a new thread; it must not throw. Throws std::system_error when no thread can be had.
    void start(Job job);
    /// From any thread: runs `job` on the receiver's thread, later. Dropped after cut().
    void post(Job job);
    /// On the receiver's thread: nothing that was posted runs from now on.
    void cut();
    /// Whether all started jobs have ended; waits for that at most `patience`.
    bool waitUntilIdle(std::chrono::milliseconds patience);

private:
    void run(Job job);
    void drain();

    std::mutex lock_;
    std::condition_variable idle_;
    QObject* receiver_; ///< null once cut
    std::deque<Job> posted_;
    std::size_t running_ = 0;
};

} // namespace vellmoor
