#include "layouts/PermissionLayout.h"

#include "disk/Paths.h"
#include "layouts/linux/LinuxBrowsers.h"
#include "layouts/linux/LinuxEnvironment.h"

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> browserFolders(const std::vector<LinuxBrowser>& browsers) {
    std::vector<fs::path> folders;
    for (const LinuxBrowser& browser : browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            folders.push_back(folder.userData);
        }
    }
    return folders;
}

std::vector<fs::path> mailFolders(const LinuxEnvironment& environment) {
    std::vector<fs::path> folders{environment.home / ".thunderbird",
                                  environment.home / ".var/app/org.mozilla.Thunderbird"};
    for (const fs::path& snaps : snapDataFolders(environment)) {
        folders.push_back(snaps / "thunderbird/common/.thunderbird");
    }
    folders.push_back(environment.data / "evolution");
    return folders;
}

std::vector<fs::path> sandboxFolders(const LinuxEnvironment& environment) {
    std::vector<fs::path> folders{environment.home / ".var/app"};
    for (const fs::path& snaps : snapDataFolders(environment)) {
        folders.push_back(snaps);
    }
    return folders;
}

} // namespace

PermissionLayout macPermissionLayout(const fs::path& home, std::uint32_t, const fs::path&) {
    PermissionLayout layout;
    layout.dataFolders = {{"邮件数据", {home / "Library/Mail"}, "envelope"},
                          {"信息数据", {home / "Library/Messages"}, "message"},
                          {"Safari 数据", {home / "Library/Safari"}, "safari"}};
    layout.home = home;
    return layout;
}

PermissionLayout linuxPermissionLayout(const LinuxEnvironment& environment, const std::vector<LinuxBrowser>& browsers,
                                       const fs::path& root) {
    PermissionLayout layout;
    layout.dataFolders = {{"浏览器数据", browserFolders(browsers), "globe"},
                          {"邮件数据", mailFolders(environment), "envelope"},
                          {"沙盒应用数据", sandboxFolders(environment), "shippingbox"}};
    layout.home = environment.home;
    layout.sandboxMarker = underRoot(root, "/.flatpak-info");
    layout.insideSandbox = environment.insideSnap;
    return layout;
}

} // namespace vellmoor
