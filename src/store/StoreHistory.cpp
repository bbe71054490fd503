// Taking back: what was done is read, and undone, aside; ticks outlive a scan.
#include "StoreState.h"
#include "texts/L.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace vellmoor {

void CleanerStore::recover() {
    state_->requireOwnThread();
    state_->startReading(true);
}

void CleanerStore::loadHistory() {
    state_->requireOwnThread();
    state_->startReading(false);
}

std::string CleanerStore::whyNoWayBack(CleanerModule module) const {
    const std::vector<CleanupItem> chosen = selectedItems(module);
    return chosen.empty() ? std::string() : state_->service->whyNoWayBack(chosen).value_or("");
}

void CleanerStore::clearRestore() {
    state_->requireOwnThread();
    state_->set(state_->latestRestore, {}, State::Restore);
}

void CleanerStore::putBack(const std::string& clean, const std::vector<std::size_t>& indices) {
    state_->requireOwnThread();
    if (state_->isCleaning) {
        return;
    }
    state_->startLongAction(
        L::tr("正在放回..."), state_->shownAgain(),
        [clean, indices](CleanerService& engine, const CleanProgressCallback& progress, const CancelToken& stop) {
            return State::ActionOutcome{{}, {}, false, engine.putBack(clean, indices, progress, stop)};
        });
}

void CleanerStore::putBackTarget(int itemIndex, int targetIndex) {
    state_->requireOwnThread();
    const std::vector<CleanupItem>& items = cleanupItems();
    if (itemIndex < 0 || targetIndex < 0 || static_cast<std::size_t>(itemIndex) >= items.size()) {
        return;
    }
    const CleanupItem& item = items[static_cast<std::size_t>(itemIndex)];
    if (static_cast<std::size_t>(targetIndex) < item.targets.size()) {
        const CleanupTarget& target = item.targets[static_cast<std::size_t>(targetIndex)];
        if (target.origin) {
            state_->startPutBack({target.url});
        }
    }
}

void CleanerStore::finishClean(const std::string& clean) {
    state_->requireOwnThread();
    if (state_->isCleaning) {
        return;
    }
    state_->startLongAction(
        L::tr("正在清理选中项目..."), state_->shownAgain(),
        [clean](CleanerService& engine, const CleanProgressCallback& progress, const CancelToken& stop) {
            return State::ActionOutcome{{}, engine.finish(clean, progress, stop), false};
        });
}

void CleanerStore::removeForGood(const std::string& clean) {
    state_->requireOwnThread();
    if (state_->isCleaning) {
        return;
    }
    state_->startLongAction(
        L::tr("正在永久删除..."), state_->shownAgain(),
        [clean](CleanerService& engine, const CleanProgressCallback& progress, const CancelToken& stop) {
            return State::ActionOutcome{{}, engine.removeForGood(clean, progress, stop), false};
        });
}

void CleanerStore::putBackSwitch(const HistorySwitch& change) {
    state_->requireOwnThread();
    if (state_->isScanning || state_->isCleaning) {
        return;
    }
    state_->startAction(L::tr("正在放回..."), state_->shownAgain(), [change](CleanerService& engine) {
        const StartupActionResult result = engine.putBackSwitch(change);
        return State::ActionOutcome{result.message, {}, !result.succeeded};
    });
}

void CleanerStore::forgetHistory() {
    state_->requireOwnThread();
    if (state_->isCleaning) {
        return;
    }
    // The Trash's rows say what comes from a clean.
    const auto rescanned = activeModule() == CleanerModule::trash ? state_->shownAgain() : std::nullopt;
    state_->startAction(L::tr("清除历史记录"), rescanned, [](CleanerService& engine) {
        const Outcome forgotten = engine.forgetHistory();
        return State::ActionOutcome{forgotten ? L::tr("已清除历史记录。") : forgotten.error(), {}, !forgotten};
    });
}

void CleanerStore::State::startPutBack(const std::vector<std::filesystem::path>& places) {
    if (isCleaning || places.empty()) {
        return;
    }
    startLongAction(L::tr("正在放回..."), shownAgain(),
                    [places](CleanerService& engine, const CleanProgressCallback& progress, const CancelToken& stop) {
                        return ActionOutcome{{}, {}, false, engine.putBackTrashed(places, progress, stop)};
                    });
}

std::optional<CleanerModule> CleanerStore::State::shownAgain() const {
    return cachedStates.contains(activeModule) ? std::optional(activeModule) : std::nullopt;
}

void CleanerStore::State::startReading(bool recovers) {
    const auto readAndPost = [this, recovers, engine = service, out = workers] {
        if (recovers) {
            engine->recover();
        }
        out->post([this, past = std::make_shared<History>(engine->history())] {
            if (*past != history) {
                set(history, std::move(*past), Past);
            }
        });
    };
    try {
        workers->start(readAndPost);
    } catch (const std::exception& noThread) {
        set<std::string>(statusMessage, noThread.what(), Status);
    }
}

const std::vector<CleanupItem>& CleanerStore::State::knownItems(CleanerModule module) const {
    static const std::vector<CleanupItem> none;
    const auto known = cachedStates.find(module);
    return known == cachedStates.end() ? none : known->second.cleanupItems;
}

void CleanerStore::State::keepTicks(const std::vector<CleanupItem>& before, std::vector<CleanupItem>& found) {
    struct KnownRow {
        bool isOff = false;
        std::unordered_map<std::string_view, const CleanupTarget*> targets;
    };
    using RowKey = std::tuple<CleanerModule, std::string_view, std::string_view>;
    const auto keyOf = [](const CleanupItem& item) { return RowKey(item.module, item.key, item.title); };
    const KnownRow unknown;
    std::map<RowKey, KnownRow> known;
    for (const CleanupItem& item : before) {
        if (!item.isCleanable) {
            continue;
        }
        KnownRow& row = known[keyOf(item)];
        row.isOff = row.isOff || !item.isSelected;
        for (const CleanupTarget& target : item.targets) {
            row.targets.emplace(target.url.native(), &target);
        }
    }
    for (CleanupItem& item : found) {
        if (!item.isCleanable || item.targets.empty()) {
            continue;
        }
        const auto place = known.find(keyOf(item));
        const KnownRow& row = place == known.end() ? unknown : place->second;
        const auto isTicked = [&row](const CleanupTarget& target) {
            const auto same = row.targets.find(target.url.native());
            if (same == row.targets.end()) {
                return target.isSelected && !row.isOff; // a row that is off stays off
            }
            const bool isSameKind = same->second->isFromClean == target.isFromClean;
            return isSameKind ? same->second->isSelected && target.mayGo() : target.isSelected;
        };
        if (!std::ranges::equal(item.targets, item.targets, {}, isTicked, &CleanupTarget::isSelected)) {
            for (CleanupTarget& target : item.targets.edit()) {
                target.isSelected = isTicked(target);
            }
        }
        item.isSelected = std::ranges::any_of(item.targets, &CleanupTarget::isSelected);
    }
}

} // namespace vellmoor
