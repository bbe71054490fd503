#include "Walk.h"

#include <algorithm>
#include <thread>

namespace vellmoor::walk {

Action Visitor::directory(const Directory&, unsigned) { return Action::Continue; }

unsigned workerCount(const Options& options) {
    return options.threads != 0 ? options.threads : std::max(1U, std::thread::hardware_concurrency());
}

} // namespace vellmoor::walk
