// The engine as the store sees it: blocking calls, no state that two calls share.
#pragma once

#include "CancelToken.h"
#include "Platform.h"
#include "done/CleanProgress.h"
#include "done/CleanupReport.h"
#include "done/History.h"
#include "done/KeptItem.h"
#include "done/RestoreReport.h"
#include "found/ScanSnapshot.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <optional>
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

    // What changes files. None of these throws: problems are failure lines. Once `stop` is set the target at hand is
    // finished (a removal for good ends between two entries), and the others stay untried. One at a time: while another
    // window or command line of the user is at it, nothing happens, and the one failure line says so.

    /// Removes the selected targets of the selected, cleanable items.
    virtual CleanupReport clean(const std::vector<CleanupItem>& items, const CleanProgressCallback& progress,
                                const CancelToken& stop) = 0;
    /// What a clean of the history still had to do, where it is the same file: as a clean of its own.
    virtual CleanupReport finish(const std::string& clean, const CleanProgressCallback& progress,
                                 const CancelToken& stop) = 0;
    /// For good, exactly what a clean of the history put into a Trash and still lies there.
    virtual CleanupReport removeForGood(const std::string& clean, const CleanProgressCallback& progress,
                                        const CancelToken& stop) = 0;
    /// The items of a clean of the history that have these indices, or all that lie in a Trash when there are none.
    virtual RestoreReport putBack(const std::string& clean, const std::vector<std::size_t>& indices,
                                  const CleanProgressCallback& progress, const CancelToken& stop) = 0;
    /// What lies in a Trash at these places, whoever put it there.
    virtual RestoreReport putBackTrashed(const std::vector<Path>& places, const CleanProgressCallback& progress,
                                         const CancelToken& stop) = 0;
    /// Puts right what a kill has left, once at the start; nothing is lost when it is not called.
    virtual void recover() = 0;

    // The history
    virtual History history() = 0;
    /// Empties it; what lies in a Trash stays there.
    virtual Outcome forgetHistory() = 0;
    /// Why a clean of these could not be taken back, in a whole sentence; nothing: it can.
    virtual std::optional<std::string> whyNoWayBack(const std::vector<CleanupItem>& items) = 0;
    /// Switches a login item to what it was before that change.
    virtual StartupActionResult putBackSwitch(const HistorySwitch& change) = 0;

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
