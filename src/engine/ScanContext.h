#pragma once

#include "CancelToken.h"
#include "DesktopEntries.h"
#include "Platform.h"
#include "ScanSnapshot.h"
#include "SystemLayout.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {

/// What one engine call works with: the system, its layout, the caller's cancel flag and the moment that counts as
/// now. It lives for one scan, is used from one thread, and remembers what it has already measured in that scan.
class ScanContext {
public:
    ScanContext(const Platform& platform, const SystemLayout& layout, const CancelToken& token, TimePoint now)
        : platform_(platform),
          layout_(layout),
          token_(token),
          now_(now) {}

    [[nodiscard]] const Platform& platform() const { return platform_; }
    [[nodiscard]] const SystemLayout& layout() const { return layout_; }
    [[nodiscard]] const CancelToken& token() const { return token_; }
    [[nodiscard]] TimePoint now() const { return now_; }

    [[nodiscard]] bool isCancelled() const { return token_.isCancelled(); }
    void throwIfCancelled() const {
        if (token_.isCancelled()) {
            throw ScanCancelled();
        }
    }

    /// Names and tokens of the user's processes, read at the first call.
    const std::set<std::string>& runningNames();

    /// Measurements made so far in this scan, by standardised path.
    std::map<std::string, PathStats>& measurements() { return measurements_; }

    /// What installedEntries() has read in this context.
    std::optional<std::vector<InstalledEntry>>& installedEntries() { return installedEntries_; }

private:
    const Platform& platform_;
    const SystemLayout& layout_;
    const CancelToken& token_;
    TimePoint now_;
    std::optional<std::set<std::string>> runningNames_;
    std::map<std::string, PathStats> measurements_;
    std::optional<std::vector<InstalledEntry>> installedEntries_;
};

} // namespace vellmoor
