#pragma once

#include "Platform.h"
#include "layouts/PrivacyLayout.h"

#include <vector>

namespace vellmoor {

/// A profile of a browser and the folder that holds its caches (which need not exist).
struct BrowserProfile {
    Path profile;
    Path cache;
    bool outside = false; ///< not where the browser keeps its profiles by itself
};

/// The browser's profiles, folder after folder; of one folder in the order that the browser itself gives them, then
/// by name. Links are not followed. A profile folder that the layout names itself is answered unchecked.
std::vector<BrowserProfile> browserProfiles(const Platform& platform, const BrowserTraces& browser);

/// Profile folders of the browser that exist but cannot be read, and so are none of browserProfiles().
std::vector<Path> closedProfiles(const Platform& platform, const BrowserTraces& browser);

} // namespace vellmoor
