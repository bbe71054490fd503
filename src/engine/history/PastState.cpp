#include "history/PastState.h"

#include <set>

namespace vellmoor {
namespace {

/// The rows whose application went.
std::set<std::size_t> uninstalledRows(const PastClean& clean) {
    std::set<std::size_t> rows;
    for (const PastTarget& target : clean.targets) {
        const bool went = target.fate == CleanupFate::Trashed || target.fate == CleanupFate::Removed;
        if (target.isBody && went && !target.isPutBack) {
            rows.insert(target.row);
        }
    }
    return rows;
}

template <class Wanted>
std::vector<std::size_t> stillThere(Whereabouts& whereabouts, const PastClean& clean, const Wanted& isWanted) {
    std::vector<std::size_t> open;
    for (std::size_t index = 0; index < clean.targets.size(); ++index) {
        const PastTarget& target = clean.targets[index];
        if (isWanted(target) && whereabouts.inPlace(clean, target)) {
            open.push_back(index);
        }
    }
    return open;
}

} // namespace

PastState stateOf(Whereabouts& whereabouts, const PastClean& clean) {
    if (clean.isSettled) {
        return {};
    }
    if (!clean.isFinished) {
        const auto isUndone = [](const PastTarget& target) {
            return !target.isRepeated && (!target.fate || target.fate == CleanupFate::Untried);
        };
        return {.state = HistoryState::CutOff, .open = stillThere(whereabouts, clean, isUndone)};
    }
    const std::set<std::size_t> rows = uninstalledRows(clean);
    const auto isLeft = [&](const PastTarget& target) {
        const bool stayed = target.fate == CleanupFate::Untried || target.fate == CleanupFate::Failed;
        return !target.isBody && stayed && rows.contains(target.row);
    };
    std::vector<std::size_t> open = rows.empty() ? std::vector<std::size_t>() : stillThere(whereabouts, clean, isLeft);
    const HistoryState state = open.empty() ? HistoryState::Finished : HistoryState::LeftoversStayed;
    return {.state = state, .open = std::move(open)};
}

} // namespace vellmoor
