#include "ThreadPolicy.h"

namespace vellmoor::walk {

// Reading metadata fetches nothing here.
ThreadPolicy::ThreadPolicy() = default;
ThreadPolicy::~ThreadPolicy() {} // in the header it could not be macOS's

ThreadUrgency ThreadUrgency::ofThisThread() {
    return {}; // a thread starts with the priority of the one that starts it
}
void ThreadUrgency::adopt() const {}

} // namespace vellmoor::walk
