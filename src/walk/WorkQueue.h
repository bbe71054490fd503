#pragma once

#include "Place.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace vellmoor::walk {

/// A directory to enter; after that, the directory entered.
struct Task {
    PlaceRef parent; ///< pinned: its descriptor stays open until the task is handed in
    std::string name;
    PlaceRef place; ///< set by the worker that has opened and read the directory; null when it could not
};

/// The directories that wait, shared by all workers. The essay is in WorkQueue.cpp.
class WorkQueue {
public:
    /// `descriptors`: how many waiting places may keep theirs open.
    explicit WorkQueue(std::size_t descriptors) : limit_(descriptors) {}

    /// The calling worker starts with the root, which it has opened and is about to read.
    void begin(Task& task, PlaceRef root);
    /// Hands in the task, if there is one, and waits for another. False: nothing is left, or the walk was ended.
    bool exchange(Task& task);
    /// Puts a task back that could not be opened for want of a descriptor; the calling worker is to leave.
    void giveBack(Task& task);
    /// Closes the descriptor of a waiting place; false when there is none to close.
    bool spareDescriptor();

    /// Ends the walk; the first end counts.
    void end(Outcome outcome);
    /// Something is missing, but the walk goes on.
    void noteIncomplete();

    [[nodiscard]] bool ended() const { return ended_.load(std::memory_order_relaxed); }
    [[nodiscard]] bool hasWaiting() const { return waiting_.load(std::memory_order_relaxed); }
    /// Whether another worker is busy; it may soon close a descriptor.
    [[nodiscard]] bool othersAreBusy();
    /// Complete until something else was said.
    [[nodiscard]] Outcome outcome();

private:
    enum class Taken : std::uint8_t { Yes, Nothing, NoDescriptor };

    void handIn(Task& task);
    Taken take(Task& task);
    void push(PlaceRef place);
    PlaceRef pop();
    int reopen(Place& place);
    void adopt(Place& place, int fd);
    int openSparing(int parent, const char* name);
    bool closeOldest();
    void trim();

    std::mutex mutex_;
    std::condition_variable changed_; ///< there is work, or there will be none
    std::vector<PlaceRef> stack_;     ///< the places with names that nobody has taken; the newest last
    std::size_t oldestOpen_ = 0;      ///< in the stack, no place before this one has an open descriptor
    std::size_t open_ = 0;            ///< places in the stack with an open descriptor
    const std::size_t limit_;         ///< the most that open_ should be
    unsigned busy_ = 0;               ///< workers that hold a task
    unsigned idle_ = 0;               ///< workers that wait for one
    Outcome outcome_ = Outcome::Complete;
    std::atomic<bool> waiting_{false}; ///< the stack is not empty; for those without the lock
    std::atomic<bool> ended_{false};
};

} // namespace vellmoor::walk
