// The engine as the store sees it: blocking calls, no state that two calls share.
#pragma once

#include "CancelToken.h"
#include "CleanupReport.h"
#include "KeptItem.h"
#include "Platform.h"
#include "ScanSnapshot.h"

#include <expected>
#include <functional>
#include <string>
#include <vector>

namespace vellmoor {

using ProgressCallback = std::function<void(const ScanProgressUpdate&)>;

class CleanerService {
public:
    CleanerService() = default;
    CleanerService(const CleanerService&) = delete;
    CleanerService& operator=(const CleanerService&) = delete;
    virtual ~CleanerService() = default;

    /// Scans one module, or all of them for smartScan. `progress` is called on the calling thread. Throws
    /// ScanCancelled once `token` is set, and nothing else.
    virtual ScanSnapshot scan(CleanerModule module, const ProgressCallback& progress, const CancelToken& token) = 0;

    /// Removes the selected targets of the selected, cleanable items. Never throws: problems are failure lines. Once
    /// `stop` is set it finishes the target at hand and leaves the others untried.
    virtual CleanupReport clean(const std::vector<CleanupItem>& items, const CancelToken& stop) = 0;

    /// Never offers these paths again, nor what lies below them. One that cannot be kept is the failure; the others
    /// are.
    virtual Outcome keep(const std::vector<Path>& paths) = 0;
    virtual Outcome offerAgain(const Path& path) = 0;
    /// In the order in which they were added; the system's reason when the list cannot be read.
    virtual std::expected<std::vector<KeptItem>, std::string> keptItems() = 0;

    virtual StartupActionResult disableStartupItem(const StartupItem& item) = 0;
    virtual StartupActionResult enableStartupItem(const StartupItem& item) = 0;

    virtual std::vector<PermissionHint> permissionHints() = 0;

    /// Asks the application to quit, if it still is the one that was shown; blocks up to some seconds.
    virtual QuitOutcome requestQuit(const MemoryApp& app) = 0;
    /// Ends it, after CannotAsk and with the user's consent: unsaved content is lost.
    virtual QuitOutcome endApplication(const MemoryApp& app) = 0;
};

} // namespace vellmoor
