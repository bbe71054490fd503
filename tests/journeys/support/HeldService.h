#pragma once

#include "service/CleanerService.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace vellmoor::journey {

/// The real engine, whose scan can be held in its middle for as long as the test wants.
class HeldService final : public CleanerService {
public:
    explicit HeldService(std::shared_ptr<CleanerService> engine) : engine_(std::move(engine)) {}

    /// The next scan stops where it has told a fraction of at least that, until release().
    void holdAt(double fraction);
    void release();
    /// Whether a scan stands there now.
    [[nodiscard]] bool isHeld() const;

    struct Ended {
        CleanerModule module;
        bool wasCancelled;
    };
    /// The scans whose engine call has returned, in order of their ends.
    [[nodiscard]] std::vector<Ended> ended() const;

    ScanSnapshot scan(CleanerModule module, const ProgressCallback& progress, const CancelToken& token) override;
    CleanupReport clean(const std::vector<CleanupItem>& items, const CleanProgressCallback& progress,
                        const CancelToken& stop) override {
        return engine_->clean(items, progress, stop);
    }
    CleanupReport finish(const std::string& clean, const CleanProgressCallback& progress,
                         const CancelToken& stop) override {
        return engine_->finish(clean, progress, stop);
    }
    CleanupReport removeForGood(const std::string& clean, const CleanProgressCallback& progress,
                                const CancelToken& stop) override {
        return engine_->removeForGood(clean, progress, stop);
    }
    RestoreReport putBack(const std::string& clean, const std::vector<std::size_t>& indices,
                          const CleanProgressCallback& progress, const CancelToken& stop) override {
        return engine_->putBack(clean, indices, progress, stop);
    }
    RestoreReport putBackTrashed(const std::vector<Path>& places, const CleanProgressCallback& progress,
                                 const CancelToken& stop) override {
        return engine_->putBackTrashed(places, progress, stop);
    }
    void recover() override { engine_->recover(); }
    History history() override { return engine_->history(); }
    Outcome forgetHistory() override { return engine_->forgetHistory(); }
    std::optional<std::string> whyNoWayBack(const std::vector<CleanupItem>& items) override {
        return engine_->whyNoWayBack(items);
    }
    StartupActionResult putBackSwitch(const HistorySwitch& change) override { return engine_->putBackSwitch(change); }
    Outcome keep(const std::vector<Path>& paths) override { return engine_->keep(paths); }
    Outcome offerAgain(const Path& path) override { return engine_->offerAgain(path); }
    std::expected<std::vector<KeptItem>, std::string> keptItems() override { return engine_->keptItems(); }
    StartupActionResult disableStartupItem(const StartupItem& item) override {
        return engine_->disableStartupItem(item);
    }
    StartupActionResult enableStartupItem(const StartupItem& item) override { return engine_->enableStartupItem(item); }
    std::vector<PermissionHint> permissionHints() override { return engine_->permissionHints(); }
    QuitOutcome requestQuit(const MemoryApp& app) override { return engine_->requestQuit(app); }
    QuitOutcome endApplication(const MemoryApp& app) override { return engine_->endApplication(app); }

private:
    void pass(double fraction);

    std::shared_ptr<CleanerService> engine_;
    mutable std::mutex lock_;
    std::condition_variable released_;
    double holdFrom_ = 2; ///< above 1: nowhere
    bool held_ = false;
    std::vector<Ended> ended_;
};

} // namespace vellmoor::journey
