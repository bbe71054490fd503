#include "Workers.h"

#include <QMetaObject>
#include <QObject>

#include <thread>
#include <utility>

namespace vellmoor {

void Workers::start(Job job) {
    {
        const std::scoped_lock guard(lock_);
        ++running_;
    }
    try {
        std::thread([self = shared_from_this(), work = std::move(job)]() mutable {
            self->run(std::move(work));
        }).detach();
    } catch (...) {
        const std::scoped_lock guard(lock_);
        --running_;
        throw;
    }
}

void Workers::run(Job job) {
    job();
    job = nullptr; // what the job held is gone before it counts as ended
    const std::scoped_lock guard(lock_);
    --running_;
    idle_.notify_all();
}

void Workers::post(Job job) {
    const std::scoped_lock guard(lock_);
    if (receiver_ == nullptr) {
        return;
    }
    posted_.push_back(std::move(job));
    // The receiver cannot die meanwhile: it cuts first, under this lock. Qt drops the call when it dies later.
    QMetaObject::invokeMethod(receiver_, [self = shared_from_this()] { self->drain(); }, Qt::QueuedConnection);
}

void Workers::drain() {
    while (true) {
        Job next;
        {
            const std::scoped_lock guard(lock_);
            if (posted_.empty()) {
                return;
            }
            next = std::move(posted_.front());
            posted_.pop_front();
        }
        next();
    }
}

void Workers::cut() {
    std::deque<Job> dropped; // destroyed outside the lock
    const std::scoped_lock guard(lock_);
    receiver_ = nullptr;
    dropped.swap(posted_);
}

bool Workers::waitUntilIdle(std::chrono::milliseconds patience) {
    std::unique_lock guard(lock_);
    return idle_.wait_for(guard, patience, [this] { return running_ == 0; });
}

} // namespace vellmoor
