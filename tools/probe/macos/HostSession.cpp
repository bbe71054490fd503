#include "HostSession.h"

namespace vellmoor::probe {

Layout ownLayout() {
    return Layout::Mac;
}

std::expected<bool, std::string> isForReal(const Arguments& arguments, Layout layout) {
    if (layout == Layout::Linux) {
        return std::unexpected("--layout linux can be shown on Linux only");
    }
    // The Trash is the account's wherever the home is said to be, so another home has the stand-in's.
    return !arguments.home && !arguments.running && arguments.root == "/";
}

} // namespace vellmoor::probe
