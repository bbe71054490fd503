#include "AppUninstaller.h"

namespace vellmoor {

std::vector<CleanupItem> applicationItems(ScanContext&) {
    return {};
}
bool isProtectedSystemAppPath(const ScanContext&, const Path&) {
    return false;
}
std::optional<Path> appLookupByBundleID(ScanContext&, std::string_view) {
    return std::nullopt;
}
std::string appDisplayName(const ScanContext&, const Path&) {
    return {};
}
std::string friendlyName(std::string_view, std::string_view) {
    return {};
}

} // namespace vellmoor
