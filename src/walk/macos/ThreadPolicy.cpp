#include "ThreadPolicy.h"

#include <cerrno>
#include <pthread/qos.h>
#include <sys/resource.h>

namespace vellmoor::walk {
namespace {

// Without effect where the system refuses; then placeholders are still told by their flag.
void setPolicy(int policy) {
    const int before = errno; // the cause of a failure is still to be told
    (void)::setiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD, policy);
    errno = before;
}

} // namespace

ThreadPolicy::ThreadPolicy()
    : before_(::getiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD)) {
    setPolicy(IOPOL_MATERIALIZE_DATALESS_FILES_OFF);
}

ThreadPolicy::~ThreadPolicy() {
    setPolicy(before_ < 0 ? IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT : before_);
}

ThreadUrgency ThreadUrgency::ofThisThread() {
    ThreadUrgency urgency;
    urgency.level_ = ::qos_class_self();
    return urgency;
}

void ThreadUrgency::adopt() const {
    if (level_ != QOS_CLASS_UNSPECIFIED) { // a thread whose priority was set by hand has none, and keeps that
        (void)::pthread_set_qos_class_self_np(static_cast<qos_class_t>(level_), 0);
    }
}

} // namespace vellmoor::walk
