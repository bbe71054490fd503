#include "history/HistoryList.h"

#include "CheckedMath.h"
#include "history/CleanLock.h"
#include "history/Journal.h"
#include "history/PastState.h"
#include "history/Whereabouts.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

namespace vellmoor {
namespace {

constexpr std::chrono::hours longest{24 * 90};
constexpr std::size_t mostCleans = 200;

/// What the user can still do with a clean, counted.
HistoryClean shown(Whereabouts& whereabouts, const PastClean& clean, bool& holdsHidden) {
    const PastState state = stateOf(whereabouts, clean);
    HistoryClean seen{.id = clean.id, .at = clean.at, .module = clean.module, .state = state.state, .items = {}};
    seen.items.reserve(clean.targets.size());
    for (std::size_t index = 0; index < clean.targets.size(); ++index) {
        const PastTarget& target = clean.targets[index];
        const auto trashed = whereabouts.find(clean, target);
        const HistoryItem item{.index = index,
                               .path = whereabouts.origin(clean, target).native(),
                               .title = clean.rows[target.row].title,
                               .bytes = target.bytes,
                               .fate = trashed ? CleanupFate::Trashed : target.fate.value_or(CleanupFate::Untried),
                               .place = trashed ? trashed->place.native() : std::string(),
                               .isPutBack = target.isPutBack,
                               .reason = target.reason};
        if (item.fate == CleanupFate::Trashed || item.fate == CleanupFate::Removed) {
            ++seen.movedCount;
            seen.movedBytes = checkedAdd(seen.movedBytes, target.bytes);
        }
        if (trashed) {
            ++seen.trashedCount;
            seen.trashedBytes = checkedAdd(seen.trashedBytes, target.bytes);
        } else {
            holdsHidden = holdsHidden || trashed.error() == Whereabouts::Absence::Hidden;
        }
        seen.items.push_back(item);
    }
    for (const std::size_t index : state.open) {
        ++seen.openCount;
        seen.openBytes = checkedAdd(seen.openBytes, clean.targets[index].bytes);
    }
    return seen;
}

bool isWithin(const PastClean& clean, TimePoint now) {
    return clean.at >= now - longest;
}

/// Nothing of it lies in a Trash, as far as can be seen, and nothing is open.
bool isOver(Whereabouts& whereabouts, const PastClean& clean) {
    const auto isThere = [&](const PastTarget& target) {
        const auto found = whereabouts.find(clean, target);
        return found || found.error() == Whereabouts::Absence::Hidden;
    };
    return std::ranges::none_of(clean.targets, isThere) && stateOf(whereabouts, clean).open.empty();
}

std::vector<HistorySwitch> shownSwitches(const Platform& platform, const std::vector<PastSwitch>& past,
                                         TimePoint oldest) {
    std::vector<HistorySwitch> shown;
    std::set<Path> seen;
    for (const PastSwitch& change : past) {
        if (change.at < oldest) {
            continue;
        }
        // Where it lies now it lies by its latest change only.
        const bool isLatest = seen.insert(change.file).second;
        shown.push_back({.at = change.at,
                         .name = change.name,
                         .file = change.file,
                         .isEnabled = change.isEnabled,
                         .canBePutBack = isLatest && platform.exists(change.file)});
    }
    return shown;
}

/// The cleans that count: without the one that runs now.
std::vector<PastClean> countedCleans(const EngineContext& context, std::vector<PastClean> cleans) {
    if (!cleans.empty() && !cleans.front().isFinished && CleanLock::isTaken(context.layout())) {
        cleans.erase(cleans.begin());
    }
    std::erase_if(cleans, [&](const PastClean& clean) { return !isWithin(clean, context.now()); });
    cleans.resize(std::min(cleans.size(), mostCleans));
    return cleans;
}

} // namespace

History history(EngineContext& context) {
    History all;
    auto past = Journal(context.layout()).read();
    if (!past) {
        all.problem = past.error();
        return all;
    }
    Whereabouts whereabouts(context);
    for (const PastClean& clean : countedCleans(context, std::move(past->cleans))) {
        bool holdsHidden = false;
        HistoryClean seen = shown(whereabouts, clean, holdsHidden);
        if (holdsHidden || seen.trashedCount > 0 || seen.openCount > 0) {
            all.cleans.push_back(std::move(seen));
        }
    }
    std::ranges::stable_partition(all.cleans,
                                  [](const HistoryClean& clean) { return clean.state != HistoryState::Finished; });
    all.switches = shownSwitches(context.platform(), past->switches, context.now() - longest);
    return all;
}

void pruneHistory(EngineContext& context) {
    std::optional<Whereabouts> whereabouts;
    const auto over = [&](const PastClean& clean) {
        if (!whereabouts) {
            whereabouts.emplace(context);
        }
        return isOver(*whereabouts, clean);
    };
    (void)Journal(context.layout()).prune(context.now() - longest, mostCleans, over); // else the next time
}

Outcome forgetHistory(EngineContext& context) {
    const auto lock = CleanLock::take(context.layout());
    return lock ? Journal(context.layout()).forget() : std::unexpected(lock.error());
}

void markFromCleans(EngineContext& context, std::vector<CleanupItem>& items) {
    std::map<Path, CleanupTarget*> targets;
    for (CleanupItem& item : items) {
        if (item.module == CleanerModule::trash) {
            for (CleanupTarget& target : item.targets.edit()) {
                targets.emplace(target.url, &target);
            }
        }
    }
    const auto past = targets.empty() ? Past() : Journal(context.layout()).read().value_or(Past());
    if (past.cleans.empty()) {
        return;
    }
    Whereabouts whereabouts(context);
    for (const PastClean& clean : countedCleans(context, past.cleans)) {
        for (const PastTarget& target : clean.targets) {
            const auto found = whereabouts.find(clean, target);
            const auto shown = found ? targets.find(found->place) : targets.end();
            if (shown != targets.end()) {
                shown->second->isFromClean = true;
                shown->second->isSelected = false;
                shown->second->origin = whereabouts.origin(clean, target);
            }
        }
    }
    for (CleanupItem& item : items) {
        if (item.module == CleanerModule::trash && item.isSelected) {
            item.isSelected = std::ranges::any_of(item.targets, &CleanupTarget::isSelected);
        }
    }
}

void rememberSwitch(EngineContext& context, const std::string& name, const Path& file, bool isEnabled) {
    (void)Journal(context.layout())
        .addSwitch({.at = std::chrono::system_clock::now(), .name = name, .file = file, .isEnabled = isEnabled});
}

} // namespace vellmoor
