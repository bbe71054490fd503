#include "HostSession.h"

#include "FolderVariables.h"
#include "LinuxPlatform.h"
#include "layouts/LinuxEnvironment.h"

namespace vellmoor::probe {

Layout ownLayout() {
    return Layout::Linux;
}

std::filesystem::path userHome() {
    return processEnvironment().home;
}

std::expected<bool, std::string> isForReal(const Arguments& /*arguments*/, Layout layout) {
    return layout == Layout::Linux;
}

Session openHost(const Arguments& arguments) {
    unsetUnusableFolders();
    Session session;
    session.platform = std::make_unique<LinuxPlatform>();
    session.layout = linuxLayout(arguments.home ? linuxEnvironmentOf(*arguments.home) : processEnvironment(),
                                 session.platform->userId(), arguments.root);
    return session;
}

} // namespace vellmoor::probe
