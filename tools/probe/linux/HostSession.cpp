#include "HostSession.h"

namespace vellmoor::probe {

Layout ownLayout() {
    return Layout::Linux;
}

std::expected<bool, std::string> isForReal(const Arguments& /*arguments*/, Layout layout) {
    return layout == Layout::Linux;
}

} // namespace vellmoor::probe
