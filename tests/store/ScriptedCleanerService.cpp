#include "ScriptedCleanerService.h"

namespace vellmoor {
namespace {

/// Notes the call and answers the script, both under the lock; the script itself runs without it.
template <class Script, class Log, class Asked>
Script noted(std::mutex& lock, const Script& script, Log& log, const Asked& asked) {
    const std::scoped_lock guard(lock);
    log.push_back(asked);
    return script;
}

} // namespace

void Gate::open() {
    const std::scoped_lock guard(lock_);
    isOpen_ = true;
    changed_.notify_all();
}

void Gate::pass() {
    std::unique_lock guard(lock_);
    visited_ = true;
    changed_.notify_all();
    changed_.wait(guard, [this] { return isOpen_; });
}

void Gate::awaitVisitor() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return visited_; });
}

ScanSnapshot ScriptedCleanerService::scan(CleanerModule module, const ProgressCallback& progress,
                                          const CancelToken& token) {
    const Scan script = noted(lock_, scan_, scans_, module);
    return script ? script(module, progress, token) : ScanSnapshot();
}

CleanupReport ScriptedCleanerService::clean(const std::vector<CleanupItem>& items,
                                            const CleanProgressCallback& progress, const CancelToken& stop) {
    const Clean script = noted(lock_, clean_, cleans_, items);
    const auto run = [this](const CancelToken* token) {
        const std::scoped_lock guard(lock_);
        stop_ = token;
    };
    run(&stop);
    progress({.doneCount = 0, .totalCount = static_cast<std::int64_t>(items.size())});
    if (cleanProgress_) {
        progress(*cleanProgress_);
    }
    CleanupReport report = script ? script(items) : CleanupReport();
    run(nullptr);
    return report;
}

CleanupReport ScriptedCleanerService::finish(const std::string& clean, const CleanProgressCallback& /*progress*/,
                                             const CancelToken& /*stop*/) {
    noteCall("finish " + clean);
    return {};
}

CleanupReport ScriptedCleanerService::removeForGood(const std::string& clean, const CleanProgressCallback& /*progress*/,
                                                    const CancelToken& /*stop*/) {
    noteCall("removeForGood " + clean);
    return {};
}

RestoreReport ScriptedCleanerService::putBack(const std::string& clean, const std::vector<std::size_t>& indices,
                                              const CleanProgressCallback& progress, const CancelToken& /*stop*/) {
    std::string call = "putBack " + clean;
    for (const std::size_t index : indices) {
        call += " " + std::to_string(index);
    }
    return restored(call, progress);
}

RestoreReport ScriptedCleanerService::putBackTrashed(const std::vector<Path>& places,
                                                     const CleanProgressCallback& progress,
                                                     const CancelToken& /*stop*/) {
    std::string call = "putBackTrashed";
    for (const Path& place : places) {
        call += " " + place.string();
    }
    return restored(call, progress);
}

void ScriptedCleanerService::recover() {
    noteCall("recover");
}

History ScriptedCleanerService::history() {
    const std::scoped_lock guard(lock_);
    return history_;
}

Outcome ScriptedCleanerService::forgetHistory() {
    noteCall("forget");
    return {};
}

std::optional<std::string> ScriptedCleanerService::whyNoWayBack(const std::vector<CleanupItem>& /*items*/) {
    const std::scoped_lock guard(lock_);
    return noWayBack_;
}

StartupActionResult ScriptedCleanerService::putBackSwitch(const HistorySwitch& change) {
    noteCall("putBackSwitch " + change.name);
    return {.succeeded = true, .message = "switched"};
}

RestoreReport ScriptedCleanerService::restored(const std::string& call, const CleanProgressCallback& progress) {
    noteCall(call);
    Restore script;
    {
        const std::scoped_lock guard(lock_);
        script = putBack_;
    }
    return script ? script(progress) : RestoreReport();
}

void ScriptedCleanerService::noteCall(const std::string& call) {
    const std::scoped_lock guard(lock_);
    historyCalls_.push_back(call);
}

bool ScriptedCleanerService::isCleanStopped() const {
    const std::scoped_lock guard(lock_);
    return stop_ != nullptr && stop_->isCancelled();
}

Outcome ScriptedCleanerService::keep(const std::vector<Path>& paths) {
    const std::scoped_lock guard(lock_);
    if (!listRefusal_.empty()) {
        return std::unexpected(listRefusal_);
    }
    for (const Path& path : paths) {
        kept_.push_back({.url = path, .name = path.filename().string(), .location = "", .symbol = "doc"});
    }
    return {};
}

