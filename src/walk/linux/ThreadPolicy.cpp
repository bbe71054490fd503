#include "ThreadPolicy.h"

namespace vellmoor::walk {

// Reading metadata fetches nothing here.
ThreadPolicy::ThreadPolicy() = default;
ThreadPolicy::~ThreadPolicy() {} // in the header it could not be macOS's

} // namespace vellmoor::walk
