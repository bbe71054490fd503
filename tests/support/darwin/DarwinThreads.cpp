// What Darwin keeps for each thread: whether it may fetch from a cloud, and its urgency.
#include "DarwinAbi.h"
#include "DarwinSystem.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace vellmoor::test {
namespace {

constexpr int mayFetch = 0, mayNotFetch = 1;
constexpr int typeOfFetching = 3, scopeOfThread = 1; // IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD
thread_local int policy = mayFetch;
constexpr unsigned ordinaryUrgency = 0x15; // QOS_CLASS_DEFAULT
thread_local unsigned urgency = ordinaryUrgency;

} // namespace

bool threadMayFetch() {
    return policy == mayFetch;
}

unsigned urgencyOfThread() {
    return urgency;
}

} // namespace vellmoor::test

using namespace vellmoor::test;

// A policy of another type, or of the whole process, is not the one that is wanted: asking for it changes nothing.
int darwin_getiopolicy_np(int type, int scope) {
    if (type != typeOfFetching || scope != scopeOfThread) {
        errno = EINVAL;
        return -1;
    }
    return policy;
}

int darwin_setiopolicy_np(int type, int scope, int value) {
    if (type != typeOfFetching || scope != scopeOfThread || (value != mayFetch && value != mayNotFetch)) {
        errno = EINVAL;
        return -1;
    }
    policy = value;
    return 0;
}

unsigned darwin_qos_class_self() {
    return urgency;
}

int darwin_pthread_set_qos_class_self_np(unsigned qosClass, int relativePriority) {
    constexpr std::array<unsigned, 5> known{0x21, 0x19, ordinaryUrgency, 0x11, 0x09};
    if (std::ranges::find(known, qosClass) == known.end() || relativePriority > 0 || relativePriority < -15) {
        return EINVAL;
    }
    urgency = qosClass;
    return 0;
}