Outcome ScriptedCleanerService::offerAgain(const Path& path) {
    const std::scoped_lock guard(lock_);
    if (!listRefusal_.empty()) {
        return std::unexpected(listRefusal_);
    }
    std::erase_if(kept_, [&](const KeptItem& item) { return item.url == path; });
    return {};
}

std::expected<std::vector<KeptItem>, std::string> ScriptedCleanerService::keptItems() {
    const std::scoped_lock guard(lock_);
    if (!listRefusal_.empty()) {
        return std::unexpected(listRefusal_);
    }
    return kept_;
}

void ScriptedCleanerService::setKept(std::vector<KeptItem> items) {
    const std::scoped_lock guard(lock_);
    kept_ = std::move(items);
}

void ScriptedCleanerService::setCleanProgress(const CleanProgress& progress) {
    cleanProgress_ = progress;
}

void ScriptedCleanerService::refuseList(const std::string& reason) {
    const std::scoped_lock guard(lock_);
    listRefusal_ = reason;
}

StartupActionResult ScriptedCleanerService::disableStartupItem(const StartupItem& item) {
    const Startup script = noted(lock_, disable_, disables_, item);
    return script ? script(item) : StartupActionResult();
}

StartupActionResult ScriptedCleanerService::enableStartupItem(const StartupItem& item) {
    const Startup script = noted(lock_, enable_, enables_, item);
    return script ? script(item) : StartupActionResult();
}

std::vector<PermissionHint> ScriptedCleanerService::permissionHints() {
    const std::scoped_lock guard(lock_);
    return hints_;
}

QuitOutcome ScriptedCleanerService::requestQuit(const MemoryApp& app) {
    const Quit script = noted(lock_, quit_, quits_, app);
    return script ? script(app) : QuitOutcome::NotRunning;
}

QuitOutcome ScriptedCleanerService::endApplication(const MemoryApp& app) {
    const Quit script = noted(lock_, end_, ends_, app);
    return script ? script(app) : QuitOutcome::NotRunning;
}

void ScriptedCleanerService::onScan(Scan script) {
    const std::scoped_lock guard(lock_);
    scan_ = std::move(script);
}

void ScriptedCleanerService::onClean(Clean script) {
    const std::scoped_lock guard(lock_);
    clean_ = std::move(script);
}

void ScriptedCleanerService::onDisable(Startup script) {
    const std::scoped_lock guard(lock_);
    disable_ = std::move(script);
}

void ScriptedCleanerService::onEnable(Startup script) {
    const std::scoped_lock guard(lock_);
    enable_ = std::move(script);
}

void ScriptedCleanerService::onQuit(Quit script) {
    const std::scoped_lock guard(lock_);
    quit_ = std::move(script);
}

void ScriptedCleanerService::onEnd(Quit script) {
    const std::scoped_lock guard(lock_);
    end_ = std::move(script);
}

void ScriptedCleanerService::onPutBack(Restore script) {
    const std::scoped_lock guard(lock_);
    putBack_ = std::move(script);
}

void ScriptedCleanerService::setHistory(History history) {
    const std::scoped_lock guard(lock_);
    history_ = std::move(history);
}

void ScriptedCleanerService::setNoWayBack(std::optional<std::string> reason) {
    const std::scoped_lock guard(lock_);
    noWayBack_ = std::move(reason);
}

std::vector<std::string> ScriptedCleanerService::historyCalls() const {
    const std::scoped_lock guard(lock_);
    return historyCalls_;
}

void ScriptedCleanerService::setHints(std::vector<PermissionHint> hints) {
    const std::scoped_lock guard(lock_);
    hints_ = std::move(hints);
}

std::vector<CleanerModule> ScriptedCleanerService::scans() const {
    const std::scoped_lock guard(lock_);
    return scans_;
}

std::vector<std::vector<CleanupItem>> ScriptedCleanerService::cleans() const {
    const std::scoped_lock guard(lock_);
    return cleans_;
}

std::vector<StartupItem> ScriptedCleanerService::disables() const {
    const std::scoped_lock guard(lock_);
    return disables_;
}

std::vector<StartupItem> ScriptedCleanerService::enables() const {
    const std::scoped_lock guard(lock_);
    return enables_;
}

std::vector<MemoryApp> ScriptedCleanerService::quits() const {
    const std::scoped_lock guard(lock_);
    return quits_;
}

std::vector<MemoryApp> ScriptedCleanerService::ends() const {
    const std::scoped_lock guard(lock_);
    return ends_;
}

} // namespace vellmoor
