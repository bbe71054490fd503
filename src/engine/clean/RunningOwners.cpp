#include "clean/RunningOwners.h"

#include "Paths.h"
#include "processes/ProcessTable.h"

#include <algorithm>

namespace vellmoor {

std::optional<std::string> RunningOwners::ownerOf(const Path& path) {
    const auto now = std::chrono::steady_clock::now();
    if (!asked_ || now - *asked_ >= std::chrono::seconds(1)) {
        running_ = runningProcessNames(context_.platform(), context_.layout());
        asked_ = now;
    }
    const auto runs = [&](const std::string& name) { return running_.contains(name); };
    for (const BrowserTraces& browser : context_.layout().privacy.browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            const bool isIts = isAtOrBelow(path, folder.userData) || isAtOrBelow(path, folder.cache);
            if (isIts && std::ranges::any_of(browser.processNames, runs)) {
                return browser.name;
            }
        }
    }
    return std::nullopt;
}

} // namespace vellmoor
