// What is put into the main thread's queue waits until the test lets that thread come to it.
#include "Blocks.h"
#include "Stage.h"

#include <dispatch/dispatch.h>
#include <mutex>
#include <utility>
#include <vector>

namespace {

std::mutex lock;
std::vector<void (^)(void)> waiting;

} // namespace

struct StandInQueue {};

dispatch_queue_t dispatch_get_main_queue(void) {
    static StandInQueue only;
    return &only;
}

void dispatch_async(dispatch_queue_t queue, void (^block)(void)) {
    const std::lock_guard guard(lock);
    if (queue == dispatch_get_main_queue()) {
        waiting.push_back(vellmoor::test::played::copied(block));
    }
}

namespace vellmoor::test {

void runMainQueue() {
    std::vector<void (^)(void)> now;
    {
        const std::lock_guard guard(lock);
        now = std::exchange(waiting, {});
    }
    for (void (^block)(void) : now) {
        block();
        _Block_release((const void*)block);
    }
}

} // namespace vellmoor::test
