// What waits, and in which order.
//
// The unit of work is one directory. A worker reads it from beginning to end, and collects the names of the
// directories in it, in one string; then the place goes onto the stack and stands there for all those names. Whoever
// needs work takes one name of the newest place. So a directory that waits costs its name and nothing else, and only
// one that was opened has an object: what the walk holds grows with depth and with the width of the open levels,
// never with the number of files. Newest first means depth first, which keeps the stack short; several workers
// do not change that, each is somewhere in its own branch.
//
// A place on the stack keeps its descriptor, because a name is opened relative to it: no path is built, none can be
// too long, and a folder renamed meanwhile is still the same. But a chain of folders with a second folder on each level
// would need as many descriptors as it has levels, and a process may have no more than 64. So beyond a limit the
// oldest one is closed: being the oldest, it will be needed last. When its turn comes, it is opened again
// from the nearest ancestor that is open, name by name (the root stays open for the whole walk), and some of the
// ancestors passed on the way get theirs back, so that one descent serves many levels.
//
// Life of Place::fd: opened by the worker; open while it reads; then either closed, as there is nothing to enter,
// or kept on the stack. From there on it is changed only under the lock. A worker that has taken a name counts
// among the `users`, during which it can use the descriptor without the lock; nobody closes it then. With the last
// name taken the place leaves the stack, with the last user gone the descriptor is closed, and with the last place
// below it done the object is freed.
#include "WorkQueue.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace vellmoor::walk {

void WorkQueue::begin(Task& task, PlaceRef root) {
    const std::lock_guard lock(mutex_);
    root->users = 1; // for good: the root is never closed, so that there is always an open ancestor
    task.place = std::move(root);
    busy_ = 1;
}

bool WorkQueue::exchange(Task& task) {
    constexpr int patience = 200; // milliseconds that the only busy worker waits for a descriptor from outside
    std::unique_lock lock(mutex_);
    handIn(task);
    for (int waited = 0; !ended();) {
        const Taken taken = take(task);
        if (taken == Taken::Yes) {
            ++busy_;
            if (idle_ != 0 && !stack_.empty()) {
                changed_.notify_one();
            }
            return true;
        }
        if (busy_ != 0) {
            ++idle_;
            changed_.wait(lock);
            --idle_;
        } else if (taken == Taken::Nothing) {
            break;
        } else if (waited++ < patience) {
            lock.unlock();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            lock.lock();
        } else {
            pop();
            outcome_ = Outcome::Incomplete;
        }
    }
    changed_.notify_all();
    return false;
}

void WorkQueue::handIn(Task& task) {
    if (!task.parent && !task.place) {
        return; // a new worker
    }
    --busy_;
    if (task.parent) {
        Place& parent = *task.parent;
        if (--parent.users == 0 && !parent.hasWork()) {
            parent.close();
        }
    }
    if (task.place && task.place->hasWork()) {
        push(std::move(task.place));
    }
    task = Task{};
    if (idle_ != 0) {
        changed_.notify_one(); // for work, and for a descriptor that is free now
    }
}

WorkQueue::Taken WorkQueue::take(Task& task) {
    while (!stack_.empty()) {
        Place& place = *stack_.back();
        if (const int error = place.fd < 0 ? reopen(place) : 0; error == EMFILE || error == ENFILE) {
            return Taken::NoDescriptor;
        } else if (error != 0) {
            pop(); // deleted or renamed meanwhile, with all that was to do in it
            continue;
        }
        ++place.users;
        task.name = place.takeChild();
        task.parent = place.hasWork() ? stack_.back() : pop();
        return Taken::Yes;
    }
    return Taken::Nothing;
}

void WorkQueue::giveBack(Task& task) {
    const std::lock_guard lock(mutex_);
    Place& parent = *task.parent;
    const bool isWaiting = parent.hasWork();
    parent.addChild(task.name);
    --parent.users;
    --busy_;
    if (!isWaiting) {
        push(std::move(task.parent));
    }
    task = Task{};
    changed_.notify_one();
}

void WorkQueue::push(PlaceRef place) {
    stack_.push_back(std::move(place));
    waiting_.store(true, std::memory_order_relaxed);
    ++open_;
    trim();
}

PlaceRef WorkQueue::pop() {
    PlaceRef place = std::move(stack_.back());
    stack_.pop_back();
    open_ -= place->fd >= 0 ? 1U : 0U;
    oldestOpen_ = std::min(oldestOpen_, stack_.size());
    waiting_.store(!stack_.empty(), std::memory_order_relaxed);
    return place;
}

// Opens a place of the stack again; answers 0 or the error number. Of the ancestors that will be needed, too, one is
// kept open in each range of distances 1, 2 to 3, 4 to 7 ...: so the next descents are short, whatever the limit.
int WorkQueue::reopen(Place& place) {
    std::vector<Place*> chain; // from `place` up to below the open ancestor
    Place* up = &place;
    for (; up->fd < 0; up = up->parent()) {
        chain.push_back(up);
    }
    ++up->users; // not to be closed below
    int fd = up->fd;
    int error = 0;
    std::size_t keptRange = 0;
    for (std::size_t left = chain.size(); left-- > 0 && error == 0;) {
        const int next = openSparing(fd, chain[left]->name().c_str());
        error = next < 0 ? errno : 0;
        if (fd != up->fd) {
            Place& passed = *chain[left + 1];
            if (error == 0 && passed.hasWork() && std::bit_floor(left + 1) != keptRange) {
                keptRange = std::bit_floor(left + 1);
                adopt(passed, fd);
            } else {
                ::close(fd);
            }
        }
        fd = next;
    }
    --up->users;
    if (error == 0) {
        adopt(place, fd);
        ++place.users;
        trim();
        --place.users;
    }
    return error;
}

int WorkQueue::openSparing(int parent, const char* name) {
    int fd = openDirectory(parent, name);
    while (fd < 0 && (errno == EMFILE || errno == ENFILE) && closeOldest()) {
        fd = openDirectory(parent, name);
    }
    return fd;
}

void WorkQueue::trim() {
    while (open_ > limit_ && closeOldest()) {
    }
}

void WorkQueue::adopt(Place& place, int fd) {
    place.fd = fd;
    ++open_;
    oldestOpen_ = 0;
}

bool WorkQueue::closeOldest() {
    bool onlyClosedBefore = true;
    for (std::size_t i = oldestOpen_; i < stack_.size(); ++i) {
        Place& place = *stack_[i];
        if (place.fd >= 0 && place.users == 0) {
            place.close();
            --open_;
            return true;
        }
        onlyClosedBefore = onlyClosedBefore && (place.fd < 0 || place.parent() == nullptr); // the root never closes
        oldestOpen_ += onlyClosedBefore ? 1U : 0U;
    }
    return false;
}

bool WorkQueue::spareDescriptor() {
    const std::lock_guard lock(mutex_);
    return closeOldest();
}

void WorkQueue::end(Outcome outcome) {
    const std::lock_guard lock(mutex_);
    if (!ended_.exchange(true, std::memory_order_relaxed)) {
        outcome_ = outcome;
    }
    changed_.notify_all();
}

void WorkQueue::noteIncomplete() {
    const std::lock_guard lock(mutex_);
    if (!ended()) {
        outcome_ = Outcome::Incomplete;
    }
}

bool WorkQueue::othersAreBusy() {
    const std::lock_guard lock(mutex_);
    return busy_ > 1;
}

Outcome WorkQueue::outcome() {
    const std::lock_guard lock(mutex_);
    return outcome_;
}

} // namespace vellmoor::walk
