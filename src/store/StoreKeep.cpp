// What is never offered again: the list aside, and what it takes out of the results at once.
#include "CheckedMath.h"
#include "StoreState.h"
#include "disk/Paths.h"
#include "texts/L.h"

#include <algorithm>

namespace vellmoor {
namespace {

bool isKept(const Path& path, const std::vector<Path>& kept) {
    return std::ranges::any_of(kept, [&](const Path& one) { return isAtOrBelow(path, one); });
}

bool holdsKept(const Path& path, const std::vector<Path>& kept) {
    return std::ranges::any_of(kept, [&](const Path& one) { return isStrictlyBelow(one, path); });
}

/// Takes `target` out of the row's figures.
void subtract(CleanupItem& item, const CleanupTarget& target) {
    item.bytes = checkedSub(item.bytes, target.bytes);
    item.files = checkedSub(item.files, target.files);
    if (item.appInfo) {
        item.appInfo->residualBytes = checkedSub(item.appInfo->residualBytes, target.bytes);
        --item.appInfo->residualCount;
    }
}

/// Whether anything of the row was kept, or is part of what was.
bool takeOut(CleanupItem& item, const std::vector<Path>& kept) {
    const auto goes = [&](const CleanupTarget& target) { return isKept(target.url, kept); };
    const auto isHeldBack = [&](const CleanupTarget& target) { return target.mayGo() && holdsKept(target.url, kept); };
    if (std::ranges::none_of(item.targets,
                             [&](const CleanupTarget& target) { return goes(target) || isHeldBack(target); })) {
        return false;
    }
    std::vector<CleanupTarget>& targets = item.targets.edit();
    std::erase_if(targets, [&](const CleanupTarget& target) {
        if (!goes(target)) {
            return false;
        }
        subtract(item, target);
        return true;
    });
    for (CleanupTarget& target : targets) {
        if (isHeldBack(target)) {
            target.heldBack = L::tr("其中有你保留的项目");
            target.isSelected = false;
        }
    }
    item.isSelected = std::ranges::any_of(targets, &CleanupTarget::isSelected);
    item.isCleanable = item.isCleanable && std::ranges::any_of(targets, &CleanupTarget::mayGo);
    return true;
}

/// Whether the application of the row is kept: then nothing of the row is offered.
bool isKeptApplication(const CleanupItem& item, const std::vector<Path>& kept) {
    return item.appInfo && isKept(item.appInfo->appPath, kept);
}

bool takeOut(ScanSnapshot& snapshot, const std::vector<Path>& kept) {
    bool isChanged =
        std::erase_if(snapshot.cleanupItems, [&](CleanupItem& item) { return isKeptApplication(item, kept); }) > 0;
    std::erase_if(snapshot.cleanupItems, [&](CleanupItem& item) {
        const bool lost = takeOut(item, kept);
        isChanged = isChanged || lost;
        return lost && item.targets.empty();
    });
    std::erase_if(snapshot.furtherLargeFiles, [&](CleanupItem& item) {
        const bool lost = takeOut(item, kept);
        isChanged = isChanged || lost;
        return lost && item.targets.empty();
    });
    std::erase_if(snapshot.fileCandidates, [&](const FileCandidate& candidate) { return isKept(candidate.url, kept); });
    return isChanged;
}

} // namespace

const std::vector<KeptItem>& CleanerStore::keptItems() const {
    state_->requireOwnThread();
    return state_->keptItems;
}

void CleanerStore::loadKept() {
    state_->requireOwnThread();
    state_->changeKept({}, {});
}

void CleanerStore::keep(const std::vector<std::filesystem::path>& paths) {
    state_->requireOwnThread();
    state_->changeKept([paths](CleanerService& engine) { return engine.keep(paths); },
                       [state = state_.get(), paths] {
                           state->keptMeanwhile.insert(state->keptMeanwhile.end(), paths.begin(), paths.end());
                           state->leaveOut(paths);
                           state->answer(L::tr("已保留，不再提供。"), false);
                       });
}

void CleanerStore::offerAgain(const std::filesystem::path& path) {
    state_->requireOwnThread();
    state_->changeKept([path](CleanerService& engine) { return engine.offerAgain(path); },
                       [state = state_.get(), path] {
                           std::erase(state->keptMeanwhile, path);
                           state->answer(L::tr("下次扫描会重新提供 %@。", displayName(path)), false);
                       });
}

/// Changes the list, if it is to be changed, and reads it; `changed` runs when it did.
void CleanerStore::State::changeKept(const ListChange& change, std::function<void()> changed) {
    // `this` is used in posted jobs only: they run on the store's thread, and not after its death.
    const auto changeAndPost = [this, change, changed = std::move(changed), engine = service, out = workers] {
        const Outcome outcome = change ? change(*engine) : Outcome();
        const auto list = engine->keptItems();
        out->post([this, outcome, list, changed] {
            const Update update(*this);
            if (list) {
                set(keptItems, *list, Kept);
            }
            if (!outcome || !list) {
                const std::string reason = outcome ? L::tr("无法读取保留列表：%@", list.error()) : outcome.error();
                set(actionFailure, reason, ActionFailure);
                set(statusMessage, reason, Status);
            } else if (changed) {
                changed();
            }
        });
    };
    try {
        workers->start(changeAndPost);
    } catch (const std::exception& noThread) {
        set<std::string>(statusMessage, noThread.what(), Status);
    }
}

void CleanerStore::State::leaveOut(const std::vector<Path>& kept) {
    if (kept.empty()) {
        return;
    }
    const Update update(*this);
    for (auto& [module, cached] : cachedStates) {
        if (!takeOut(cached, kept)) {
            continue;
        }
        cached.ledger.forget();
        if (&cached == shown) {
            noteNewItems();
            pending.set(CleanupItems);
            pending.set(FileCandidates);
        }
    }
}

} // namespace vellmoor
