#include "desktop/SystemPlaces.h"

namespace vellmoor {

std::vector<std::string_view> fullDiskAccessAddresses() {
    return {"x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_AllFiles",
            "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"};
}

std::vector<std::string_view> loginItemsAddresses() {
    return {"x-apple.systempreferences:com.apple.LoginItems-Settings.extension",
            "x-apple.systempreferences:com.apple.preferences.users?LoginItems"};
}

std::vector<std::filesystem::path> systemSettingsPlaces() {
    return {"/System/Applications/System Settings.app"};
}

std::vector<std::filesystem::path> activityMonitorPlaces() {
    return {"/System/Applications/Utilities/Activity Monitor.app", "/Applications/Utilities/Activity Monitor.app"};
}

} // namespace vellmoor
