#include "ProcessTable.h"

namespace vellmoor {

std::set<std::string> runningProcessNames(const Platform&, const SystemLayout&) {
    return {};
}

} // namespace vellmoor
