#pragma once

#include "scan/EngineContext.h"

#include <string>
#include <vector>

namespace vellmoor {

/// One kind of traces of a browser; texts are localised.
struct PrivacyCategory {
    std::string key;
    std::string title;
    std::string description;
    std::vector<Path> urls; ///< whether they exist or not
    CleanupRisk risk = CleanupRisk::high;
    std::string previewReason; ///< not empty: why the category is shown only
};

struct BrowserPrivacyDefinition {
    std::string name;
    std::vector<std::string> processNames; ///< any of them among the running names means that the browser runs
    std::string symbol;
    Tint tint = Tint::gray;
    std::vector<PrivacyCategory> categories;
};

/// The browsers of the layout with the paths of all their profiles.
std::vector<BrowserPrivacyDefinition> browserPrivacyDefinitions(const Platform& platform, const SystemLayout& layout);

/// The rows of the Privacy module: browser by browser, category by category; never preselected, and not cleanable
/// while the browser runs. Throws ScanCancelled when the token is seen set between rows.
std::vector<CleanupItem> privacyItems(EngineContext& context);

} // namespace vellmoor
