// A CleanerService that does what the test says, when the test says so.
#pragma once

#include "service/CleanerService.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace vellmoor {

/// A door that a worker waits at until the test opens it.
class Gate {
public:
    void open();
    /// Blocks until open.
    void pass();
    /// Blocks until a worker has come to the gate.
    void awaitVisitor();

private:
    std::mutex lock_;
    std::condition_variable changed_;
    bool isOpen_ = false;
    bool visited_ = false;
};

class ScriptedCleanerService : public CleanerService {
public:
    using Scan = std::function<ScanSnapshot(CleanerModule, const ProgressCallback&, const CancelToken&)>;
    using Clean = std::function<CleanupReport(const std::vector<CleanupItem>&)>;
    using Startup = std::function<StartupActionResult(const StartupItem&)>;
    using Quit = std::function<QuitOutcome(const MemoryApp&)>;
    /// A way back, by the name of the call and what it was asked for.
    using Restore = std::function<RestoreReport(const CleanProgressCallback&)>;

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

    /// Whether the clean that runs now was told to stop.
    [[nodiscard]] bool isCleanStopped() const;

    // The script; read by the next call. Unset: an empty answer.
    void onScan(Scan script);
    void onClean(Clean script);
    void onDisable(Startup script);
    void onEnable(Startup script);
    void onQuit(Quit script);
    void onEnd(Quit script);
    void onPutBack(Restore script);
    /// Why the list of kept items cannot be changed or read; empty: it can.
    void refuseList(const std::string& reason);
    void setKept(std::vector<KeptItem> items);
    /// How far the next clean says that it is, once it has begun.
    void setCleanProgress(const CleanProgress& progress);
    void setHints(std::vector<PermissionHint> hints);
    void setHistory(History history);
    void setNoWayBack(std::optional<std::string> reason);

    // What was asked
    [[nodiscard]] std::vector<CleanerModule> scans() const;
    [[nodiscard]] std::vector<std::vector<CleanupItem>> cleans() const;
    [[nodiscard]] std::vector<StartupItem> disables() const;
    [[nodiscard]] std::vector<StartupItem> enables() const;
    [[nodiscard]] std::vector<MemoryApp> quits() const;
    [[nodiscard]] std::vector<MemoryApp> ends() const;
    /// Calls about the history, such as "putBack one 0 2" or "forget".
    [[nodiscard]] std::vector<std::string> historyCalls() const;

private:
    mutable std::mutex lock_;
    Scan scan_;
    Clean clean_;
    Startup disable_;
    Startup enable_;
    Quit quit_;
    Quit end_;
    RestoreReport restored(const std::string& call, const CleanProgressCallback& progress);
    void noteCall(const std::string& call);

    Restore putBack_;
    History history_;
    std::optional<std::string> noWayBack_;
    std::vector<std::string> historyCalls_;
    const CancelToken* stop_ = nullptr; ///< of the running clean
    std::vector<PermissionHint> hints_;
    std::vector<KeptItem> kept_;
    std::optional<CleanProgress> cleanProgress_;
    std::string listRefusal_;
    std::vector<CleanerModule> scans_;
    std::vector<std::vector<CleanupItem>> cleans_;
    std::vector<StartupItem> disables_;
    std::vector<StartupItem> enables_;
    std::vector<MemoryApp> quits_;
    std::vector<MemoryApp> ends_;
};

} // namespace vellmoor
