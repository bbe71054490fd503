#pragma once

#include "found/ScanSnapshot.h"
#include "layouts/SystemLayout.h"
#include "service/CleanerService.h"

namespace vellmoor {

/// The engine over a real (or stand-in) system. Both references must outlive the service.
class SystemCleanerService final : public CleanerService {
public:
    SystemCleanerService(const Platform& platform, const SystemLayout& layout);

    ScanSnapshot scan(CleanerModule module, const ProgressCallback& progress, const CancelToken& token) override;
    CleanupReport clean(const std::vector<CleanupItem>& items, const CleanProgressCallback& progress,
                        const CancelToken& stop) override;
    CleanupReport finish(const std::string& clean, const CleanProgressCallback& progress,
                         const CancelToken& stop) override;
    CleanupReport removeForGood(const std::string& clean, const CleanProgressCallback& progress,
                                const CancelToken& stop) override;
    RestoreReport putBack(const std::string& clean, const std::vector<std::size_t>& indices,
                          const CleanProgressCallback& progress, const CancelToken& stop) override;
    RestoreReport putBackTrashed(const std::vector<Path>& places, const CleanProgressCallback& progress,
                                 const CancelToken& stop) override;
    void recover() override;
    History history() override;
    Outcome forgetHistory() override;
    std::optional<std::string> whyNoWayBack(const std::vector<CleanupItem>& items) override;
    StartupActionResult putBackSwitch(const HistorySwitch& change) override;
    Outcome keep(const std::vector<Path>& paths) override;
    Outcome offerAgain(const Path& path) override;
    std::expected<std::vector<KeptItem>, std::string> keptItems() override;
    StartupActionResult disableStartupItem(const StartupItem& item) override;
    StartupActionResult enableStartupItem(const StartupItem& item) override;
    std::vector<PermissionHint> permissionHints() override;
    QuitOutcome requestQuit(const MemoryApp& app) override;
    QuitOutcome endApplication(const MemoryApp& app) override;

private:
    const Platform& platform_;
    const SystemLayout& layout_;
};

} // namespace vellmoor
