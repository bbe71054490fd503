// One scan at a time: its worker, its progress and its end. A worker's word counts only while its generation is
// current.
#include "StoreState.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>
#include <utility>

namespace vellmoor {
namespace {

constexpr double leastShownProgress = 0.03;
constexpr double mostShownProgress = 0.96;

} // namespace

void CleanerStore::scan(CleanerModule module, bool clearsReport) {
    state_->requireOwnThread();
    if (state_->isScanning) {
        return;
    }
    const State::Update update(*state_);
    const std::uint64_t generation = ++state_->scanGeneration;
    state_->scansAfterAction = !clearsReport;
    state_->keptMeanwhile.clear();
    state_->set(state_->activeModule, module, State::ActiveModule);
    state_->lastScanned = module;
    state_->set(state_->isScanning, true, State::Scanning);
    if (clearsReport) {
        state_->set(state_->latestReport, {}, State::Report);
        state_->set(state_->actionFailure, {}, State::ActionFailure);
    }
    state_->set(state_->scanProgress, 0.0, State::Progress);
    state_->set(state_->scanStage, L::tr("准备扫描..."), State::Stage);
    state_->set(state_->statusMessage, L::tr("正在扫描 %@...", title(module)), State::Status);
    state_->startScanWorker(module, generation);
}

void CleanerStore::cancelScan() {
    state_->requireOwnThread();
    if (!state_->isScanning) {
        return;
    }
    const State::Update update(*state_);
    state_->invalidateCurrentScan();
    state_->finishCancelledScan();
}

void CleanerStore::State::startScanWorker(CleanerModule module, std::uint64_t generation) {
    scanToken = std::make_shared<CancelToken>();
    // `this` is used in posted jobs only: they run on the store's thread, and not after its death.
    const auto scanAndPost = [this, generation, module, engine = service, token = scanToken, out = workers] {
        const auto progress = [this, out, generation](const ScanProgressUpdate& step) {
            out->post([this, step, generation] { showProgress(step, generation); });
        };
        const auto fail = [&](const std::string& cause) {
            out->post([this, cause, generation] { failScan(cause, generation); });
        };
        try {
            const auto snapshot = std::make_shared<ScanSnapshot>(engine->scan(module, progress, *token));
            out->post([this, snapshot, module, generation] { completeScan(std::move(*snapshot), module, generation); });
        } catch (const ScanCancelled&) {
            out->post([this, generation] { endCancelledScan(generation); });
        } catch (const std::exception& error) {
            fail(error.what());
        } catch (...) {
            fail(L::tr("未知"));
        }
    };
    try {
        workers->start(scanAndPost);
    } catch (const std::exception& noThread) {
        failScan(noThread.what(), generation);
    }
}

void CleanerStore::State::showProgress(const ScanProgressUpdate& step, std::uint64_t generation) {
    if (!isScanning || scanGeneration != generation) {
        return;
    }
    const Update update(*this);
    set(scanStage, step.stage, Stage);
    set(scanProgress, std::max(std::min(step.fraction, mostShownProgress), leastShownProgress), Progress);
    set(statusMessage, step.stage, Status);
}

void CleanerStore::State::completeScan(ScanSnapshot snapshot, CleanerModule module, std::uint64_t generation) {
    if (scanGeneration != generation) {
        return;
    }
    const Update update(*this);
    cache(std::move(snapshot), module);
    set(scanProgress, 1.0, Progress);
    set(scanStage, L::tr("扫描完成"), Stage);
    set(isScanning, false, Scanning);
    scanToken.reset();
    const bool concernsActiveModule = activeModule == module || module == CleanerModule::smartScan;
    const auto result = cachedStates.find(activeModule);
    if (result == cachedStates.end()) {
        applyNotScannedState(activeModule);
        return;
    }
    apply(result->second);
    leaveOut(keptMeanwhile);
    if (!concernsActiveModule) {
        return; // that page says where its own results come from, no longer what is being scanned
    }
    const std::string cleanable = byteCountText(store.cleanableBytes(activeModule));
    set(statusMessage, scanCompletionMessage(cleanable, activeModule), Status);
}

std::string CleanerStore::State::scanCompletionMessage(const std::string& cleanable, CleanerModule module) const {
    const std::string message =
        shown->cleanupItems.empty() ? L::tr("未发现可处理项目") : L::tr("扫描完成，发现 %@ 可清理空间", cleanable);
    if (store.permissionLimitations(module).empty()) {
        return message;
    }
    return L::tr("%@。部分权限未开启，结果可能不完整。", message);
}

void CleanerStore::State::endCancelledScan(std::uint64_t generation) {
    if (scanGeneration == generation) {
        finishCancelledScan();
    }
}

void CleanerStore::State::failScan(const std::string& cause, std::uint64_t generation) {
    if (scanGeneration != generation) {
        return;
    }
    const Update update(*this);
    showOwnResults();
    set(scanProgress, 0.0, Progress);
    set(scanStage, {}, Stage);
    set(isScanning, false, Scanning);
    scanToken.reset();
    set(statusMessage, L::tr("扫描失败：%@", cause), Status);
}

/// From now on nothing that the running scan says counts.
void CleanerStore::State::invalidateCurrentScan() {
    ++scanGeneration;
    if (scanToken) {
        scanToken->cancel();
        scanToken.reset();
    }
    set(isScanning, false, Scanning);
}

void CleanerStore::State::finishCancelledScan() {
    const Update update(*this);
    showOwnResults();
    set(scanProgress, 0.0, Progress);
    set(scanStage, {}, Stage);
    set(isScanning, false, Scanning);
    scanToken.reset();
    set(statusMessage, L::tr("扫描已取消。"), Status);
}

} // namespace vellmoor
