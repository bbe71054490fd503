#include "clean/Recovery.h"

#include "history/CleanLock.h"
#include "history/HistoryList.h"
#include "history/Journal.h"
#include "history/Whereabouts.h"
#include "trash/CleanPlaces.h"

#include <algorithm>
#include <set>

namespace vellmoor {
namespace {

bool isUnknown(const PastTarget& target) {
    return !target.fate && !target.wasTrashed;
}

bool isToBeLookedFor(const PastClean& clean) {
    return !clean.isSettled && std::ranges::any_of(clean.targets, isUnknown);
}

void recordFound(const Journal& journal, Whereabouts& whereabouts, const PastClean& clean) {
    auto entry = journal.resume(clean.id);
    for (std::size_t index = 0; entry && index < clean.targets.size(); ++index) {
        const PastTarget& target = clean.targets[index];
        if (!isUnknown(target)) {
            continue;
        }
        if (const auto found = whereabouts.find(clean, target)) {
            (void)entry->did(index, {.path = target.path, // what is not written is found again the next time
                                     .fate = CleanupFate::Trashed,
                                     .place = found->place,
                                     .bytes = target.bytes,
                                     .identity = found->identity,
                                     .reason = ""});
        }
    }
}

} // namespace

void recoverCutOff(EngineContext& context, TrashSession& session) {
    const Journal journal(context.layout());
    auto past = journal.read();
    if (!past) {
        return; // history() says why
    }
    std::erase_if(past->cleans, [](const PastClean& clean) { return !isToBeLookedFor(clean); });
    if (past->cleans.empty()) {
        return;
    }
    Whereabouts whereabouts(context);
    std::set<Path> places;
    for (const PastClean& clean : past->cleans) {
        for (const PastTarget& target : clean.targets) {
            if (isUnknown(target)) {
                places.insert({target.path, whereabouts.origin(clean, target)});
            }
        }
    }
    session.forgetNotes(places);
    for (const PastClean& clean : past->cleans) {
        recordFound(journal, whereabouts, clean);
    }
}

void recover(EngineContext& context) {
    const auto lock = CleanLock::take(context.layout());
    if (!lock) {
        return;
    }
    const PathGuard guard(context.platform(), context.layout());
    const auto trashed = TrashedPaths::of(context);
    const auto session = context.platform().trashSession(cleanPlaces(context, *trashed, guard));
    recoverCutOff(context, *session);
    session->finish();
    pruneHistory(context);
}

} // namespace vellmoor
