#include "ThreadPolicy.h"

namespace vellmoor::walk {

// Reading metadata fetches nothing here.
ThreadPolicy::ThreadPolicy() = default;
ThreadPolicy::~ThreadPolicy() = default;

} // namespace vellmoor::walk
