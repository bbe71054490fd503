#pragma once

#include "ScanSnapshot.h"
#include "layouts/SystemLayout.h"
#include "service/CleanerService.h"

namespace vellmoor {

/// The engine over a real (or stand-in) system. Both references must outlive the service.
class SystemCleanerService final : public CleanerService {
public:
    SystemCleanerService(const Platform& platform, const SystemLayout& layout);

    ScanSnapshot scan(CleanerModule module, const ProgressCallback& progress, const CancelToken& token) override;
    CleanupReport clean(const std::vector<CleanupItem>& items, const CancelToken& stop) override;
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
