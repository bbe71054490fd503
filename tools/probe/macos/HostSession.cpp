#include "HostSession.h"

#include "MacHost.h"
#include "MacPlatform.h"

namespace vellmoor::probe {

Layout ownLayout() {
    return Layout::Mac;
}

std::filesystem::path userHome() {
    return mac::homeFolder();
}

std::expected<bool, std::string> isForReal(const Arguments& arguments, Layout layout) {
    if (layout == Layout::Linux) {
        return std::unexpected("--layout linux can be shown on Linux only");
    }
    // The Trash is the account's wherever the home is said to be, so another home has the stand-in's.
    return !arguments.home && !arguments.running && arguments.root == "/";
}

Session openHost(const Arguments& arguments) {
    Session session;
    session.platform = std::make_unique<MacPlatform>();
    session.layout = macosLayout(userHome(), session.platform->userId(), arguments.root);
    return session;
}

} // namespace vellmoor::probe
