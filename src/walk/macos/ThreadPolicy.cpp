#include "ThreadPolicy.h"

#include <sys/resource.h>

namespace vellmoor::walk {
namespace {

// Without effect where the system refuses; then placeholders are still told by their flag.
void setPolicy(int policy) {
    (void)::setiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD, policy);
}

} // namespace

ThreadPolicy::ThreadPolicy()
    : before_(::getiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD)) {
    setPolicy(IOPOL_MATERIALIZE_DATALESS_FILES_OFF);
}

ThreadPolicy::~ThreadPolicy() {
    setPolicy(before_ < 0 ? IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT : before_);
}

} // namespace vellmoor::walk
