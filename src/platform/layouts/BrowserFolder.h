#pragma once

#include <filesystem>

namespace vellmoor {

/// A folder that holds a browser's profiles, and the one that holds their caches. Either may be absent from the disk.
struct BrowserFolder {
    std::filesystem::path userData;
    std::filesystem::path cache;
    bool insideConfig = true; ///< else the browser may keep its caches in the profile itself
};

} // namespace vellmoor
